#include "adapters/wx/PickWindow.h"

#include "adapters/wx/StateLines.h"
#include "adapters/wx/fonts.h"
#include "adapters/wx/platform.h"
#include "adapters/wx/text.h"
#include "adapters/wx/twips.h"

#include <wx/dialog.h>
#include <wx/listctrl.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <algorithm>
#include <cstddef>

namespace z7::cashflow::wx {

namespace {

constexpr int margin = 8;
constexpr int smallestWidth = 360;
constexpr int rowsShown = 11;
constexpr int emptyListHeight = 300;
constexpr int pageOfRows = 10;
constexpr double points = 9.0;

/// A list that requests the texts of only those rows that it draws, so that long lists are cheap.
class RowList final : public wxListCtrl {
public:
    RowList(wxWindow& parent, const std::vector<std::vector<std::string>>& rows)
        : wxListCtrl(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                     wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL | wxLC_HRULES),
          rows_(rows) {}

    void show(std::vector<std::size_t> positions) {
        positions_ = std::move(positions);
        SetItemCount(static_cast<long>(positions_.size()));
        Refresh();
        makeCurrent(0);
    }
    void makeCurrent(long item) {
        if (!positions_.empty()) {
            const long bounded = std::clamp(item, 0L, static_cast<long>(positions_.size()) - 1);
            SetItemState(bounded, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                         wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
            EnsureVisible(bounded);
        }
    }
    /// The height that shows the given number of rows below the titles.
    [[nodiscard]] int heightOfRows(int rows) const {
        wxRect first;
        if (positions_.empty() || !GetItemRect(0, first)) {
            return FromDIP(emptyListHeight);
        }
        return first.y + rows * first.height;
    }
    [[nodiscard]] long current() const { return GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED); }
    [[nodiscard]] std::optional<std::size_t> currentPosition() const {
        const long item = current();
        return item < 0 || item >= count() ? std::nullopt : std::optional(positions_[static_cast<std::size_t>(item)]);
    }
    [[nodiscard]] long count() const { return static_cast<long>(positions_.size()); }

protected:
    wxString OnGetItemText(long item, long column) const override {
        const auto at = static_cast<std::size_t>(item);
        const auto col = static_cast<std::size_t>(column);
        if (at >= positions_.size() || col >= rows_[positions_[at]].size()) {
            return {};
        }
        return shown(rows_[positions_[at]][col]);
    }

private:
    const std::vector<std::vector<std::string>>& rows_;
    std::vector<std::size_t> positions_;
};

/// The rows in the form used by the search: in lower case, cells separated.
std::vector<wxString> searchTexts(const std::vector<std::vector<std::string>>& rows) {
    std::vector<wxString> texts;
    texts.reserve(rows.size());
    for (const auto& row : rows) {
        wxString text;
        for (const std::string& cell : row) {
            text += shown(cell) + "\n";
        }
        texts.push_back(text.MakeLower());
    }
    return texts;
}

class PickDialog final : public wxDialog {
public:
    PickDialog(const wxString& title, const std::vector<PickColumn>& columns,
               const std::vector<std::vector<std::string>>& rows)
        : wxDialog(wxGetActiveWindow(), wxID_ANY, title, wxDefaultPosition, wxDefaultSize,
                   wxCAPTION | wxCLOSE_BOX | wxSYSTEM_MENU | wxRESIZE_BORDER),
          rows_(rows), texts_(searchTexts(rows)) {
        SetFont(fontOf("Tahoma", points));
        // The dialog owns these windows, as every parent owns its child windows.
        // NOLINTBEGIN(cppcoreguidelines-owning-memory)
        search_ = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
        list_ = new RowList(*this, rows_);
        keepScrollBars(*list_);
        search_->SetName("search");
        // NOLINTEND(cppcoreguidelines-owning-memory)
        accessibleName(*search_, title);
        const int border = FromDIP(margin);
        int width = 2 * border + wxSystemSettings::GetMetric(wxSYS_VSCROLL_X);
        for (const PickColumn& column : columns) {
            list_->AppendColumn(shown(column.caption), column.alignRight ? wxLIST_FORMAT_RIGHT : wxLIST_FORMAT_LEFT,
                                FromDIP(toPixels(column.width)));
            width += FromDIP(toPixels(column.width));
        }
        auto* const sizer = new wxBoxSizer(wxVERTICAL); // NOLINT(cppcoreguidelines-owning-memory)
        sizer->Add(search_, wxSizerFlags().Expand().Border(wxALL, border));
        sizer->Add(list_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
        narrow();
        list_->SetInitialSize(wxSize(std::max(FromDIP(smallestWidth), width), list_->heightOfRows(rowsShown)));
        SetSizerAndFit(sizer);
        Centre();
        search_->SetFocus();
        search_->Bind(wxEVT_TEXT, [this](wxCommandEvent& /*event*/) { narrow(); });
        search_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent& /*event*/) { take(); });
        list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent& /*event*/) { take(); });
        Bind(wxEVT_CHAR_HOOK, &PickDialog::onKey, this);
    }

    [[nodiscard]] std::optional<std::size_t> picked() const { return picked_; }

    [[nodiscard]] std::string state() const {
        const auto position = list_->currentPosition();
        std::string text =
            "pick=" + std::to_string(list_->count()) + "\tsearch=" + stateValue(utf8(search_->GetValue())) + "\tcells=";
        if (position) {
            for (const std::string& cell : rows_[*position]) {
                text += stateValue(cell) + "|";
            }
        }
        return text;
    }
    [[nodiscard]] std::string places() const {
        wxRect place;
        if (list_->current() < 0 || !list_->GetItemRect(list_->current(), place)) {
            return {};
        }
        place.SetPosition(list_->ClientToScreen(place.GetPosition()));
        const double scale = GetContentScaleFactor();
        const auto scaled = [scale](int value) { return " " + std::to_string(static_cast<int>(value * scale)); };
        return "item" + scaled(place.x) + scaled(place.y) + scaled(place.width) + scaled(place.height) + "\n";
    }

private:
    void narrow() {
        const wxString wanted = search_->GetValue().Lower();
        std::vector<std::size_t> positions;
        for (std::size_t i = 0; i < texts_.size(); ++i) {
            if (wanted.empty() || texts_[i].Contains(wanted)) {
                positions.push_back(i);
            }
        }
        list_->show(std::move(positions));
    }
    void take() {
        picked_ = list_->currentPosition();
        if (picked_) {
            EndModal(wxID_OK);
        } else {
            wxBell();
        }
    }
    void onKey(wxKeyEvent& event) {
        switch (event.GetKeyCode()) {
        case WXK_ESCAPE:
            EndModal(wxID_CANCEL);
            return;
        case WXK_RETURN:
        case WXK_NUMPAD_ENTER:
            take();
            return;
        case WXK_UP:
            list_->makeCurrent(list_->current() - 1);
            return;
        case WXK_DOWN:
            list_->makeCurrent(list_->current() + 1);
            return;
        case WXK_PAGEUP:
            list_->makeCurrent(list_->current() - pageOfRows);
            return;
        case WXK_PAGEDOWN:
            list_->makeCurrent(list_->current() + pageOfRows);
            return;
        default:
            event.Skip();
        }
    }

    const std::vector<std::vector<std::string>>& rows_;
    std::vector<wxString> texts_;
    wxTextCtrl* search_ = nullptr;
    RowList* list_ = nullptr;
    std::optional<std::size_t> picked_;
};

} // namespace

std::optional<std::size_t> PickWindow::pick(const std::string& title, const std::vector<PickColumn>& columns,
                                            const std::vector<std::vector<std::string>>& rows) {
    PickDialog dialog(shown(title), columns, rows);
    const StateLines::Entered entered(*states_, {[&] { return dialog.state(); }, [&] { return dialog.places(); }});
    dialog.ShowModal();
    return dialog.picked();
}

} // namespace z7::cashflow::wx
