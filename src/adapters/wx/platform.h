#pragma once

#include <wx/string.h>

class wxWindow;

namespace z7::cashflow::wx {

/// Functions that the toolkit does not offer on every window system.

/// Removes the margins that a theme puts around a button's caption or an entry's text, so that the text fits the
/// designed size.
void makeCompact(wxWindow& control);

/// Sets the name that assistive technology reads for a control.
void accessibleName(wxWindow& control, const wxString& name);

/// Shows or hides a control on a scrolling window. The toolkit's own Hide does not work there: it moves hidden
/// controls when the window scrolls, and the window system prints a warning for each.
void showOnScrolled(wxWindow& control, bool show);

/// Keeps the scroll bars of a window visible as long as not everything fits.
void keepScrollBars(wxWindow& window);

/// The title of the window with the keyboard focus, including message boxes; empty if it is not a window of this
/// program.
[[nodiscard]] wxString activeTitle();

} // namespace z7::cashflow::wx
