#pragma once

#include "z7cashflow/ports/DialogForm.h"

#include <exception>
#include <functional>

namespace z7::cashflow::wx {

/// The way by which a form's controls raise events: one user action at a time, and no exception passes through the
/// window system, which is C.
class EventGate {
public:
    /// The listener outlives the gate.
    explicit EventGate(FormEvents& listener) : listener_(listener) {}

    [[nodiscard]] FormEvents& listener() noexcept { return listener_; }
    /// Whether an event is running. What the user does meanwhile raises none.
    [[nodiscard]] bool busy() const noexcept { return running_ > 0; }

    /// Raises an event. An Error goes to the listener's eventFailed; any other exception is kept and the form
    /// abandoned. False if the event did not come to its end.
    bool raise(const std::function<void()>& event);

    /// What takes the form from the screen after a defect.
    void onDefect(std::function<void()> abandon) { abandon_ = std::move(abandon); }
    /// Throws what was kept.
    void rethrowDefect();

private:
    FormEvents& listener_;
    int running_ = 0;
    std::exception_ptr defect_;
    std::function<void()> abandon_;
};

} // namespace z7::cashflow::wx
