#pragma once

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

/// Why a row, or the columns that rows are to give, cannot be taken. The description names table and column and tells the reason in
/// English; a program that speaks to people words the reason by its kind, with what the sentence speaks of.
class LoadError : public Error {
public:
    enum class Kind {
        unknownColumn, ///< the table, which it names, has no such column
        columnTwice,   ///< the column is named twice
        columnMissing, ///< the column must have a value and is not named
        wrongCount,    ///< values given, columns expected
        noValue,       ///< the column must have a value
        noTruth,       ///< this is not 0, 1, true or false
        noWhole,       ///< this is not a whole number from here to there
        noNumber,      ///< this is not a number
        tooLarge,      ///< this number lies beyond that largest one of its column
        tooPrecise,    ///< this amount has more than four decimals
        noDate,        ///< this is not a date
        tooLong,       ///< this is longer than so many characters
        doubleKey,     ///< the table has a row with the same values in these columns
        refused        ///< the database refuses the row with these words
    };
    LoadError(std::string source, const std::string& table, std::string column, Kind kind,
              std::vector<std::string> arguments);
    [[nodiscard]] Kind kind() const noexcept { return kind_; }
    /// The column as it was named; empty for wrongCount, doubleKey and refused.
    [[nodiscard]] const std::string& column() const noexcept { return column_; }
    /// What the sentence speaks of, in the order of the kind's description. A long value is shortened.
    [[nodiscard]] const std::vector<std::string>& arguments() const noexcept { return arguments_; }

private:
    std::string column_;
    Kind kind_;
    std::vector<std::string> arguments_;
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
    /// Takes the source of its errors, the table's name, what its columns are, and the names of those that rows will give.
    /// LoadError if a column is unknown or named twice, or if one that must have a value is not named.
    TableLoader(std::string source, std::string table, const std::vector<TableColumn>& known,
                const std::vector<std::string>& columns);

    [[nodiscard]] const std::string& table() const noexcept { return table_; }
    /// The named columns in their order.
    [[nodiscard]] const std::vector<TableColumn>& columns() const noexcept { return columns_; }
    /// Raises the LoadError of a row that the database refuses, with its words.
    [[noreturn]] void refuseRow(const std::string& reason) const;
    /// Raises the LoadError of a row whose values in the columns of a key are in the table already.
    [[noreturn]] void refuseDoubleKey(std::vector<std::string> keyColumns) const;

private:
    /// Writes one row, a value for each column. An Error of the database, or LoadError (refuseRow) if it refuses this row.
    virtual void insert(const std::vector<Variant>& values) = 0;
    [[noreturn]] void refuse(LoadError::Kind kind, const std::string& column,
                             std::vector<std::string> arguments = {}) const;

    std::string source_;
    std::string table_;
    std::vector<TableColumn> columns_;
    std::vector<Variant> values_;
    std::int64_t count_ = 0;
};

} // namespace z7::cashflow::shared
