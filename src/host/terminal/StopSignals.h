#pragma once

#include <csignal>

namespace z7::cashflow::host {

/// Blocks SIGINT and SIGTERM while it lives, so that work can stop at a safe point. A signal is consumed and not
/// delivered; its number is kept in received.
class StopSignals {
public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    /// Whether one of the signals has arrived.
    [[nodiscard]] bool requested();
    /// The number of the first signal that requested() saw, or 0.
    [[nodiscard]] int received() const noexcept { return received_; }

private:
    sigset_t held_{};
    sigset_t former_{};
    int received_ = 0;
};

} // namespace z7::cashflow::host
