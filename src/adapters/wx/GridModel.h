#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::wx {

/// Kinds of editors, numbered as in SuperGrid::SetColumnEdit.
enum class EditKind : std::int32_t { text = 0, reference = 1, number = 2 };

/// The properties of a grid column.
struct GridColumn {
    std::int16_t width = 1000;      ///< twips; 0 hides the column
    std::int16_t maxLength = 0;     ///< maximum length of a text in the editor in characters; 0 for no limit
    EditKind kind = EditKind::text; ///< its editor
    std::int16_t decimals = 0;      ///< of a number
    bool leftAligned = false;       ///< texts are left-aligned; otherwise numbers are right-aligned
};

/// A position in the grid. Rows and columns are counted from 0, including the header.
struct CellPlace {
    std::int32_t row = 0;
    std::int32_t col = 0;
    friend bool operator==(const CellPlace&, const CellPlace&) = default;
};

/// The texts, colours, columns and current cell of a grid, without a window. It follows the rules of the port
/// SuperGrid; no operation on a cell takes time that grows with the number of rows.
///
/// Error 9 for a row or column that does not exist, and for a negative count.
class GridModel {
public:
    [[nodiscard]] std::int32_t rows() const noexcept { return static_cast<std::int32_t>(rows_.size()); }
    void rows(std::int32_t value);
    [[nodiscard]] std::int32_t cols() const noexcept { return static_cast<std::int32_t>(columns_.size()); }
    void cols(std::int32_t value);
    [[nodiscard]] std::int32_t fixedRows() const noexcept { return fixedRows_; }
    void fixedRows(std::int32_t value);
    [[nodiscard]] std::int32_t fixedCols() const noexcept { return fixedCols_; }
    void fixedCols(std::int32_t value);

    [[nodiscard]] const CellPlace& current() const noexcept { return current_; }
    void currentRow(std::int32_t value);
    void currentCol(std::int32_t value);
    /// Whether the current cell is below the header.
    [[nodiscard]] bool onDataRow() const noexcept { return current_.row >= fixedRows_ && current_.row < rows(); }

    [[nodiscard]] const std::string& text(const CellPlace& place) const { return cell(place).text; }
    void text(const CellPlace& place, const std::string& value) { cell(place).text = value; }
    /// The cell's own colour, if it has one.
    [[nodiscard]] std::optional<std::int32_t> color(const CellPlace& place) const { return cell(place).color; }
    void color(const CellPlace& place, std::int32_t value) { cell(place).color = value; }

    [[nodiscard]] const GridColumn& column(std::int32_t col) const;
    [[nodiscard]] GridColumn& column(std::int32_t col);

    /// Inserts a row before an index, or at the end. The row counts as changed.
    void addRow(const std::string& firstText, const std::array<std::int32_t, 8>& colors,
                std::optional<std::int32_t> index);
    void removeRow(std::int32_t row);

    /// Whether the user has changed the row since it was last left successfully.
    [[nodiscard]] bool changed(std::int32_t row) const;
    void changed(std::int32_t row, bool value);

    /// Sets the colour of cells filled by the system, which users cannot edit.
    void systemColor(std::int32_t value) { systemColor_ = value; }
    /// Whether the user may edit a cell: below the header, in a visible column, not filled by the system.
    [[nodiscard]] bool editable(const CellPlace& place) const;
    /// The next editable cell in reading order, or the previous one; empty at the end.
    [[nodiscard]] std::optional<CellPlace> nextEditable(CellPlace from) const;
    [[nodiscard]] std::optional<CellPlace> previousEditable(CellPlace from) const;

private:
    struct Cell {
        std::string text;
        std::optional<std::int32_t> color;
    };
    struct Row {
        std::vector<Cell> cells;
        bool changed = false;
    };

    [[nodiscard]] const Cell& cell(const CellPlace& place) const;
    [[nodiscard]] Cell& cell(const CellPlace& place);
    void requireRow(std::int32_t row) const;
    void requireCol(std::int32_t col) const;
    void afterRowCount(std::int32_t before);

    std::vector<Row> rows_;
    std::vector<GridColumn> columns_;
    std::int32_t fixedRows_ = 0;
    std::int32_t fixedCols_ = 0;
    std::optional<std::int32_t> systemColor_;
    CellPlace current_;
};

} // namespace z7::cashflow::wx
