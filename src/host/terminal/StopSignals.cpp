#include "host/terminal/StopSignals.h"

#include <csignal>
#include <initializer_list>

namespace z7::cashflow::host {

/// The signals that were blocked before.
struct StopSignals::Former {
    sigset_t blocked{};
};

StopSignals::StopSignals() : former_(std::make_unique<Former>()) {
    sigset_t held;
    sigemptyset(&held);
    sigaddset(&held, SIGINT);
    sigaddset(&held, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &held, &former_->blocked);
}

StopSignals::~StopSignals() {
    // Consumes a pending signal, which would otherwise end the program while it writes its summary.
    static_cast<void>(requested());
    pthread_sigmask(SIG_SETMASK, &former_->blocked, nullptr);
}

bool StopSignals::requested() {
    sigset_t waiting;
    sigemptyset(&waiting);
    sigpending(&waiting);
    for (const int number : {SIGINT, SIGTERM}) {
        if (sigismember(&waiting, number) == 1) {
            sigset_t one;
            sigemptyset(&one);
            sigaddset(&one, number);
            int taken = 0;
            sigwait(&one, &taken);
            received_ = received_ == 0 ? number : received_;
        }
    }
    return received_ != 0;
}

} // namespace z7::cashflow::host
