// A voucher screen of a host: a window of its own, without any toolkit, that opens the dialog of Z7CashFlow.dll as
// often as it is told and then unloads the library. It writes what is on the screen in the lines that window/screen.py
// reads.
//
//   voucherScreen TIMES          opens the dialog TIMES times, one after the other
//   voucherScreen --two-threads  opens it, and after the first key press once more on another thread
//   voucherScreen --again        the same on the same thread, from the messages that the dialog lets through
//   voucherScreen --quit         opens it, and after the first key press ends the message loop of its thread
//   voucherScreen --destroy      opens it, and after the first key press destroys the window below it

#include "com/ComTest.h"
#include "com/SuiteHost.h"
#include "standins/AutomationObject.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <string>
#include <string_view>
#include <thread>

namespace z7::test {
namespace {

constexpr DATE day = 41279.0; // 2013-01-05
constexpr DWORD everyMilliseconds = 10;
constexpr int longestText = 256;

std::atomic<unsigned long> keys = 0;

std::string escaped(const std::string& text) {
    std::string value;
    for (const char c : text) {
        value += c == '\n' ? "\\n" : c == '\t' ? "\\t" : c == '\\' ? "\\\\" : c == '\r' ? "" : std::string(1, c);
    }
    return value;
}

void event(const std::string& text) {
    std::printf("EVENT %s\n", text.c_str());
    std::fflush(stdout);
}

std::string classOf(HWND window) {
    std::array<wchar_t, longestText> name{};
    return window == nullptr || GetClassNameW(window, name.data(), longestText) == 0
               ? std::string()
               : adapters::automation::utf8(name.data());
}

std::string textOfWindow(HWND window) {
    std::array<wchar_t, longestText> text{};
    DWORD_PTR length = 0;
    // The window belongs to another thread, which may just be ending it.
    SendMessageTimeoutW(window, WM_GETTEXT, longestText, reinterpret_cast<LPARAM>(text.data()), SMTO_ABORTIFHUNG, 1000,
                        &length);
    return adapters::automation::utf8(text.data());
}

LRESULT CALLBACK onMessage(int code, WPARAM removed, LPARAM message) {
    const UINT kind = reinterpret_cast<const MSG*>(message)->message;
    if (code == HC_ACTION && removed == PM_REMOVE && (kind == WM_KEYDOWN || kind == WM_SYSKEYDOWN)) {
        ++keys;
    }
    return CallNextHookEx(nullptr, code, removed, message);
}

std::string placeLine(const std::string& name, const RECT& place) {
    return "PLACE " + name + " " + std::to_string(place.left) + " " + std::to_string(place.top) + " " +
           std::to_string(place.right - place.left) + " " + std::to_string(place.bottom - place.top) + "\n";
}

BOOL CALLBACK addPlace(HWND window, LPARAM lines) {
    RECT place{};
    if (classOf(window) == "Button" && IsWindowVisible(window) != FALSE && GetWindowRect(window, &place) != FALSE) {
        std::string name = textOfWindow(window);
        for (char& c : name) {
            c = c == ' ' ? '_' : c;
        }
        *reinterpret_cast<std::string*>(lines) += placeLine(name, place);
    }
    return TRUE;
}

// What the user sees of the thread with the windows.
class Watch {
public:
    Watch(HWND owner, DWORD thread) : owner_(owner), thread_(thread), watching_([this] { run(); }) {}
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() {
        ended_ = true;
        watching_.join();
    }

private:
    void run() {
        std::string last;
        std::string lastPlaces;
        while (!ended_) {
            GUITHREADINFO info{};
            info.cbSize = sizeof info;
            GetGUIThreadInfo(thread_, &info);
            RECT own{};
            GetWindowRect(owner_, &own);
            std::string places = placeLine("own", own);
            EnumChildWindows(info.hwndActive, addPlace, reinterpret_cast<LPARAM>(&places));
            const bool onTop = info.hwndActive != nullptr && info.hwndActive == GetForegroundWindow();
            const std::string focus = classOf(info.hwndFocus);
            const std::string state = "keys=" + std::to_string(keys) +
                                      "\ttop=" + (onTop ? escaped(textOfWindow(info.hwndActive)) : std::string()) +
                                      "\tfocus=" + focus +
                                      "\ttext=" + (focus == "Edit" ? escaped(textOfWindow(info.hwndFocus)) : "") +
                                      "\towner=" + (IsWindowEnabled(owner_) != FALSE ? "open" : "locked") +
                                      "\tprompt=" + escaped(promptOf(info.hwndActive));
            if (places != lastPlaces) {
                std::printf("%s", places.c_str());
                lastPlaces = places;
            }
            if (state != last) {
                std::printf("STATE %s\n", state.c_str());
                last = state;
            }
            std::fflush(stdout);
            Sleep(everyMilliseconds);
        }
    }
    // The text of a message box of the system.
    static std::string promptOf(HWND window) {
        constexpr int messageText = 0xFFFF;
        const HWND text = classOf(window) == "#32770" ? GetDlgItem(window, messageText) : nullptr;
        return text == nullptr ? std::string() : textOfWindow(text);
    }

    HWND owner_;
    DWORD thread_;
    std::atomic<bool> ended_ = false;
    std::thread watching_; ///< started last
};

_clsMain* shownScreen = nullptr; ///< while its dialog is open
constexpr UINT showAgain = WM_APP;
constexpr UINT destroyOwn = WM_APP + 1;

void show(_clsMain& screen);

LRESULT CALLBACK onOwnMessage(HWND window, UINT message, WPARAM word, LPARAM value) {
    switch (message) {
    case showAgain:
        show(*shownScreen);
        return 0;
    case destroyOwn:
        DestroyWindow(window);
        return 0;
    default:
        return DefWindowProcW(window, message, word, value);
    }
}

HWND ownWindow() {
    WNDCLASSW kind{};
    kind.lpfnWndProc = onOwnMessage;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = L"VoucherScreen";
    RegisterClassW(&kind);
    constexpr int left = 100;
    constexpr int top = 80;
    constexpr int width = 1000;
    constexpr int height = 700;
    const HWND window = CreateWindowW(kind.lpszClassName, L"Voucher 2013/1/1/6", WS_OVERLAPPEDWINDOW | WS_VISIBLE, left,
                                      top, width, height, nullptr, nullptr, kind.hInstance, nullptr);
    SetForegroundWindow(window);
    return window;
}

// Lets the windows of this thread handle what has arrived.
void handleMessages() {
    for (MSG message{}; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

ComPtr<_clsMain> screenEntry(SuiteHost& suite) {
    ComPtr<_clsMain> screen;
    if (FAILED(CoCreateInstance(CLSID_clsMain, nullptr, CLSCTX_INPROC_SERVER, IID__clsMain, screen.putVoid()))) {
        event("the class clsMain cannot be created");
        std::exit(1);
    }
    screen->putref_Login(suite.login().get());
    screen->put_SetVouchEdit(VARIANT_TRUE);
    return screen;
}

// Opens the dialog and writes how it ended.
void show(_clsMain& screen) {
    const HRESULT code = screen.ShowCashFlow(Bstr("gl_accvouch").get(), 1, 1, 6, day, VARIANT_TRUE, nullptr, nullptr);
    const HostError error = errorOf(code);
    event("closed " + (code == S_OK ? std::string("well") : std::to_string(code & 0xFFFF) + " " + error.description));
}

// The rows that the host gets from the dialog, and would store with its voucher.
std::string rowsOf(_clsMain& screen) {
    std::string text = "rows:";
    const auto rows = objectOf<_CashFlowCollection>([&](auto** out) { return screen.get_CashFlowCol(out); });
    const LONG count = rows ? value<LONG>([&](auto* out) { return rows->get_Count(out); }) : 0;
    for (LONG i = 1; i <= count; ++i) {
        const auto row = objectOf<_CashFlow>(
            [&](auto** out) { return rows->get_Item(OwnedVariant(static_cast<std::int32_t>(i)).get(), out); });
        for (const char* field : {"ccode", "mc", "cCashItem"}) {
            OwnedVariant content;
            row->get_Item(Bstr(field).get(), content.put());
            OwnedVariant shown;
            VariantChangeType(shown.put(), const_cast<VARIANT*>(&content.get()), 0, VT_BSTR); // only read
            text += " " + adapters::automation::utf8OfBstr(shown.get().bstrVal);
        }
    }
    return text;
}

void showOnOtherThread() {
    std::thread([] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        {
            SuiteHost suite;
            show(*screenEntry(suite));
        }
        CoUninitialize();
    }).join();
}

// What the rest of the host does while the dialog is open.
void disturb(std::string_view how, HWND window, DWORD thread) {
    while (keys == 0) { // the test has pressed a key in the dialog
        Sleep(everyMilliseconds);
    }
    if (how == "--two-threads") {
        showOnOtherThread();
    } else if (how == "--again") {
        SendMessageW(window, showAgain, 0, 0);
    } else if (how == "--quit") {
        PostThreadMessageW(thread, WM_QUIT, 0, 0);
    } else if (how == "--destroy") {
        SendMessageW(window, destroyOwn, 0, 0);
    }
}

void showDisturbed(std::string_view how, HWND window) {
    SuiteHost suite;
    const auto screen = screenEntry(suite);
    shownScreen = screen.get();
    std::thread other(disturb, how, window, GetCurrentThreadId());
    show(*screen);
    shownScreen = nullptr;
    other.join();
    event(rowsOf(*screen));
    MSG message{};
    event(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE ? "own loop ends" : "own loop goes on");
    show(*screen); // the library is not impaired
}

void showDialogs(int times) {
    SuiteHost suite;
    const auto screen = screenEntry(suite);
    for (int i = 0; i < times; ++i) {
        show(*screen);
        handleMessages();
        event(rowsOf(*screen));
    }
}

int run(std::string_view argument) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (LoadedLibrary().call("DllRegisterServer") != S_OK) {
        event("the library cannot be registered");
        return 1;
    }
    const HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, onMessage, nullptr, GetCurrentThreadId());
    const HWND window = ownWindow();
    handleMessages();
    {
        const Watch watch(window, GetCurrentThreadId());
        if (argument.starts_with("--")) {
            showDisturbed(argument, window);
        } else {
            showDialogs(std::stoi(std::string(argument)));
        }
        event(GetActiveWindow() == window ? "own window is active" : "own window is not active");
    }
    UnhookWindowsHookEx(hook);
    CoFreeUnusedLibrariesEx(0, 0);
    event("live objects of the host: " + std::to_string(cashflow::test::AutomationObject::liveObjects()));
    event(GetModuleHandleW(L"Z7CashFlow.dll") == nullptr ? "library unloaded" : "library still loaded");
    DestroyWindow(window);
    CoUninitialize();
    return 0;
}

} // namespace
} // namespace z7::test

int main(int count, char** arguments) { return z7::test::run(count > 1 ? arguments[1] : "1"); }
