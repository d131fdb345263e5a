#pragma once

#include <wx/font.h>

#include <string>

class wxButton;

namespace z7::cashflow::wx {

/// The font of a name and size. Where the system does not have it, the nearest one that has Chinese and Latin letters
/// of one kind, so that both stand on one line without a shift.
[[nodiscard]] wxFont fontOf(const std::string& name, double points);

/// Makes a button's caption smaller, a quarter of a point at a time, until it fits the button's width.
void fitCaption(wxButton& button);

} // namespace z7::cashflow::wx
