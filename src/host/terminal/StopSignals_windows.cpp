#include "host/terminal/StopSignals.h"

#include <windows.h>

#include <atomic>
#include <csignal>

namespace z7::cashflow::host {

namespace {

// The system calls the handler on a thread of its own, maybe while the object ends, so its state is not in the object.
std::atomic<int> arrived = 0;
std::atomic<bool> held = false;

BOOL WINAPI handle(DWORD event) {
    if (!held) {
        return FALSE;
    }
    const bool ends = event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT;
    int none = 0;
    arrived.compare_exchange_strong(none, ends ? SIGTERM : SIGINT);
    if (ends) {
        held.wait(true); // as soon as the handler returns, the system ends the program
    }
    return TRUE;
}

} // namespace

struct StopSignals::Former {};

StopSignals::StopSignals() : former_(std::make_unique<Former>()) {
    arrived = 0;
    held = true;
    SetConsoleCtrlHandler(handle, TRUE);
}

StopSignals::~StopSignals() {
    SetConsoleCtrlHandler(handle, FALSE);
    held = false;
    held.notify_all();
}

bool StopSignals::requested() {
    received_ = arrived;
    return received_ != 0;
}

} // namespace z7::cashflow::host
