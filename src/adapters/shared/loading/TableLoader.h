#pragma once

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/shared/recordset/Column.h"
#include "z7cashflow/ports/LoadableTables.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// A column of a table as described by the database's catalogue.
struct TableColumn {
    std::string name;                   ///< as the database spells it
    ColumnType type = ColumnType::text; ///< to which texts are converted
    int length = 0;                     ///< the maximum number of characters of a text; 0 for no limit
    bool nullable = true;               ///< whether the column may be null
    bool hasDefault = false;            ///< whether a row that does not name the column gets a default value
};

/// Why a row, or the columns of the rows, are refused. The description names the table and the column; a program
/// that names them in its own way uses fault().
class LoadError : public Error {
public:
    /// Takes the source, the table, the columns concerned and the reason.
    LoadError(std::string source, const std::string& table, std::vector<std::string> columns, Explanation fault);
    /// The reason without the table and the column.
    [[nodiscard]] const Explanation& fault() const noexcept { return why().causes.front(); }
    /// The column concerned, as it was named; for keyTaken those of the key; none for valueCountWrong and
    /// rowRefused.
    [[nodiscard]] const std::vector<std::string>& columns() const noexcept { return columns_; }

private:
    std::vector<std::string> columns_;
};

/// Checks rows of text and converts their values in the same way for every database. Adapters derive from it and
/// write the rows.
class TableLoader : public RowLoader {
public:
    TableLoader(const TableLoader&) = delete;
    TableLoader& operator=(const TableLoader&) = delete;
    ~TableLoader() override = default;

    /// LoadError for a row that is refused.
    void add(const std::vector<std::optional<std::string_view>>& values) final;
    [[nodiscard]] std::int64_t count() const noexcept final { return count_; }

protected:
    /// Takes the source of its errors, the table's name, the columns of the table, and the names of the columns
    /// of the rows. LoadError if a column is unknown or named twice, or if a required column is missing.
    TableLoader(std::string source, std::string table, const std::vector<TableColumn>& known,
                const std::vector<std::string>& columns);

    /// The table's name.
    [[nodiscard]] const std::string& table() const noexcept { return table_; }
    /// The named columns in their order.
    [[nodiscard]] const std::vector<TableColumn>& columns() const noexcept { return columns_; }
    /// Raises the LoadError for a row that the database refuses, with the database's message.
    [[noreturn]] void refuseRow(const Error& reason) const;
    /// Raises the LoadError for a row whose key is already in the table.
    [[noreturn]] void refuseDoubleKey(std::vector<std::string> keyColumns) const;

private:
    /// Writes one row with a value for each column. Raises an Error of the database, or LoadError (refuseRow)
    /// if it refuses this row.
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

Z7_PUBLIC_END
