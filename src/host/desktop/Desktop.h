#pragma once

#include "host/cli/GlobalOptions.h"
#include "host/terminal/Console.h"

#include <memory>

namespace z7::cashflow::wx {
class WindowSystem;
}

namespace z7::cashflow::host {

/// The user's screen, for as long as a command shows the dialog: its end gives the screen back. While it is there, the
/// thread's context makes windows, message boxes in windows, and the connections that the dialog opens itself.
///
/// With Z7CF_WINDOW_STATES in the environment the window writes its states on standard output, for tests and pictures.
class Desktop {
public:
    /// The session of the account is open. Failure (usage) where the program was built without windows, or there is no
    /// screen.
    Desktop(const GlobalOptions& options, const Console& console);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

private:
    std::shared_ptr<wx::WindowSystem> windows_; ///< shared, since a build without windows does not know its type
};

} // namespace z7::cashflow::host
