#include "adapters/wx/GridView.h"

#include "adapters/wx/platform.h"
#include "adapters/wx/text.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <wx/control.h>
#include <wx/dc.h>
#include <wx/grid.h>
#include <wx/settings.h>

#include <algorithm>

namespace z7::cashflow::wx {

namespace {

constexpr int rowHeight = 21;
constexpr int headerHeight = 22;
constexpr int cellMargin = 3;
constexpr int scrollStep = 5; // small, so that no digit of a column is cut off at the end

/// Provides the texts of a model to the toolkit's grid, which has no row for the header.
class ModelTable final : public wxGridTableBase {
public:
    explicit ModelTable(const GridModel& model) : model_(model) {}

    int GetNumberRows() override { return shownRows; }
    int GetNumberCols() override { return shownCols; }
    wxString GetValue(int row, int col) override { return shown(model_.text({row + model_.fixedRows(), col})); }
    void SetValue(int /*row*/, int /*col*/, const wxString& /*value*/) override {}
    wxString GetColLabelValue(int col) override {
        return model_.rows() > 0 && model_.fixedRows() > 0 ? shown(model_.text({0, col})) : wxString();
    }

    int shownRows = 0;
    int shownCols = 0;

private:
    const GridModel& model_;
};

/// Draws a text in a rectangle; a text that does not fit ends in an ellipsis.
void drawText(wxDC& dc, const wxString& text, const wxRect& place, int alignment) {
    wxRect inner = place;
    inner.Deflate(cellMargin, 0);
    const wxDCClipper clip(dc, place);
    dc.DrawLabel(wxControl::Ellipsize(text, dc, wxELLIPSIZE_END, inner.width, wxELLIPSIZE_FLAGS_NONE), inner,
                 alignment | wxALIGN_CENTRE_VERTICAL);
}

class CellPainter final : public wxGridCellRenderer {
public:
    CellPainter(const GridModel& model, const GridColors& colors) : model_(model), colors_(colors) {}

    void Draw(wxGrid& grid, wxGridCellAttr& /*attr*/, wxDC& dc, const wxRect& rect, int row, int col,
              bool /*isSelected*/) override {
        const CellPlace place{row + model_.fixedRows(), col};
        const bool current = place == model_.current();
        const auto own = model_.color(place);
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(current ? colors_.selection : own ? colorOf(*own) : colors_.cell));
        dc.DrawRectangle(rect);
        dc.SetFont(grid.GetDefaultCellFont());
        dc.SetTextForeground(current ? colors_.selectionText : colors_.text);
        const bool right = !model_.column(col).leftAligned && readNumber(model_.text(place)).has_value();
        drawText(dc, shown(model_.text(place)), rect, right ? wxALIGN_RIGHT : wxALIGN_LEFT);
    }

    wxSize GetBestSize(wxGrid& grid, wxGridCellAttr& /*attr*/, wxDC& dc, int row, int col) override {
        dc.SetFont(grid.GetDefaultCellFont());
        const wxSize text = dc.GetTextExtent(shown(model_.text({row + model_.fixedRows(), col})));
        return {text.x + 2 * cellMargin + 1, grid.FromDIP(rowHeight)};
    }

    wxGridCellRenderer* Clone() const override {
        // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the grid uses reference counting
        return new CellPainter(model_, colors_);
    }

private:
    const GridModel& model_;
    const GridColors& colors_;
};

class HeaderPainter final : public wxGridColumnHeaderRenderer {
public:
    explicit HeaderPainter(const GridColors& colors) : colors_(colors) {}

    void DrawBorder(const wxGrid& /*grid*/, wxDC& dc, wxRect& rect) const override {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(colors_.header));
        dc.DrawRectangle(rect);
        dc.SetPen(wxPen(colors_.headerLines));
        dc.DrawLine(rect.GetRight(), rect.GetTop(), rect.GetRight(), rect.GetBottom() + 1);
        dc.DrawLine(rect.GetLeft(), rect.GetBottom(), rect.GetRight() + 1, rect.GetBottom());
    }

    void DrawLabel(const wxGrid& grid, wxDC& dc, const wxString& value, const wxRect& rect, int /*horizAlign*/,
                   int /*vertAlign*/, int /*textOrientation*/) const override {
        dc.SetFont(grid.GetLabelFont());
        dc.SetTextForeground(colors_.headerText);
        drawText(dc, value, rect, wxALIGN_CENTRE_HORIZONTAL);
    }

private:
    const GridColors& colors_;
};

class HeaderPainters final : public wxGridCellAttrProvider {
public:
    explicit HeaderPainters(const GridColors& colors) : painter_(colors) {}
    const wxGridColumnHeaderRenderer& GetColumnHeaderRenderer(int /*col*/) override { return painter_; }

private:
    HeaderPainter painter_;
};

} // namespace

wxColour colorOf(std::int32_t value) {
    if (value < 0) {
        return wxSystemSettings::GetColour(static_cast<wxSystemColour>(value & 0xFF));
    }
    const auto byte = [value](int shift) { return static_cast<unsigned char>((value >> shift) & 0xFF); };
    return {byte(0), byte(8), byte(16)};
}

// The parent owns the windows; the grid owns the table and the painters, as the toolkit requires.
// NOLINTBEGIN(cppcoreguidelines-owning-memory)
GridView::GridView(wxWindow& parent, const GridModel& model, const wxRect& place) : model_(model) {
    colors_ = {*wxWHITE, *wxBLACK, *wxBLACK, *wxWHITE, *wxLIGHT_GREY, *wxBLACK, *wxLIGHT_GREY};
    grid_ = new wxGrid(&parent, wxID_ANY, place.GetPosition(), place.GetSize(), wxWANTS_CHARS | wxBORDER_SIMPLE);
    auto* const table = new ModelTable(model_);
    table->SetAttrProvider(new HeaderPainters(colors_));
    grid_->SetTable(table, true, wxGrid::wxGridSelectNone);
    grid_->SetDefaultRenderer(new CellPainter(model_, colors_));
    grid_->EnableEditing(false);
    keepScrollBars(*grid_);
    grid_->SetRowLabelSize(0);
    grid_->SetColLabelSize(grid_->FromDIP(headerHeight));
    grid_->SetDefaultRowSize(grid_->FromDIP(rowHeight));
    grid_->SetMargins(0, 0);
    grid_->SetScrollLineX(scrollStep);
    grid_->DisableDragRowSize();
    grid_->DisableDragGridSize();
    grid_->SetCellHighlightPenWidth(0);
    grid_->SetCellHighlightROPenWidth(0);
    grid_->Bind(wxEVT_GRID_LABEL_LEFT_CLICK, [](wxGridEvent& /*event*/) {}); // a title moves no cursor
    grid_->Bind(wxEVT_GRID_LABEL_LEFT_DCLICK, [](wxGridEvent& /*event*/) {});
}
// NOLINTEND(cppcoreguidelines-owning-memory)

wxWindow& GridView::window() noexcept { return *grid_; }

wxWindow& GridView::cells() noexcept { return *grid_->GetGridWindow(); }

wxWindow& GridView::header() noexcept { return *grid_->GetGridColLabelWindow(); }

void GridView::font(const wxFont& value) {
    grid_->SetDefaultCellFont(value);
    grid_->SetLabelFont(value);
    refresh();
}

void GridView::background(const wxColour& value) {
    grid_->SetDefaultCellBackgroundColour(value);
    colors_.cell = value;
    refresh();
}

void GridView::lines(const wxColour& value) { grid_->SetGridLineColour(value); }

void GridView::sync() {
    auto* const table = dynamic_cast<ModelTable*>(grid_->GetTable());
    const int cols = model_.cols();
    const int rows = std::max(0, model_.rows() - model_.fixedRows());
    const auto tell = [&](int& shownCount, int wanted, int appended, int deleted) {
        const int more = wanted - shownCount;
        shownCount = wanted;
        if (more > 0) {
            wxGridTableMessage message(table, appended, more);
            grid_->ProcessTableMessage(message);
        } else if (more < 0) {
            wxGridTableMessage message(table, deleted, wanted, -more);
            grid_->ProcessTableMessage(message);
        }
    };
    tell(table->shownCols, cols, wxGRIDTABLE_NOTIFY_COLS_APPENDED, wxGRIDTABLE_NOTIFY_COLS_DELETED);
    tell(table->shownRows, rows, wxGRIDTABLE_NOTIFY_ROWS_APPENDED, wxGRIDTABLE_NOTIFY_ROWS_DELETED);
    refresh();
}

void GridView::refresh(const CellPlace& place) {
    const int row = place.row - model_.fixedRows();
    if (row < 0) {
        header().Refresh();
    } else if (row < grid_->GetNumberRows() && place.col < grid_->GetNumberCols()) {
        grid_->RefreshBlock(row, place.col, row, place.col);
    }
}

void GridView::refresh() { grid_->ForceRefresh(); }

void GridView::makeVisible(const CellPlace& place) {
    const int row = place.row - model_.fixedRows();
    if (row >= 0 && row < grid_->GetNumberRows() && place.col < grid_->GetNumberCols()) {
        grid_->MakeCellVisible(row, place.col);
    }
}

int GridView::columnWidth(std::int32_t col) const { return grid_->ToDIP(grid_->GetColSize(col)); }

void GridView::columnWidth(std::int32_t col, int pixels) {
    grid_->SetColSize(col, grid_->FromDIP(pixels));
    if (pixels == 0) {
        grid_->DisableColResize(col);
    }
}

wxRect GridView::placeOf(const CellPlace& cell) const {
    wxRect place = grid_->CellToRect(cell.row - model_.fixedRows(), cell.col);
    place.SetPosition(grid_->CalcScrolledPosition(place.GetPosition()));
    return place;
}

std::optional<CellPlace> GridView::cellAt(const wxPoint& point) const {
    const wxPoint unscrolled = grid_->CalcUnscrolledPosition(point);
    const int row = grid_->YToRow(unscrolled.y);
    const int col = grid_->XToCol(unscrolled.x);
    if (row == wxNOT_FOUND || col == wxNOT_FOUND) {
        return std::nullopt;
    }
    return CellPlace{row + model_.fixedRows(), col};
}

int GridView::rowsSeen() const {
    return std::max(1, grid_->GetGridWindow()->GetClientSize().y / grid_->GetDefaultRowSize());
}

} // namespace z7::cashflow::wx
