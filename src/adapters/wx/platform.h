#pragma once

#include <wx/string.h>

#include <functional>

class wxDialog;
class wxWindow;

namespace z7::cashflow::wx {

/// Functions that the toolkit does not offer on every window system.

/// Call it before the toolkit is started. On Windows the toolkit registers its kinds of windows for the program or DLL
/// that contains this code, so that nothing of them is left when a DLL is unloaded.
void claimModule();

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

/// Call it when a modal loop has ended without the dialog asking for it. If that was the end of the calling program's
/// own message loop, the program has to be told once more.
void passEndOfLoopOn();

/// Makes a dialog modal over the window from which it is opened, when that window belongs to a host that does not use
/// the toolkit. Only Windows has such hosts.
class Owner {
public:
    /// Finds the active window of the calling thread and locks it against keys and clicks. Centres the dialog on it,
    /// or on the screen if there is none. If the host destroys the window, the system destroys that of the dialog, too;
    /// onDestroyed is called then.
    Owner(wxDialog& dialog, const std::function<void()>& onDestroyed);
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    ~Owner();
    /// Call it before the dialog disappears: while its owner is locked, the system would activate a window of another
    /// program instead.
    void unlock() noexcept;

private:
    std::function<void()> onDestroyed_;
    void* dialog_ = nullptr; ///< the system's handle, if there is an owner
    void* locked_ = nullptr; ///< the same of the owner while it is locked
};

} // namespace z7::cashflow::wx
