#pragma once

#include "adapters/shared/recordset/Backend.h"
#include "adapters/sqlite/Session.h"
#include "adapters/tsql/Rewriting.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::sqlite {

/// Writes records of a query over one table or view. New records go through the name that the query used, so that a
/// view fills in what it fills in. A record is found again by the table's primary key, and only if the columns that
/// change still hold what was read.
class RecordWriter final : public shared::RowWriter {
public:
    RecordWriter(std::shared_ptr<Session> session, tsql::TableName target, std::vector<ColumnOrigin> origins);

    void insert(const std::vector<shared::Change>& changes) override;
    void update(const shared::RowSet& rows, std::size_t row, const std::vector<shared::Change>& changes) override;

private:
    [[nodiscard]] const std::string& insertText(const std::vector<shared::Change>& changes);
    [[nodiscard]] std::string columnName(int column) const;
    /// The result's columns that make up the primary key of the table behind it; empty if they are not all there.
    [[nodiscard]] std::vector<int> keyColumns() const;

    std::shared_ptr<Session> session_;
    tsql::TableName target_;
    std::vector<ColumnOrigin> origins_;
    std::vector<int> insertColumns_; ///< the columns of the last insert: most often the next has the same,
    std::string insertText_;         ///< and then its text is this; empty before the first
};

} // namespace z7::cashflow::sqlite
