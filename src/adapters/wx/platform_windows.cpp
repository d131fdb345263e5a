#include "adapters/wx/platform.h"

#include <wx/dialog.h>
#include <wx/display.h>

#include <wx/msw/private.h>

#include <commctrl.h>
#include <oleacc.h>

#include <array>

namespace z7::cashflow::wx {

namespace {

constexpr int longestTitle = 256;

// A window of the host, not of the toolkit, and not locked already by another dialog.
HWND activeWindowOfHost() {
    const HWND active = GetActiveWindow();
    return active != nullptr && wxGetWindowFromHWND(active) == nullptr && IsWindowEnabled(active) != FALSE ? active
                                                                                                           : nullptr;
}

LRESULT CALLBACK watchDestruction(HWND window, UINT message, WPARAM word, LPARAM value, UINT_PTR /*id*/,
                                  DWORD_PTR onDestroyed) {
    if (message == WM_DESTROY) {
        (*reinterpret_cast<std::function<void()>*>(onDestroyed))();
    }
    return DefSubclassProc(window, message, word, value);
}

void centreOn(wxDialog& dialog, HWND owner) {
    RECT place{};
    if (IsIconic(owner) != FALSE || GetWindowRect(owner, &place) == FALSE) {
        dialog.Centre();
        return;
    }
    const wxSize size = dialog.GetSize();
    wxPoint corner((place.left + place.right - size.x) / 2, (place.top + place.bottom - size.y) / 2);
    const int display =
        wxDisplay::GetFromPoint(wxPoint((place.left + place.right) / 2, (place.top + place.bottom) / 2));
    if (display != wxNOT_FOUND) {
        const wxRect room = wxDisplay(static_cast<unsigned>(display)).GetClientArea();
        corner.x = wxMax(room.x, wxMin(corner.x, room.x + room.width - size.x));
        corner.y = wxMax(room.y, wxMin(corner.y, room.y + room.height - size.y));
    }
    dialog.Move(corner);
}

// What assistive technology reads in place of a window's own answers. The system may lack it.
template <class Action> void withAccessibleProperties(const Action& action) {
    IAccPropServices* properties = nullptr;
    if (SUCCEEDED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                                   reinterpret_cast<void**>(&properties)))) {
        action(*properties);
        properties->Release();
    }
}

constexpr const wchar_t* named = L"Z7AccessibleName"; // marks the windows that have a name

// The system keeps the name until it is removed, even if the window is gone.
void forgetName(wxWindowDestroyEvent& event) {
    const HWND window = GetHwndOf(event.GetWindow());
    if (RemovePropW(window, named) != nullptr) {
        withAccessibleProperties([&](IAccPropServices& properties) {
            properties.ClearHwndProps(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, &PROPID_ACC_NAME, 1);
        });
    }
    event.Skip();
}

} // namespace

void claimModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&claimModule), &module);
    wxSetInstance(module);
}

// Buttons and entries of Windows have no margins that a theme could widen.
void makeCompact(wxWindow& /*control*/) {}

void accessibleName(wxWindow& control, const wxString& name) {
    const HWND window = GetHwndOf(&control);
    withAccessibleProperties([&](IAccPropServices& properties) {
        properties.SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                                  name.wc_str());
    });
    if (GetPropW(window, named) == nullptr && SetPropW(window, named, window) != FALSE) {
        control.Bind(wxEVT_DESTROY, &forgetName);
    }
}

void showOnScrolled(wxWindow& control, bool show) { control.Show(show); }

void keepScrollBars(wxWindow& /*window*/) {}

wxString activeTitle() {
    std::array<wchar_t, longestTitle> title{};
    const HWND active = GetActiveWindow();
    const int length = active == nullptr ? 0 : GetWindowTextW(active, title.data(), longestTitle);
    return {title.data(), static_cast<std::size_t>(length)};
}

void passEndOfLoopOn() { PostQuitMessage(0); }

Owner::Owner(wxDialog& dialog, const std::function<void()>& onDestroyed) : onDestroyed_(onDestroyed) {
    const HWND owner = activeWindowOfHost();
    if (owner == nullptr) {
        dialog.Centre();
        return;
    }
    SetWindowLongPtrW(GetHwndOf(&dialog), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    centreOn(dialog, owner);
    SetWindowSubclass(GetHwndOf(&dialog), watchDestruction, 0, reinterpret_cast<DWORD_PTR>(&onDestroyed_));
    dialog_ = GetHwndOf(&dialog);
    EnableWindow(owner, FALSE);
    locked_ = owner;
}

Owner::~Owner() {
    unlock();
    if (dialog_ != nullptr) {
        RemoveWindowSubclass(static_cast<HWND>(dialog_), watchDestruction, 0);
    }
}

void Owner::unlock() noexcept {
    if (locked_ != nullptr) {
        EnableWindow(static_cast<HWND>(locked_), TRUE);
        locked_ = nullptr;
    }
}

} // namespace z7::cashflow::wx
