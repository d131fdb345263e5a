#include "adapters/wx/EventGate.h"

#include "z7cashflow/support/Error.h"

#include <utility>

namespace z7::cashflow::wx {

namespace {

/// Counts a running event for its lifetime.
class Running {
public:
    explicit Running(int& count) : count_(count) { ++count_; }
    ~Running() { --count_; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    int& count_;
};

} // namespace

bool EventGate::raise(const std::function<void()>& event) {
    const Running running(running_);
    try {
        try {
            event();
            return true;
        } catch (const Error& error) {
            listener_.eventFailed(error);
        }
    } catch (const std::exception&) {
        defect_ = std::current_exception();
        if (abandon_) {
            abandon_();
        }
    }
    return false;
}

void EventGate::rethrowDefect() {
    if (defect_) {
        std::rethrow_exception(std::exchange(defect_, nullptr));
    }
}

} // namespace z7::cashflow::wx
