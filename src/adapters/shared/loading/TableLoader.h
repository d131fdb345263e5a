#pragma once

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/shared/recordset/Column.h"
#include "z7cashflow/ports/LoadableTables.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/Variant.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::shared {

/// A column of a table as the database's catalogue describes it.
struct TableColumn {
    std::string name;
    ColumnType type = ColumnType::text;
    int length = 0;          ///< the maximum number of characters of a text; 0 for no limit
    bool nullable = true;    ///< whether the column may be null
    bool hasDefault = false; ///< whether a value comes by itself for a row that does not name the column
};

/// Why a row, or the columns that rows are to give, cannot be taken. Its description names the table and the column; a
/// program that names them in its own way takes fault().
class LoadError : public Error {
public:
    /// Takes the source, the table, the columns concerned and what is wrong.
    LoadError(std::string source, const std::string& table, std::vector<std::string> columns, Explanation fault);
    /// What is wrong, without the table and the column.
    [[nodiscard]] const Explanation& fault() const noexcept { return why().causes.front(); }
    /// The column concerned, as it was named; those of the key for keyTaken; none for valueCountWrong and rowRefused.
    [[nodiscard]] const std::vector<std::string>& columns() const noexcept { return columns_; }

private:
    std::vector<std::string> columns_;
};

/// Checks rows of texts and converts their values for every database alike. Adapters derive from it and write the rows.
class TableLoader : public RowLoader {
public:
    TableLoader(const TableLoader&) = delete;
    TableLoader& operator=(const TableLoader&) = delete;
    ~TableLoader() override = default;

    /// LoadError for a row that cannot be taken.
    void add(const std::vector<std::optional<std::string_view>>& values) final;
    [[nodiscard]] std::int64_t count() const noexcept final { return count_; }

protected:
    /// Takes the source of its errors, the table's name, what its columns are, and the names of those that rows will
    /// give. LoadError if a column is unknown or named twice, or if one that must have a value is not named.
    TableLoader(std::string source, std::string table, const std::vector<TableColumn>& known,
                const std::vector<std::string>& columns);

    [[nodiscard]] const std::string& table() const noexcept { return table_; }
    /// The named columns in their order.
    [[nodiscard]] const std::vector<TableColumn>& columns() const noexcept { return columns_; }
    /// Raises the LoadError of a row that the database refuses, with its words.
    [[noreturn]] void refuseRow(const Error& reason) const;
    /// Raises the LoadError of a row whose values in the columns of a key are in the table already.
    [[noreturn]] void refuseDoubleKey(std::vector<std::string> keyColumns) const;

private:
    /// Writes one row, a value for each column. An Error of the database, or LoadError (refuseRow) if it refuses this
    /// row.
    virtual void insert(const std::vector<Variant>& values) = 0;
    [[noreturn]] void refuse(DatabaseReason reason, const std::string& column,
                             std::vector<std::string> arguments = {}) const;

    std::string source_;
    std::string table_;
    std::vector<TableColumn> columns_;
    std::vector<Variant> values_;
    std::int64_t count_ = 0;
};

} // namespace z7::cashflow::shared
