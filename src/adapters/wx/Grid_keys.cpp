#include "adapters/wx/Grid.h"

#include "adapters/wx/platform.h"
#include "adapters/wx/text.h"

#include <wx/event.h>
#include <wx/window.h>

#include <algorithm>

namespace z7::cashflow::wx {

void Grid::bindEvents() {
    wxWindow& cells = view_.cells();
    view_.window().Bind(wxEVT_KEY_DOWN, &Grid::onGridKey, this);
    view_.window().Bind(wxEVT_CHAR, &Grid::onCharacter, this);
    cells.Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) { onClick(event, false); });
    cells.Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) { onClick(event, true); });
    // The toolkit's own mouse handling moves a cursor that this grid does not use.
    cells.Bind(wxEVT_LEFT_UP, [](wxMouseEvent& /*event*/) {});
    cells.Bind(wxEVT_RIGHT_DOWN, [](wxMouseEvent& /*event*/) {});
    cells.Bind(wxEVT_MOTION, [](wxMouseEvent& /*event*/) {});
    cells.Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        if (editor_.Visible()) {
            view_.cells().CallAfter([this] { SetFocus(); });
        }
        event.Skip();
    });
    cells.Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
        if (editor_.Visible()) {
            editor_.place(view_.placeOf(model_.current())); // the cells may have been scrolled, or a column resized
        }
        event.Skip();
    });
}

void Grid::onGridKey(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (key == WXK_F2) {
        openEditor();
    } else if (key == WXK_BACK) {
        openEditor(wxString());
    } else if (!travel(event) && !travelByPlace(event)) {
        event.Skip();
    }
}

void Grid::onCharacter(wxKeyEvent& event) {
    const wxChar character = event.GetUnicodeKey();
    if (character >= L' ' && character != WXK_DELETE && !event.ControlDown() && !event.AltDown()) {
        openEditor(wxString(character));
    }
}

void Grid::onClick(wxMouseEvent& event, bool twice) {
    if (gate_.busy()) {
        return;
    }
    const auto cell = view_.cellAt(event.GetPosition());
    if (!cell) {
        SetFocus();
        return;
    }
    const bool again = *cell == model_.current();
    if (again && editor_.Visible()) {
        editor_.focus();
    } else if ((again || moveTo(*cell)) && (again || twice)) {
        if (!openEditor()) {
            SetFocus();
        }
    }
}

bool Grid::onEditorKey(const wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE) {
        closeEditor();
        return true;
    }
    return travel(event);
}

bool Grid::travel(const wxKeyEvent& event) {
    if (gate_.busy()) {
        return true;
    }
    const CellPlace at = model_.current();
    const std::int32_t first = model_.fixedRows();
    const std::int32_t last = std::max(first, model_.rows() - 1);
    const auto toRow = [&](std::int32_t row) { moveTo({std::clamp(row, first, last), at.col}); };
    switch (event.GetKeyCode()) {
    case WXK_TAB:
        if (event.ControlDown()) {
            leave(!event.ShiftDown());
        } else if (event.ShiftDown()) {
            backward(true);
        } else {
            forward(true);
        }
        return true;
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
        if (event.ShiftDown()) {
            backward(false);
        } else {
            forward(false);
        }
        return true;
    case WXK_F4:
        reference();
        return true;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
        if (event.AltDown()) {
            reference();
        } else {
            toRow(at.row + 1);
        }
        return true;
    case WXK_UP:
    case WXK_NUMPAD_UP:
        toRow(at.row - 1);
        return true;
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
        toRow(at.row + view_.rowsSeen());
        return true;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
        toRow(at.row - view_.rowsSeen());
        return true;
    default:
        return false;
    }
}

bool Grid::travelByPlace(const wxKeyEvent& event) {
    const CellPlace at = model_.current();
    const bool control = event.ControlDown();
    const std::int32_t lastRow = std::max(model_.fixedRows(), model_.rows() - 1);
    switch (event.GetKeyCode()) {
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
        moveTo({at.row, neighbourColumn(at.col, -1)});
        return true;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
        moveTo({at.row, neighbourColumn(at.col, 1)});
        return true;
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
        moveTo({control ? model_.fixedRows() : at.row, neighbourColumn(model_.fixedCols() - 1, 1)});
        return true;
    case WXK_END:
    case WXK_NUMPAD_END:
        moveTo({control ? lastRow : at.row, neighbourColumn(model_.cols(), -1)});
        return true;
    default:
        return false;
    }
}

void Grid::forward(bool mayLeave) {
    if (readOnly_ || !model_.onDataRow()) {
        if (mayLeave) {
            leave(true);
        }
        return;
    }
    if (!settleEditor()) {
        return;
    }
    if (const auto next = model_.nextEditable(model_.current())) {
        moveTo(*next);
        return;
    }
    if (!settleLine()) {
        return;
    }
    const std::int32_t before = model_.rows();
    gate_.raise([this] { gate_.listener().AppendRow(); });
    if (model_.rows() > before) {
        SetFocus();
    } else if (mayLeave) {
        leave(true);
    }
}

void Grid::backward(bool mayLeave) {
    if (!readOnly_ && model_.onDataRow()) {
        if (!settleEditor()) {
            return;
        }
        if (const auto previous = model_.previousEditable(model_.current())) {
            moveTo(*previous);
            return;
        }
    }
    if (mayLeave) {
        leave(false);
    }
}

void Grid::leave(bool forwards) {
    if (settleEditor() && leave_) {
        leave_(forwards);
    }
}

std::int32_t Grid::neighbourColumn(std::int32_t from, std::int32_t step) const {
    for (std::int32_t col = from + step; col >= 0 && col < model_.cols(); col += step) {
        if (model_.column(col).width > 0) {
            return col;
        }
    }
    return std::clamp(from, 0, std::max(0, model_.cols() - 1));
}

namespace {

std::string placeText(const std::string& name, const wxRect& place, double scale) {
    const auto scaled = [scale](int value) { return std::to_string(static_cast<int>(value * scale)); };
    return name + " " + scaled(place.x) + " " + scaled(place.y) + " " + scaled(place.width) + " " +
           scaled(place.height) + "\n";
}

} // namespace

std::string Grid::state() const {
    const CellPlace at = model_.current();
    std::string text = "row=" + std::to_string(at.row) + "\tcol=" + std::to_string(at.col) +
                       "\trows=" + std::to_string(model_.rows()) + "\tedit=";
    text += editor_.Visible() ? "open\ttext=" + utf8(editor_.text()) : "closed\ttext=";
    text += "\tcells=";
    if (at.row < model_.rows()) {
        for (std::int32_t col = 0; col < model_.cols() - 1; ++col) { // without the hidden key, which varies
            text += model_.text({at.row, col}) + "|";
        }
    }
    return text;
}

std::string Grid::places() const {
    const double scale = view_.window().GetContentScaleFactor();
    const auto onScreen = [](wxWindow& window, wxRect place) {
        place.SetPosition(window.ClientToScreen(place.GetPosition()));
        return place;
    };
    std::string text;
    for (std::int32_t col = 0; col < model_.cols(); ++col) {
        wxRect place = view_.placeOf({model_.fixedRows(), col});
        place.y = 0;
        place.height = view_.header().GetSize().y;
        text += placeText("column." + std::to_string(col), onScreen(view_.header(), place), scale);
    }
    if (model_.onDataRow()) {
        text += placeText("cell", onScreen(view_.cells(), view_.placeOf(model_.current())), scale);
    }
    if (const auto button = editor_.referencePlace()) {
        text += placeText("reference", *button, scale);
    }
    return text;
}

} // namespace z7::cashflow::wx
