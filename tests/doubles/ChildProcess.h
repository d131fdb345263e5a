#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace z7::cashflow::test {

/// A copy of the test's process that runs an action and ends with the action's result.
class ChildProcess {
public:
    /// How a process ends whose action raises; what it raised goes to the error stream.
    static constexpr int raised = 250;

    explicit ChildProcess(const std::function<int()>& action);
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    /// Waits for its end.
    ~ChildProcess();

    /// Waits for its end and returns the exit code; the number of a signal that ended it, negative. Asked again, the
    /// same.
    int wait();
    /// Ends it on the spot, as the system ends a killed program, and returns what wait returns.
    int kill();

private:
    pid_t process_;
    int result_ = 0;
};

/// Runs an action in a process of its own, which ends without clean-up. Returns 0, what the action passed to _exit,
/// ChildProcess::raised, or the negative number of the signal that killed the process.
int inProcess(const std::function<void()>& action);

/// What one process waits for and the other one sends, such as "ready".
class Signal {
public:
    Signal();
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    ~Signal();

    void send() const;
    /// Returns once the signal has been sent.
    void wait() const;

private:
    int ends_[2] = {-1, -1};
};

/// Runs an action in a process of its own as a user whom permissions bind, also where the test runs as the superuser.
/// Returns the action's text; that of an Error which it raises.
[[nodiscard]] std::string withoutRights(const std::function<std::string()>& action);

} // namespace z7::cashflow::test
