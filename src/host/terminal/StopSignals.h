#pragma once

#include <memory>

namespace z7::cashflow::host {

/// Blocks SIGINT and SIGTERM while it lives, so that work can stop at a safe point. A signal is consumed and not
/// delivered; its number is kept in received. On Windows Ctrl+C and Ctrl+Break count as SIGINT; closing the console,
/// logging off and shutting down as SIGTERM, which the system then waits for a few seconds. One object at a time.
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
    struct Former;
    std::unique_ptr<Former> former_;
    int received_ = 0;
};

} // namespace z7::cashflow::host
