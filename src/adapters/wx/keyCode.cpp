#include "adapters/wx/keyCode.h"

#include <wx/event.h>

namespace z7::cashflow::wx {

std::int32_t keyCode(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (key >= WXK_F1 && key <= WXK_F24) {
        return key - WXK_F1 + 112;
    }
    if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z')) {
        return key;
    }
    switch (key) {
    case WXK_BACK:
        return 8;
    case WXK_TAB:
        return 9;
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
        return 13;
    case WXK_ESCAPE:
        return 27;
    case WXK_SPACE:
        return 32;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
        return 33;
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
        return 34;
    case WXK_END:
    case WXK_NUMPAD_END:
        return 35;
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
        return 36;
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
        return 37;
    case WXK_UP:
    case WXK_NUMPAD_UP:
        return 38;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
        return 39;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
        return 40;
    case WXK_INSERT:
    case WXK_NUMPAD_INSERT:
        return 45;
    case WXK_DELETE:
    case WXK_NUMPAD_DELETE:
        return 46;
    default:
        return 0;
    }
}

} // namespace z7::cashflow::wx
