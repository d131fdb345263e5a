#pragma once

#include "adapters/odbc/Session.h"
#include "adapters/shared/recordset/Backend.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::odbc {

/// Writes records of a query over one table or view as inserts and updates with parameters, since not every driver has
/// cursors that can be written. New records go through the name that the query used, so that a view fills in what it
/// fills in. A record is found again by the table's key, and only if the columns that change still hold what was read.
class RecordWriter final : public shared::RowWriter {
public:
    RecordWriter(std::shared_ptr<Session> session, tsql::TableName target, std::vector<DriverColumn> columns);

    void insert(const std::vector<shared::Change>& changes) override;
    void update(const shared::RowSet& rows, std::size_t row, const std::vector<shared::Change>& changes) override;

private:
    /// The text of a statement with the values for its "?".
    struct Command {
        std::string text;
        std::vector<Variant> values;
    };

    void addValue(Command& command, const Variant& value) const;
    void addCondition(Command& command, const std::string& column, const Variant& value) const;
    [[nodiscard]] std::string columnName(int column) const;
    /// The result's columns that make up the key. Error 3251 if the table has none, or if they are not all there.
    [[nodiscard]] const std::vector<int>& keyColumns();
    [[nodiscard]] std::vector<int> positionsOf(const std::vector<std::string>& names) const;

    std::shared_ptr<Session> session_;
    tsql::TableName target_;
    std::vector<DriverColumn> columns_;
    std::optional<std::vector<int>> key_; ///< nothing until it is needed
};

} // namespace z7::cashflow::odbc
