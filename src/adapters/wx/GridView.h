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

/// A colour of the port: red + 256 * green + 65536 * blue, or a colour of the user's system where bit 31 is set.
[[nodiscard]] wxColour colorOf(std::int32_t value);

/// Draws a GridModel on the screen and says where its cells are. It knows no keys, no clicks and no editor; the
/// toolkit's own are switched off. Rows and columns are those of the model.
class GridView {
public:
    /// The model outlives the view; the parent owns the window.
    GridView(wxWindow& parent, const GridModel& model, const wxRect& place);

    /// The whole grid, and the part of it that shows the cells.
    [[nodiscard]] wxWindow& window() noexcept;
    [[nodiscard]] wxWindow& cells() noexcept;
    [[nodiscard]] wxWindow& header() noexcept;
    [[nodiscard]] GridColors& colors() noexcept { return colors_; }
    void font(const wxFont& value);
    /// The colour beside the cells.
    void background(const wxColour& value);
    /// The colour of the lines between the cells.
    void lines(const wxColour& value);

    /// To be called when the model has other rows or columns.
    void sync();
    /// To be called when a cell or all of them have changed.
    void refresh(const CellPlace& place);
    void refresh();
    /// Scrolls until a cell can be seen.
    void makeVisible(const CellPlace& place);

    /// Width of a column on the screen in pixels.
    [[nodiscard]] int columnWidth(std::int32_t col) const;
    void columnWidth(std::int32_t col, int pixels);

    /// A cell's place in the window of the cells.
    [[nodiscard]] wxRect placeOf(const CellPlace& cell) const;
    /// The cell at a point of that window, if there is one.
    [[nodiscard]] std::optional<CellPlace> cellAt(const wxPoint& point) const;
    /// How many whole rows are seen at once, at least 1.
    [[nodiscard]] int rowsSeen() const;

private:
    const GridModel& model_;
    wxGrid* grid_ = nullptr;
    GridColors colors_;
};

} // namespace z7::cashflow::wx
