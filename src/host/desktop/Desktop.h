#pragma once

#include "host/cli/GlobalOptions.h"
#include "host/terminal/Console.h"

#include <memory>

namespace z7::cashflow::wx {
class WindowSystem;
}

namespace z7::cashflow::host {

/// Access to the user's screen while a command shows the dialog; the destructor releases it. Meanwhile the thread's
/// context creates windows, message boxes in windows, and the connections that the dialog opens itself.
///
/// If Z7CF_WINDOW_STATES is set in the environment, the window writes its states to standard output, for tests and
/// pictures.
class Desktop {
public:
    /// The account's session is already open. Failure (usage) if the program was built without windows, or if
    /// there is no screen.
    Desktop(const GlobalOptions& options, const Console& console);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

private:
    std::shared_ptr<wx::WindowSystem> windows_; ///< shared: its type may be incomplete
};

} // namespace z7::cashflow::host
