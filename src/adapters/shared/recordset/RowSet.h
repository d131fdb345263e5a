#pragma once

#include "adapters/shared/recordset/Column.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// All rows of a result, fetched to the client. A value is stored as the database returned it, in 16 bytes plus its
/// text, and converted to its column's type on access, because most values of a result are never read.
class RowSet {
public:
    /// An empty result with these columns, which results can share.
    explicit RowSet(std::shared_ptr<const ColumnList> columns);

    /// The columns.
    [[nodiscard]] const ColumnList& columns() const noexcept { return *columns_; }
    /// The number of complete rows; 0 without columns.
    [[nodiscard]] std::size_t rowCount() const noexcept { return width_ == 0 ? 0 : cells_.size() / width_; }
    /// The number of bytes used by the values.
    [[nodiscard]] std::size_t byteSize() const noexcept { return cells_.size() * sizeof(Cell) + texts_.size(); }

    /// Each of these appends the next value; a row is complete when it has as many values as there are columns.
    /// Appends null as the next value; a row is complete when it has as many values as there are columns.
    void addNull() { cells_.push_back({Kind::null, 0, {}}); }
    /// Appends a whole number.
    void addInteger(std::int64_t value) { cells_.push_back({Kind::integer, 0, {.integer = value}}); }
    /// Appends a double.
    void addReal(double value) { cells_.push_back({Kind::real, 0, {.real = value}}); }
    /// Appends a date.
    void addDate(Date value) { cells_.push_back({Kind::date, 0, {.real = value.dayNumber()}}); }
    /// A text, or a date as text. Error 7 if it is longer than 2 GiB.
    void addText(std::string_view text);
    /// A value of any kind: a boolean as 1 or 0, a text as with addText.
    void add(const Variant& value);
    /// Appends a complete row of nulls.
    void addNullRow() { cells_.resize(cells_.size() + width_, Cell{Kind::null, 0, {}}); }

    /// The value in its column's type, or in the narrowest type that can hold it if the column's type cannot.
    [[nodiscard]] Variant value(std::size_t row, int column) const;
    /// The value as a number: a boolean is 1 or 0, a date its day number. Empty for null and for texts that are
    /// not numbers.
    [[nodiscard]] std::optional<double> number(std::size_t row, int column) const;
    /// Replaces an existing value. Error 7 as for addText; the old value is then kept.
    void replace(std::size_t row, int column, const Variant& value);

private:
    enum class Kind : std::uint32_t { null, integer, real, date, text };
    struct Cell {
        Kind kind;
        std::uint32_t length;
        union {
            std::int64_t integer;
            double real;
            std::uint64_t offset;
        } payload;
    };

    [[nodiscard]] const Cell& cell(std::size_t row, int column) const {
        return cells_[row * width_ + static_cast<std::size_t>(column)];
    }
    [[nodiscard]] std::string_view text(const Cell& cell) const {
        return std::string_view(texts_).substr(static_cast<std::size_t>(cell.payload.offset), cell.length);
    }

    std::shared_ptr<const ColumnList> columns_;
    std::size_t width_;
    std::vector<Cell> cells_;
    std::string texts_;
};

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
