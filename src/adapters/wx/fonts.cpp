#include "adapters/wx/fonts.h"

#include "adapters/wx/text.h"

#include <wx/button.h>
#include <wx/fontenum.h>
#include <wx/settings.h>

#include <array>

namespace z7::cashflow::wx {

namespace {

constexpr int captionMargin = 10; // pixels on both sides together, including the border
constexpr double smallestCaption = 6.0;
constexpr double captionStep = 0.25;

wxString faceOf(const std::string& name) {
    const std::array<wxString, 5> candidates{shown(name), "Noto Sans CJK SC", "Source Han Sans SC",
                                             "WenQuanYi Micro Hei", "Microsoft YaHei"};
    for (const wxString& face : candidates) {
        if (!face.empty() && wxFontEnumerator::IsValidFacename(face)) {
            return face;
        }
    }
    return wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).GetFaceName();
}

} // namespace

wxFont fontOf(const std::string& name, double points) { return wxFont(wxFontInfo(points).FaceName(faceOf(name))); }

void fitCaption(wxButton& button) {
    wxFont font = button.GetFont();
    const int room = button.GetClientSize().GetWidth() - button.FromDIP(captionMargin);
    const wxString caption = button.GetLabelText();
    int width = 0;
    int height = 0;
    button.GetTextExtent(caption, &width, &height, nullptr, nullptr, &font);
    while (width > room && font.GetFractionalPointSize() > smallestCaption) {
        font.SetFractionalPointSize(font.GetFractionalPointSize() - captionStep);
        button.GetTextExtent(caption, &width, &height, nullptr, nullptr, &font);
    }
    button.SetFont(font);
}

} // namespace z7::cashflow::wx
