#pragma once

#include "adapters/odbc/Session.h"
#include "adapters/shared/recordset/Backend.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::odbc {

/// Writes records of a query on one table or view as inserts and updates with parameters, because not every driver
/// has updatable cursors. New records are inserted into the table or view named in the query, so that a view
/// supplies its values. A record is located by the table's key, and only if the columns to be changed still hold
/// what was read.
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
    /// The result's columns that make up the key. Error 3251 if the table has none, or if the result does not
    /// contain all of them.
    [[nodiscard]] const std::vector<int>& keyColumns();
    [[nodiscard]] std::vector<int> positionsOf(const std::vector<std::string>& names) const;

    std::shared_ptr<Session> session_;
    tsql::TableName target_;
    std::vector<DriverColumn> columns_;
    std::optional<std::vector<int>> key_; ///< empty until it is needed
};

} // namespace z7::cashflow::odbc
