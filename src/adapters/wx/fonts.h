#pragma once

#include <wx/font.h>

#include <string>

class wxButton;

namespace z7::cashflow::wx {

/// The font with a name and size. If the system does not have it, the nearest one with matching Chinese and Latin
/// letters, so that both have the same baseline.
[[nodiscard]] wxFont fontOf(const std::string& name, double points);

/// Reduces a button's caption in steps of a quarter of a point until it fits the button's width.
void fitCaption(wxButton& button);

} // namespace z7::cashflow::wx
