#include "adapters/wx/StateLines.h"

#include "adapters/wx/platform.h"
#include "adapters/wx/text.h"

#include <wx/eventfilter.h>
#include <wx/timer.h>
#include <wx/window.h>

#include <ostream>
#include <sstream>

namespace z7::cashflow::wx {

namespace {

constexpr int everyMilliseconds = 10;

/// The name of the focused control, or of its nearest parent that has a name of ours.
std::string focusName() {
    for (const wxWindow* window = wxWindow::FindFocus(); window != nullptr; window = window->GetParent()) {
        std::string name = utf8(window->GetName());
        if (name.starts_with("cmd") || name.starts_with("SuperGrid") || name == "editor" || name == "search") {
            return name;
        }
    }
    return {};
}

} // namespace

std::string stateValue(const std::string& text) {
    std::string value;
    for (const char c : text) {
        switch (c) {
        case '\n':
            value += "\\n";
            break;
        case '\t':
            value += "\\t";
            break;
        case '\\':
            value += "\\\\";
            break;
        default:
            value += c;
        }
    }
    return value;
}

/// Counts key presses in all windows, also those that a button takes for itself.
class StateLines::KeyCount final : public wxEventFilter {
public:
    KeyCount() { wxEvtHandler::AddFilter(this); }
    KeyCount(const KeyCount&) = delete;
    KeyCount& operator=(const KeyCount&) = delete;
    ~KeyCount() override { wxEvtHandler::RemoveFilter(this); }
    [[nodiscard]] unsigned long count() const noexcept { return count_; }

    int FilterEvent(wxEvent& event) override {
        count_ += event.GetEventType() == wxEVT_CHAR_HOOK ? 1 : 0;
        return Event_Skip;
    }

private:
    unsigned long count_ = 0;
};

StateLines::StateLines(std::ostream* out) : out_(out) {
    if (out_ != nullptr) {
        keys_ = std::make_unique<KeyCount>();
        timer_ = std::make_unique<wxTimer>();
        timer_->Bind(wxEVT_TIMER, [this](wxTimerEvent& /*event*/) { look(); });
        timer_->Start(everyMilliseconds);
    }
}

StateLines::~StateLines() = default;

void StateLines::look() {
    std::string state = "keys=" + std::to_string(keys_->count()) + "\ttop=" + stateValue(utf8(activeTitle())) +
                        "\tfocus=" + focusName();
    std::string places;
    if (!sources_.empty()) {
        state += "\t" + sources_.back().state();
        places = sources_.back().places();
    }
    if (places != lastPlaces_) {
        std::istringstream lines(places);
        for (std::string line; std::getline(lines, line);) {
            *out_ << "PLACE " << line << '\n';
        }
        lastPlaces_ = places;
    }
    if (state != lastState_) {
        *out_ << "STATE " << state << '\n';
        lastState_ = state;
    }
    *out_ << std::flush;
}

} // namespace z7::cashflow::wx
