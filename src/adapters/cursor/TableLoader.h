#pragma once

#include "adapters/cursor/Column.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/Variant.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::cursor {

/// A column of a table as the database's catalogue describes it.
struct TableColumn {
    std::string name;
    ColumnType type = ColumnType::text;
    int length = 0;          ///< the most characters that a text may have; 0 if there is no bound
    bool nullable = true;    ///< whether the column may be null
    bool hasDefault = false; ///< whether a value comes by itself for a row that does not name the column
};

/// Why a row cannot be taken. The description names table and column, the reason is the bare sentence.
class LoadError : public Error {
public:
    LoadError(std::string source, const std::string& table, std::string column, std::string reason);
    [[nodiscard]] const std::string& column() const noexcept { return column_; }
    [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

private:
    std::string column_;
    std::string reason_;
};

/// Puts rows of texts into one table, each value converted to its column's type. It works inside the caller's transaction, if
/// there is one, and opens none: a caller who wants all rows or none begins one. Adapters derive from it and write the rows.
class TableLoader {
public:
    TableLoader(const TableLoader&) = delete;
    TableLoader& operator=(const TableLoader&) = delete;
    virtual ~TableLoader() = default;

    /// Adds one row; nothing stands for null. Numbers are read strictly and without thousands commas, dates year first, bits as 0, 1,
    /// true or false. LoadError if the number of values is wrong (its column is then empty), a value does not fit its
    /// column, or the database refuses the row, such as for a key that is there already.
    void add(const std::vector<std::optional<std::string_view>>& values);
    /// The number of rows that were added.
    [[nodiscard]] std::int64_t count() const noexcept { return count_; }

protected:
    /// Takes the source of its errors, the table's name, what its columns are, and the names of those that rows will give.
    /// LoadError if a column is unknown or named twice, or if one that must have a value is not named.
    TableLoader(std::string source, std::string table, const std::vector<TableColumn>& known,
                const std::vector<std::string>& columns);

    [[nodiscard]] const std::string& table() const noexcept { return table_; }
    /// The named columns in their order.
    [[nodiscard]] const std::vector<TableColumn>& columns() const noexcept { return columns_; }
    [[noreturn]] void refuse(std::string column, std::string reason) const;

private:
    /// Writes one row, a value for each column. An Error of the database, or LoadError (refuse) if it refuses this row.
    virtual void insert(const std::vector<Variant>& values) = 0;

    std::string source_;
    std::string table_;
    std::vector<TableColumn> columns_;
    std::vector<Variant> values_;
    std::int64_t count_ = 0;
};

/// The tables of one open session, as far as rows of texts can be put into them. The session must outlive it.
class LoadableTables {
public:
    virtual ~LoadableTables() = default;

    /// The tables (views are none) of the account's database and of the system database, by their plain names, in the order of the
    /// alphabet.
    [[nodiscard]] virtual std::vector<std::string> names() = 0;
    /// The columns of one of them in their order. Error 208 if there is no such table.
    [[nodiscard]] virtual std::vector<TableColumn> columns(const std::string& table) = 0;
    /// A loader for some columns of one of them; errors as for columns and TableLoader's constructor.
    [[nodiscard]] virtual std::unique_ptr<TableLoader> loader(const std::string& table,
                                                              const std::vector<std::string>& columns) = 0;
};

} // namespace z7::cashflow::cursor
