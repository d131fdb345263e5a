#pragma once

#include "adapters/wx/CellEditor.h"
#include "adapters/wx/EventGate.h"
#include "adapters/wx/GridModel.h"
#include "adapters/wx/GridView.h"
#include "z7cashflow/ports/DialogForm.h"
#include "z7cashflow/ports/SuperGrid.h"

#include <functional>
#include <optional>
#include <string>

class wxKeyEvent;
class wxMouseEvent;
class wxWindow;

namespace z7::cashflow::wx {

/// The grid of the dialog: the cells with their cursor and editor, their keys and clicks, and the events that these
/// raise.
///
/// Every way out of a cell passes one check: it calls CellValidate for an open editor and, if the line is left as
/// well, RowValidate for the line. If refused, the editor stays open with its text and the focus.
///
/// Keys: Tab and Enter move to the next editable cell, and after the last one request a new line; if there is none,
/// Tab leaves the grid, as Ctrl+Tab always does. Shift moves backwards. The arrow keys, Home, End and the page keys
/// move the cursor, with Ctrl to the ends. F2 opens the editor, any character opens it and replaces the text,
/// Backspace opens it empty; F4 and Alt+Down press its reference button; Escape discards what was typed.
///
/// Assistive technology reads the grid as one control, whose name consists of the title and the text of the current
/// cell.
class Grid final : public SuperGrid {
public:
    /// The form owns the grid's window; the gate outlives the grid.
    Grid(wxWindow& form, const ControlDesign& design, EventGate& gate);

    void fontName(const std::string& name) override;

    [[nodiscard]] std::string typeName() const override { return "SuperGrid"; }
    [[nodiscard]] std::int32_t Rows() const override { return model_.rows(); }
    void Rows(std::int32_t value) override;
    [[nodiscard]] std::int32_t Cols() const override { return model_.cols(); }
    void Cols(std::int32_t value) override;
    [[nodiscard]] std::int32_t FixedRows() const override { return model_.fixedRows(); }
    void FixedRows(std::int32_t value) override;
    [[nodiscard]] std::int32_t FixedCols() const override { return model_.fixedCols(); }
    void FixedCols(std::int32_t value) override;
    [[nodiscard]] std::int32_t Row() const override { return model_.current().row; }
    void Row(std::int32_t value) override;
    [[nodiscard]] std::int32_t Col() const override { return model_.current().col; }
    void Col(std::int32_t value) override;
    void ColSel(std::int32_t value) override;
    [[nodiscard]] std::string TextMatrix(std::int32_t row, std::int32_t col) const override;
    void TextMatrix(std::int32_t row, std::int32_t col, const std::string& text) override;
    [[nodiscard]] std::int16_t ColWidth(std::int32_t col) const override;
    void ColWidth(std::int32_t col, std::int16_t twips) override;
    void ColAlignment(std::int32_t col, std::int16_t value) override;
    void GridMode(std::int32_t /*value*/) override {} // there is only one mode
    void GridReadOnly(bool value) override;
    void AddItem(const std::string& text, const std::array<std::int32_t, 8>& rowColors,
                 std::optional<std::int32_t> index) override;
    void RemoveItem(std::int32_t row) override;
    void SetColumnEdit(std::int32_t col, std::int16_t maxLength, std::int32_t kind, std::int32_t style,
                       std::optional<std::int16_t> decimals) override;
    void SetDefaultColor(std::int32_t color) override { model_.systemColor(color); }
    void SetCellColor(std::int32_t row, std::int32_t col, std::int32_t color) override;
    [[nodiscard]] std::int32_t FinishEdit() override;
    [[nodiscard]] cashflow::ActiveEditor* ActiveEditor() override { return &editor_; }
    void SetFocus() override;
    void BackColorSel(std::int32_t color) override;
    void ForeColorSel(std::int32_t color) override;
    void BackColorBkg(std::int32_t color) override;
    void GridColor(std::int32_t color) override;
    void GridColorFixed(std::int32_t color) override;

    /// Opens the editor of the current cell for the user, if the cell and BeforeEdit permit it.
    bool openEditor() { return openEditor(std::nullopt); }
    /// Sets the function called when Tab leaves the grid; its argument is true for forwards.
    void onLeave(std::function<void(bool)> leave) { leave_ = std::move(leave); }
    [[nodiscard]] wxWindow& window() noexcept { return view_.window(); }
    [[nodiscard]] bool hasFocus() const;
    [[nodiscard]] const CellPlace& current() const noexcept { return model_.current(); }

    /// The grid as text, and its positions on the screen, for test drivers.
    [[nodiscard]] std::string state() const;
    [[nodiscard]] std::string places() const;

private:
    void bindEvents();
    void onGridKey(wxKeyEvent& event);
    void onCharacter(wxKeyEvent& event);
    void onClick(wxMouseEvent& event, bool twice);
    bool onEditorKey(const wxKeyEvent& event);
    /// Handles the keys that the cells and the editor share. False for any other key.
    bool travel(const wxKeyEvent& event);
    bool travelByPlace(const wxKeyEvent& event);
    void forward(bool mayLeave);
    void backward(bool mayLeave);
    void leave(bool forwards);

    bool openEditor(const std::optional<wxString>& typed);
    void showEditor(const std::optional<wxString>& text, bool selectAll);
    void closeEditor();
    void reference();
    [[nodiscard]] bool settleEditor();
    [[nodiscard]] bool settleLine();
    bool moveTo(CellPlace target);
    void setCurrent(const CellPlace& place);
    [[nodiscard]] std::int32_t neighbourColumn(std::int32_t from, std::int32_t step) const;
    void nameCells();

    EventGate& gate_;
    GridModel model_;
    mutable GridView view_;
    CellEditor editor_;
    std::function<void(bool)> leave_;
    double points_;
    bool readOnly_ = false;
};

} // namespace z7::cashflow::wx
