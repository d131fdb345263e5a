#pragma once

#include <wx/string.h>

class wxWindow;

namespace z7::cashflow::wx {

/// What the toolkit does not offer on every window system.

/// Takes away the margins that a theme puts around a button's caption or the text of an entry, so that it fits the size
/// which a design has for it.
void makeCompact(wxWindow& control);

/// The name that assistive technology reads out for a control.
void accessibleName(wxWindow& control, const wxString& name);

/// Shows or hides a control on a window that scrolls. The toolkit's own Hide is not for these: it moves hidden controls
/// along when the window scrolls, and the window system writes a complaint about each.
void showOnScrolled(wxWindow& control, bool show);

/// Keeps the scroll bars of a window on the screen as long as there is more to see than fits.
void keepScrollBars(wxWindow& window);

/// Title of the window that has the keyboard, message boxes included; empty if it is none of this program's.
[[nodiscard]] wxString activeTitle();

} // namespace z7::cashflow::wx
