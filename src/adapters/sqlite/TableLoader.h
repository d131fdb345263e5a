#pragma once

#include "adapters/cursor/Column.h"
#include "z7cashflow/support/Error.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::sqlite {

class Connection;

/// A column of a table as the database declares it.
struct TableColumn {
    std::string name;
    std::string declaredType; ///< such as "nvarchar(40)"
    cursor::ColumnType type = cursor::ColumnType::text;
    int length = 0;          ///< the most characters that a text may have; 0 if there is no bound
    bool nullable = true;    ///< whether the column may be null
    bool hasDefault = false; ///< whether a value comes by itself for a row that does not name the column
};

/// The tables (views are none) of the account's database and of the system database, by their plain names, in the order of the
/// alphabet.
[[nodiscard]] std::vector<std::string> tableNames(Connection& connection);

/// The columns of a table or a view in their order. The name is looked for without regard to case, in the account's
/// database, then in the system database; "tempdb..X" and "zqsystem..X" name the place. Error 208 if there is no such table.
[[nodiscard]] std::vector<TableColumn> tableColumns(Connection& connection, const std::string& table);

/// Why a row cannot be taken. The description names table and column, the reason is the bare sentence.
class LoadError : public Error {
public:
    LoadError(const std::string& table, std::string column, std::string reason);
    [[nodiscard]] const std::string& column() const noexcept { return column_; }
    [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

private:
    std::string column_;
    std::string reason_;
};

/// Puts rows of texts into one table, each value converted to its column's type. It works inside the caller's
/// transaction, if there is one, and opens none: a caller who wants all rows or none begins one.
class TableLoader {
public:
    /// Error 208 if there is no such table, LoadError if a column is unknown or named twice, or if one that must have a value is
    /// not named. The connection must outlive the loader.
    TableLoader(Connection& connection, const std::string& table, const std::vector<std::string>& columns);
    TableLoader(const TableLoader&) = delete;
    TableLoader& operator=(const TableLoader&) = delete;
    ~TableLoader();

    /// Adds one row; nothing stands for null. Numbers are read strictly and without thousands commas, dates year first, bits as 0, 1,
    /// true or false. LoadError if the number of values is wrong (its column is then empty), a value does not fit its
    /// column, or the database refuses the row, such as for a key that is there already.
    void add(const std::vector<std::optional<std::string_view>>& values);
    /// The number of rows that were added.
    [[nodiscard]] std::int64_t count() const noexcept { return count_; }

private:
    struct Statement;

    std::string table_;
    std::vector<TableColumn> columns_;
    std::unique_ptr<Statement> statement_;
    std::int64_t count_ = 0;
};

} // namespace z7::cashflow::sqlite
