#include "adapters/wx/MessageWindow.h"

#include "adapters/wx/StateLines.h"
#include "adapters/wx/fonts.h"
#include "adapters/wx/text.h"

#include <wx/button.h>
#include <wx/msgdlg.h>
#include <wx/window.h>

#include <wx/generic/msgdlgg.h> // draws the icon, unlike the native box of GTK 3

namespace z7::cashflow::wx {

namespace {

constexpr std::int32_t okAnswer = 1;
constexpr std::int32_t yesAnswer = 6;
constexpr std::int32_t noAnswer = 7;
constexpr std::int32_t buttonSet = 15;
constexpr std::int32_t yesAndNo = 4;
constexpr std::int32_t iconSet = 0x70;
constexpr std::int32_t secondIsDefault = 256;

long styleOf(std::int32_t buttons) {
    long style = (buttons & buttonSet) == yesAndNo ? wxYES_NO : wxOK;
    if ((buttons & secondIsDefault) != 0 && style == wxYES_NO) {
        style |= wxNO_DEFAULT;
    }
    switch (buttons & iconSet) {
    case 16:
        return style | wxICON_ERROR;
    case 32:
        return style | wxICON_QUESTION;
    case 48:
        return style | wxICON_EXCLAMATION;
    case 64:
        return style | wxICON_INFORMATION;
    default:
        return style; // the generic box does not accept wxICON_NONE
    }
}

std::string describe(const std::string& prompt, std::int32_t buttons) {
    const bool question = (buttons & buttonSet) == yesAndNo;
    const wxWindow* const focus = wxWindow::FindFocus();
    const auto* const button = dynamic_cast<const wxButton*>(focus);
    const int id = button == nullptr ? 0 : button->GetId();
    return std::string("box=") + (question ? "question" : "notice") + "\ticon=" + std::to_string(buttons & iconSet) +
           "\tdefault=" +
           (id == wxID_YES  ? "yes"
            : id == wxID_NO ? "no"
            : id == wxID_OK ? "ok"
                            : "none") +
           "\tprompt=" + stateValue(prompt);
}

} // namespace

std::int32_t MessageWindow::Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                                 const std::string& /*helpFile*/, std::int32_t /*context*/) {
    wxGenericMessageDialog box(wxGetActiveWindow(), shown(prompt), shown(title), styleOf(buttons) | wxCENTRE);
    box.SetYesNoLabels(chinese_ ? wxString::FromUTF8("是") : wxString("Yes"),
                       chinese_ ? wxString::FromUTF8("否") : wxString("No"));
    box.SetOKLabel(chinese_ ? wxString::FromUTF8("确定") : wxString("OK"));
    box.SetFont(fontOf("Tahoma", 9.0));
    const bool question = (buttons & buttonSet) == yesAndNo;
    if (question) {
        box.SetEscapeId(wxID_NO);
    }
    const StateLines::Entered entered(states_,
                                      {[&] { return describe(prompt, buttons); }, [] { return std::string(); }});
    const int answer = box.ShowModal();
    if (!question) {
        return okAnswer;
    }
    return answer == wxID_YES ? yesAnswer : noAnswer;
}

} // namespace z7::cashflow::wx
