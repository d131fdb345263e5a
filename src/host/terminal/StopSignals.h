#pragma once

#include <csignal>

namespace z7::cashflow::host {

/// Holds back SIGINT and SIGTERM while it lives, so that work can stop where it is safe to stop. A signal that came is
/// taken, not delivered; its number ends up in received.
class StopSignals {
public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    /// Whether one of the signals has come.
    [[nodiscard]] bool requested();
    /// The number of the first signal that was seen by requested, or 0.
    [[nodiscard]] int received() const noexcept { return received_; }

private:
    sigset_t held_{};
    sigset_t former_{};
    int received_ = 0;
};

} // namespace z7::cashflow::host
