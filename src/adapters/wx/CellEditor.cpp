#include "adapters/wx/CellEditor.h"

#include "adapters/wx/platform.h"

#include <wx/button.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <algorithm>

namespace z7::cashflow::wx {

namespace {

constexpr int referenceWidth = 20;

} // namespace

bool isBeginningOfNumber(const std::wstring& text, std::int16_t decimals) {
    std::size_t at = text.starts_with(L'-') ? 1 : 0;
    while (at < text.size() && ((text[at] >= L'0' && text[at] <= L'9') || text[at] == L',')) {
        ++at;
    }
    if (at < text.size() && text[at] == L'.' && decimals > 0) {
        const std::size_t first = ++at;
        while (at < text.size() && text[at] >= L'0' && text[at] <= L'9') {
            ++at;
        }
        return at == text.size() && at - first <= static_cast<std::size_t>(decimals);
    }
    return at == text.size();
}

CellEditor::CellEditor(wxWindow& cells, std::function<bool(const wxKeyEvent&)> onKey, std::function<void()> onReference)
    : onKey_(std::move(onKey)) {
    // The window that shows the cells owns these windows, as every parent owns its child windows.
    // NOLINTBEGIN(cppcoreguidelines-owning-memory)
    entry_ = new wxTextCtrl(&cells, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                            wxTE_PROCESS_ENTER | wxTE_PROCESS_TAB | wxBORDER_NONE);
    reference_ =
        new wxButton(&cells, wxID_ANY, wxString::FromUTF8("…"), wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    reference_->SetCanFocus(false); // a click on it leaves the keyboard focus in the entry
    // NOLINTEND(cppcoreguidelines-owning-memory)
    makeCompact(*entry_);
    makeCompact(*reference_);
    showOnScrolled(*entry_, false);
    showOnScrolled(*reference_, false);
    entry_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (!onKey_(event)) {
            event.Skip();
        }
    });
    entry_->Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
        keepNumber();
        event.Skip();
    });
    reference_->Bind(wxEVT_BUTTON, [click = std::move(onReference)](wxCommandEvent& /*event*/) { click(); });
}

void CellEditor::open(const wxRect& place, const GridColumn& column, const wxString& text, bool selectAll) {
    column_ = column;
    open_ = true;
    entry_->SetMaxLength(column.maxLength > 0 ? static_cast<unsigned long>(column.maxLength) : 0);
    lastGood_ = text;
    entry_->ChangeValue(text);
    place_ = wxRect();
    showOnScrolled(*entry_, true);
    showOnScrolled(*reference_, column.kind == EditKind::reference);
    this->place(place);
    entry_->SetFocus();
    if (selectAll) {
        entry_->SelectAll();
    } else {
        entry_->SetInsertionPointEnd();
    }
}

void CellEditor::close() {
    open_ = false;
    showOnScrolled(*entry_, false);
    showOnScrolled(*reference_, false);
}

void CellEditor::place(const wxRect& place) {
    if (place == place_) {
        return;
    }
    place_ = place;
    const bool button = column_.kind == EditKind::reference;
    const int buttonWidth = button ? std::min(reference_->FromDIP(referenceWidth), place.width / 2) : 0;
    entry_->SetSize(place.x, place.y, place.width - buttonWidth, place.height);
    if (button) {
        reference_->SetSize(place.x + place.width - buttonWidth, place.y, buttonWidth, place.height);
    }
}

wxString CellEditor::text() const { return entry_->GetValue(); }

void CellEditor::text(const wxString& value) {
    lastGood_ = value;
    entry_->ChangeValue(value);
    entry_->SetInsertionPointEnd();
}

void CellEditor::focus() {
    entry_->SetFocus();
    entry_->SelectAll(); // as some window systems do by themselves
}

bool CellEditor::hasFocus() const { return open_ && wxWindow::FindFocus() == entry_; }

void CellEditor::font(const wxFont& value) {
    entry_->SetFont(value);
    reference_->SetFont(value);
}

void CellEditor::name(const wxString& value) {
    accessibleName(*entry_, value);
    accessibleName(*reference_, value + wxString::FromUTF8("…"));
}

std::optional<wxRect> CellEditor::referencePlace() const {
    return open_ && column_.kind == EditKind::reference ? std::optional(reference_->GetScreenRect()) : std::nullopt;
}

void CellEditor::keepNumber() {
    const wxString text = entry_->GetValue();
    if (column_.kind != EditKind::number || isBeginningOfNumber(text.ToStdWstring(), column_.decimals)) {
        lastGood_ = text;
        return;
    }
    const long at = entry_->GetInsertionPoint();
    wxBell();
    entry_->ChangeValue(lastGood_);
    entry_->SetInsertionPoint(std::max(0L, std::min(at - 1, static_cast<long>(lastGood_.length()))));
}

} // namespace z7::cashflow::wx
