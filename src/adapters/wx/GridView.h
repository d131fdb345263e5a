#pragma once

#include "adapters/wx/GridModel.h"

#include <wx/colour.h>
#include <wx/gdicmn.h>

#include <optional>

class wxFont;
class wxGrid;
class wxWindow;

namespace z7::cashflow::wx {

/// The colours of a grid.
struct GridColors {
    wxColour cell;
    wxColour text;
    wxColour selection;
    wxColour selectionText;
    wxColour header;
    wxColour headerText;
    wxColour headerLines;
};

/// Converts a colour of the port: red + 256 * green + 65536 * blue, or a system colour if bit 31 is set.
[[nodiscard]] wxColour colorOf(std::int32_t value);

/// Draws a GridModel on the screen and knows the positions of its cells. It handles no keys, clicks or editing;
/// those of the toolkit are switched off. Rows and columns are those of the model.
class GridView {
public:
    /// The model outlives the view; the parent owns the window.
    GridView(wxWindow& parent, const GridModel& model, const wxRect& place);

    /// The whole grid, and its part that shows the cells.
    [[nodiscard]] wxWindow& window() noexcept;
    [[nodiscard]] wxWindow& cells() noexcept;
    [[nodiscard]] wxWindow& header() noexcept;
    [[nodiscard]] GridColors& colors() noexcept { return colors_; }
    void font(const wxFont& value);
    /// Sets the colour of the area outside the cells.
    void background(const wxColour& value);
    /// The colour of the lines between the cells.
    void lines(const wxColour& value);

    /// Call it when rows or columns of the model were added or removed.
    void sync();
    /// Call it when one cell or all cells have changed.
    void refresh(const CellPlace& place);
    void refresh();
    /// Scrolls until a cell is visible.
    void makeVisible(const CellPlace& place);

    /// The width of a column in pixels of 1/96 inch.
    [[nodiscard]] int columnWidth(std::int32_t col) const;
    void columnWidth(std::int32_t col, int pixels);

    /// The position of a cell in the window of the cells.
    [[nodiscard]] wxRect placeOf(const CellPlace& cell) const;
    /// The cell at a point of that window, if any.
    [[nodiscard]] std::optional<CellPlace> cellAt(const wxPoint& point) const;
    /// The number of rows that are completely visible, at least 1.
    [[nodiscard]] int rowsSeen() const;

private:
    const GridModel& model_;
    wxGrid* grid_ = nullptr;
    GridColors colors_;
};

} // namespace z7::cashflow::wx
