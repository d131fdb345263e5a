#pragma once

#include "z7cashflow/ports/DialogForm.h"

#include <exception>
#include <functional>

namespace z7::cashflow::wx {

/// Through it the controls of a form raise events: one user action at a time, and without an exception passing
/// through the window system, which is written in C.
class EventGate {
public:
    /// The listener outlives the gate.
    explicit EventGate(FormEvents& listener) : listener_(listener) {}

    [[nodiscard]] FormEvents& listener() noexcept { return listener_; }
    /// Whether an event is running. User actions raise no events meanwhile.
    [[nodiscard]] bool busy() const noexcept { return running_ > 0; }

    /// Raises an event. An Error is passed to the listener's eventFailed; any other exception is kept, and the
    /// form is abandoned. Returns false if the event was not completed.
    bool raise(const std::function<void()>& event);

    /// Sets the function that removes the form from the screen after a defect.
    void onDefect(std::function<void()> abandon) { abandon_ = std::move(abandon); }
    /// Throws the exception that was kept, if there is one.
    void rethrowDefect();

private:
    FormEvents& listener_;
    int running_ = 0;
    std::exception_ptr defect_;
    std::function<void()> abandon_;
};

} // namespace z7::cashflow::wx
