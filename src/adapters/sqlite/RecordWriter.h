#pragma once

#include "adapters/shared/recordset/Backend.h"
#include "adapters/sqlite/Session.h"
#include "adapters/tsql/Rewriting.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::sqlite {

/// Writes records of a query on one table or view. New records are inserted into the table or view named in the
/// query, so that a view supplies its values. A record is located by the table's primary key, and only if the
/// columns to be changed still hold what was read.
class RecordWriter final : public shared::RowWriter {
public:
    RecordWriter(std::shared_ptr<Session> session, tsql::TableName target, std::vector<ColumnOrigin> origins);

    void insert(const std::vector<shared::Change>& changes) override;
    void update(const shared::RowSet& rows, std::size_t row, const std::vector<shared::Change>& changes) override;

private:
    [[nodiscard]] const std::string& insertText(const std::vector<shared::Change>& changes);
    [[nodiscard]] std::string columnName(int column) const;
    /// The result's columns that make up the primary key of its table; empty if the result does not contain all
    /// of them.
    [[nodiscard]] std::vector<int> keyColumns() const;

    std::shared_ptr<Session> session_;
    tsql::TableName target_;
    std::vector<ColumnOrigin> origins_;
    std::vector<int> insertColumns_; ///< columns of the last insert: usually the next one has the same,
    std::string insertText_;         ///< and the same text; empty before the first insert
};

} // namespace z7::cashflow::sqlite
