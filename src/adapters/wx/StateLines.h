#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class wxTimer;

namespace z7::cashflow::wx {

/// Functions that describe a window for a test driver.
struct StateSource {
    std::function<std::string()> state;  ///< pairs "name=value" separated by tabs
    std::function<std::string()> places; ///< lines "name x y width height" in screen pixels
};

/// Writes what is on the screen, a line for each change, so that a test driver can wait for it:
///
///     STATE keys=<number of key presses> top=<title of the active window> focus=<control> ...
///     PLACE <name> <x> <y> <width> <height>
///
/// Line breaks, tabs and backslashes in values are written as \n, \t and \\. Without a stream nothing is written
/// and no timer runs.
class StateLines {
public:
    /// The stream outlives this object; a null pointer means no stream.
    explicit StateLines(std::ostream* out);
    ~StateLines();
    StateLines(const StateLines&) = delete;
    StateLines& operator=(const StateLines&) = delete;

    /// Makes a window the top one as long as this exists.
    class Entered {
    public:
        Entered(StateLines& states, StateSource source) : states_(states) {
            states_.sources_.push_back(std::move(source));
        }
        Entered(const Entered&) = delete;
        Entered& operator=(const Entered&) = delete;
        ~Entered() { states_.sources_.pop_back(); }

    private:
        StateLines& states_;
    };

private:
    class KeyCount;
    void look();

    std::ostream* out_;
    std::unique_ptr<KeyCount> keys_;
    std::unique_ptr<wxTimer> timer_;
    std::vector<StateSource> sources_;
    std::string lastState_;
    std::string lastPlaces_;
};

/// A value escaped for a state line.
[[nodiscard]] std::string stateValue(const std::string& text);

} // namespace z7::cashflow::wx
