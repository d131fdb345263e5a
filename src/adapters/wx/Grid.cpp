#include "adapters/wx/Grid.h"

#include "adapters/wx/fonts.h"
#include "adapters/wx/platform.h"
#include "adapters/wx/text.h"
#include "adapters/wx/twips.h"
#include "z7cashflow/support/Error.h"

#include <wx/window.h>

#include <algorithm>
#include <limits>

namespace z7::cashflow::wx {

namespace {

constexpr std::int32_t settled = 2;
constexpr std::int32_t notSettled = 1;
constexpr std::int32_t accountColumn = 1; // a line without a text in this column is unfinished
constexpr std::int16_t alignLeft = 1;

wxRect placeOnForm(const wxWindow& form, const ControlDesign& design) {
    return {form.FromDIP(wxPoint(toPixels(design.left), toPixels(design.top))),
            form.FromDIP(wxSize(toPixels(design.width), toPixels(design.height)))};
}

} // namespace

Grid::Grid(wxWindow& form, const ControlDesign& design, EventGate& gate)
    : gate_(gate), view_(form, model_, placeOnForm(form, design)),
      editor_(
          view_.cells(), [this](const wxKeyEvent& event) { return onEditorKey(event); }, [this] { reference(); }),
      points_(design.fontPoints) {
    fontName(design.fontName);
    view_.colors().header = colorOf(design.backColorFixed);
    view_.colors().headerText = colorOf(design.foreColorFixed);
    view_.window().SetName(shown(design.name));
    bindEvents();
}

void Grid::fontName(const std::string& name) {
    const wxFont font = fontOf(name, points_);
    view_.font(font);
    editor_.font(font);
}

void Grid::Rows(std::int32_t value) {
    closeEditor();
    model_.rows(value);
    view_.sync();
}

void Grid::Cols(std::int32_t value) {
    closeEditor();
    model_.cols(value);
    view_.sync();
    for (std::int32_t col = 0; col < value; ++col) {
        view_.columnWidth(col, toPixels(model_.column(col).width));
    }
}

void Grid::FixedRows(std::int32_t value) {
    model_.fixedRows(value);
    view_.sync();
}

void Grid::FixedCols(std::int32_t value) { model_.fixedCols(value); }

void Grid::Row(std::int32_t value) {
    if (value < 0 || value >= model_.rows()) {
        raisePlatformError(Reason::indexOutOfRange, {std::to_string(value)});
    }
    closeEditor();
    setCurrent({value, model_.current().col});
}

void Grid::Col(std::int32_t value) {
    if (value < 0 || value >= model_.cols()) {
        raisePlatformError(Reason::indexOutOfRange, {std::to_string(value)});
    }
    closeEditor();
    setCurrent({model_.current().row, value});
}

void Grid::ColSel(std::int32_t value) { static_cast<void>(model_.column(value)); } // the selected cell is that of Col

std::string Grid::TextMatrix(std::int32_t row, std::int32_t col) const { return model_.text({row, col}); }

void Grid::TextMatrix(std::int32_t row, std::int32_t col, const std::string& text) {
    model_.text({row, col}, text);
    view_.refresh({row, col});
    if (CellPlace{row, col} == model_.current()) {
        nameCells();
    }
}

std::int16_t Grid::ColWidth(std::int32_t col) const {
    const std::int16_t set = model_.column(col).width;
    const int pixels = view_.columnWidth(col);
    if (pixels == toPixels(set)) {
        return set; // not dragged by the user: ignores rounding to pixels
    }
    return static_cast<std::int16_t>(std::min<std::int32_t>(toTwips(pixels), std::numeric_limits<std::int16_t>::max()));
}

void Grid::ColWidth(std::int32_t col, std::int16_t twips) {
    if (twips < 0) {
        raisePlatformError(Reason::argumentNegative, {std::to_string(twips)});
    }
    model_.column(col).width = twips;
    view_.columnWidth(col, toPixels(twips));
}

void Grid::ColAlignment(std::int32_t col, std::int16_t value) {
    model_.column(col).leftAligned = value == alignLeft;
    view_.refresh();
}

void Grid::GridReadOnly(bool value) {
    readOnly_ = value;
    if (value) {
        closeEditor();
    }
}

void Grid::AddItem(const std::string& text, const std::array<std::int32_t, 8>& rowColors,
                   std::optional<std::int32_t> index) {
    closeEditor();
    model_.addRow(text, rowColors, index);
    view_.sync();
}

void Grid::RemoveItem(std::int32_t row) {
    model_.removeRow(row);
    closeEditor();
    view_.sync();
}

void Grid::SetColumnEdit(std::int32_t col, std::int16_t maxLength, std::int32_t kind, std::int32_t /*style*/,
                         std::optional<std::int16_t> decimals) {
    if (kind < 0 || kind > static_cast<std::int32_t>(EditKind::number)) {
        raisePlatformError(Reason::editKindUnknown, {std::to_string(kind)});
    }
    GridColumn& column = model_.column(col);
    column.maxLength = maxLength;
    column.kind = static_cast<EditKind>(kind);
    column.decimals = decimals.value_or(0);
}

void Grid::SetCellColor(std::int32_t row, std::int32_t col, std::int32_t color) {
    model_.color({row, col}, color);
    view_.refresh({row, col});
}

std::int32_t Grid::FinishEdit() {
    const CellPlace place = model_.current();
    if (!model_.onDataRow()) {
        return settled;
    }
    if (place.row == model_.rows() - 1 && model_.cols() > accountColumn) {
        const bool editingAccount = editor_.Visible() && place.col == accountColumn;
        const bool unfinished =
            editingAccount ? editor_.text().empty() : model_.text({place.row, accountColumn}).empty();
        if (unfinished) {
            RemoveItem(place.row);
            return settled;
        }
    }
    return settleEditor() && settleLine() ? settled : notSettled;
}

void Grid::SetFocus() {
    if (editor_.Visible()) {
        editor_.focus();
    } else {
        view_.cells().SetFocus();
    }
}

void Grid::BackColorSel(std::int32_t color) {
    view_.colors().selection = colorOf(color);
    view_.refresh();
}

void Grid::ForeColorSel(std::int32_t color) {
    view_.colors().selectionText = colorOf(color);
    view_.refresh();
}

void Grid::BackColorBkg(std::int32_t color) { view_.background(colorOf(color)); }

void Grid::GridColor(std::int32_t color) { view_.lines(colorOf(color)); }

void Grid::GridColorFixed(std::int32_t color) {
    view_.colors().headerLines = colorOf(color);
    view_.refresh();
}

bool Grid::hasFocus() const {
    const wxWindow* window = wxWindow::FindFocus();
    while (window != nullptr && window != &view_.window()) {
        window = window->GetParent();
    }
    return window != nullptr;
}

void Grid::setCurrent(const CellPlace& place) {
    const CellPlace before = model_.current();
    model_.currentRow(place.row);
    model_.currentCol(place.col);
    if (before.row < model_.rows()) {
        view_.refresh(before);
    }
    view_.refresh(place);
    view_.makeVisible(place);
    nameCells();
}

void Grid::nameCells() {
    const CellPlace place = model_.current();
    if (model_.onDataRow() && place.col < model_.cols()) {
        accessibleName(view_.cells(), shown(model_.text({0, place.col}) + ": " + model_.text(place)));
    }
}

bool Grid::openEditor(const std::optional<wxString>& typed) {
    const CellPlace place = model_.current();
    if (readOnly_ || editor_.Visible() || gate_.busy() || !model_.editable(place)) {
        return false;
    }
    const GridColumn& column = model_.column(place.col);
    if (typed && column.kind == EditKind::number && !isBeginningOfNumber(typed->ToStdWstring(), column.decimals)) {
        return false;
    }
    bool cancel = false;
    const bool asked = gate_.raise([&] { gate_.listener().BeforeEdit(cancel, place.col); });
    if (!asked || cancel || !(place == model_.current()) || !model_.editable(place)) {
        SetFocus();
        return false;
    }
    showEditor(typed, !typed);
    return true;
}

void Grid::showEditor(const std::optional<wxString>& text, bool selectAll) {
    const CellPlace place = model_.current();
    view_.makeVisible(place);
    editor_.name(shown(model_.text({0, place.col})));
    editor_.open(view_.placeOf(place), model_.column(place.col), text.value_or(shown(model_.text(place))), selectAll);
}

void Grid::closeEditor() {
    if (editor_.Visible()) {
        const bool keys = editor_.hasFocus();
        editor_.close();
        if (keys) {
            view_.cells().SetFocus();
        }
    }
}

void Grid::reference() {
    const CellPlace place = model_.current();
    if (gate_.busy() || model_.cols() == 0 || model_.column(place.col).kind != EditKind::reference ||
        (!editor_.Visible() && !openEditor())) {
        return;
    }
    const std::string typed = utf8(editor_.text());
    const std::string before = model_.text(place);
    model_.text(place, typed);
    std::string text = typed;
    gate_.raise([&] { gate_.listener().ReferenceClick(text, place.row, place.col); });
    if (place.row < model_.rows() && place.col < model_.cols() && model_.text(place) == typed) {
        model_.text(place, before);
    }
    if (!(place == model_.current()) || !model_.editable(place)) {
        return;
    }
    if (!editor_.Visible()) {
        showEditor(std::nullopt, false);
    }
    editor_.text(shown(text));
    editor_.focus();
}

bool Grid::settleEditor() {
    if (!editor_.Visible()) {
        return true;
    }
    const CellPlace place = model_.current();
    const wxString typed = editor_.text();
    std::string text = utf8(typed);
    std::int32_t cancel = 0;
    const bool asked = gate_.raise([&] { gate_.listener().CellValidate(text, cancel, place.row, place.col); });
    const bool there = place.row < model_.rows() && place.col < model_.cols();
    if (asked && cancel == 0) {
        if (there) {
            TextMatrix(place.row, place.col, text);
            model_.changed(place.row, true);
        }
        closeEditor();
        return true;
    }
    if (there && !editor_.Visible()) {
        setCurrent(place);
        showEditor(typed, false);
    }
    SetFocus();
    return false;
}

bool Grid::settleLine() {
    const CellPlace place = model_.current();
    if (!model_.onDataRow() || !model_.changed(place.row)) {
        return true;
    }
    std::int32_t cancel = 0;
    std::int32_t col = place.col;
    const bool asked = gate_.raise([&] { gate_.listener().RowValidate(cancel, place.row, col); });
    if (place.row >= model_.rows()) {
        return true;
    }
    if (asked && cancel == 0) {
        model_.changed(place.row, false);
        return true;
    }
    setCurrent({place.row, col >= 0 && col < model_.cols() ? col : place.col});
    SetFocus();
    return false;
}

bool Grid::moveTo(CellPlace target) {
    if (!settleEditor() || (target.row != model_.current().row && !settleLine())) {
        return false;
    }
    if (target.row < model_.fixedRows() || target.row >= model_.rows() || target.col >= model_.cols()) {
        return false;
    }
    setCurrent(target);
    SetFocus();
    return true;
}

} // namespace z7::cashflow::wx
