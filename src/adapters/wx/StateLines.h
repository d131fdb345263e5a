#pragma once

#include <wx/eventfilter.h>

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
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
class StateLines final : private wxEventFilter {
public:
    /// The stream outlives this object; a null pointer means no stream.
    explicit StateLines(std::ostream* out);
    ~StateLines() override;
    StateLines(const StateLines&) = delete;
    StateLines& operator=(const StateLines&) = delete;

    /// Makes this the top window; leave ends that.
    void enter(StateSource source);
    void leave();

private:
    /// Counts key presses in all windows, also those that a button takes for itself.
    int FilterEvent(wxEvent& event) override;
    void look();

    std::ostream* out_;
    std::unique_ptr<wxTimer> timer_;
    std::vector<StateSource> sources_;
    unsigned long keys_ = 0;
    std::string lastState_;
    std::string lastPlaces_;
};

/// A value escaped for a state line.
[[nodiscard]] std::string stateValue(const std::string& text);

} // namespace z7::cashflow::wx
