#pragma once

#include "adapters/wx/GridModel.h"
#include "z7cashflow/ports/SuperGrid.h"

#include <wx/gdicmn.h>
#include <wx/string.h>

#include <functional>
#include <optional>

class wxButton;
class wxFont;
class wxKeyEvent;
class wxTextCtrl;
class wxWindow;

namespace z7::cashflow::wx {

/// The entry over the current cell of a grid while the user edits it, with a reference button in some columns. The
/// keys that end an edit, and all decisions, are left to the grid.
class CellEditor final : public cashflow::ActiveEditor {
public:
    /// The window that shows the cells owns the controls. onKey returns whether it handled a key; onReference
    /// is called by the button.
    CellEditor(wxWindow& cells, std::function<bool(const wxKeyEvent&)> onKey, std::function<void()> onReference);

    [[nodiscard]] bool Visible() const override { return open_; }

    /// Opens it over a cell with a text. Either all of the text is selected, or the cursor is at its end, if
    /// the user has begun to type.
    void open(const wxRect& place, const GridColumn& column, const wxString& text, bool selectAll);
    /// Closes it and discards its text.
    void close();
    /// Moves it with its cell.
    void place(const wxRect& place);

    [[nodiscard]] wxString text() const;
    /// Sets its text, whatever its column allows.
    void text(const wxString& value);
    /// Gives it the keyboard focus with all of its text selected.
    void focus();
    [[nodiscard]] bool hasFocus() const;
    void font(const wxFont& value);
    /// The name for assistive technology: the title of the column, with an ellipsis if there is a reference
    /// button.
    void name(const wxString& value);

    /// The position of the reference button on the screen, if it is visible.
    [[nodiscard]] std::optional<wxRect> referencePlace() const;

private:
    void keepNumber();

    wxTextCtrl* entry_ = nullptr;
    wxButton* reference_ = nullptr;
    std::function<bool(const wxKeyEvent&)> onKey_;
    bool open_ = false;
    GridColumn column_;
    wxRect place_;
    wxString lastGood_;
};

/// Whether a text is a number or the beginning of one: a sign, digits with commas between them, and at most the
/// given number of decimals.
[[nodiscard]] bool isBeginningOfNumber(const std::wstring& text, std::int16_t decimals);

} // namespace z7::cashflow::wx
