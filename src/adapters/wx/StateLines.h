#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

class wxTimer;
class wxKeyEvent;

namespace z7::cashflow::wx {

/// What a window says of itself to whoever watches the program.
struct StateSource {
    std::function<std::string()> state;  ///< pairs "name=value" divided by tabs
    std::function<std::string()> places; ///< lines "name x y width height" in pixels of the screen
};

/// Writes what is on the screen, a line at each change, so that a test driver can wait for it:
///
///     STATE keys=<key presses so far> top=<title of the active window> focus=<control> ...
///     PLACE <name> <x> <y> <width> <height>
///
/// Line breaks, tabs and backslashes in values are written \n, \t and \\. Nothing is written, and no timer runs,
/// without a stream.
class StateLines {
public:
    /// The stream outlives it; a null pointer for none.
    explicit StateLines(std::ostream* out);
    ~StateLines();
    StateLines(const StateLines&) = delete;
    StateLines& operator=(const StateLines&) = delete;

    /// The window on top from now on; leave ends that.
    void enter(StateSource source);
    void leave();
    /// A key press reached a window.
    void key() { ++keys_; }

private:
    void look();

    std::ostream* out_;
    std::unique_ptr<wxTimer> timer_;
    std::vector<StateSource> sources_;
    unsigned long keys_ = 0;
    std::string lastState_;
    std::string lastPlaces_;
};

/// A value as a state line can hold it.
[[nodiscard]] std::string stateValue(const std::string& text);

} // namespace z7::cashflow::wx
