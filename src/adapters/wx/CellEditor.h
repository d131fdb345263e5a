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

/// The entry that lies over the current cell of a grid while the user edits it, with a reference button in some
/// columns. It leaves the keys that end an edit, and all decisions, to its grid.
class CellEditor final : public cashflow::ActiveEditor {
public:
    /// Both stand on the window that shows the cells, which owns their controls. onKey answers whether it took the key;
    /// onReference follows the button.
    CellEditor(wxWindow& cells, std::function<bool(const wxKeyEvent&)> onKey, std::function<void()> onReference);

    [[nodiscard]] bool Visible() const override { return open_; }

    /// Opens it over a cell with a text, all of which is selected, or with its end ready for more where the user has
    /// begun to type.
    void open(const wxRect& place, const GridColumn& column, const wxString& text, bool selectAll);
    /// Closes it. What it holds is lost.
    void close();
    /// Moves it with its cell.
    void place(const wxRect& place);

    [[nodiscard]] wxString text() const;
    /// Gives it another text, whatever its column takes.
    void text(const wxString& value);
    void focus();
    [[nodiscard]] bool hasFocus() const;
    void font(const wxFont& value);
    /// What assistive technology reads out for it: the title of its column, which has an ellipsis at the reference
    /// button.
    void name(const wxString& value);

    /// The reference button's place on the screen while it shows.
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

/// Whether a text is a number, or the beginning of one that the user is typing: a sign, digits with commas between, and
/// up to so many decimals.
[[nodiscard]] bool isBeginningOfNumber(const std::wstring& text, std::int16_t decimals);

} // namespace z7::cashflow::wx
