#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace z7::cashflow::test {

/// A copy of the test's process that runs an action and exits with the action's result.
class ChildProcess {
public:
    /// The exit code if the action raises an exception, which is written to standard error.
    static constexpr int raised = 250;

    explicit ChildProcess(const std::function<int()>& action);
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    /// Waits for its end.
    ~ChildProcess();

    /// Waits for its end and returns the exit code, or the negative number of the signal that ended it. Can be
    /// called again.
    int wait();
    /// Kills it immediately, as the system does, and returns the result of wait.
    int kill();

private:
    pid_t process_;
    int result_ = 0;
};

/// Runs an action in a separate process, which ends without clean-up. Returns 0, the argument that the action
/// passed to _exit, ChildProcess::raised, or the negative number of the signal that killed the process.
int inProcess(const std::function<void()>& action);

/// A signal that one process waits for and another one sends, such as "ready".
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

/// Runs an action in a separate process as a user who is subject to file permissions, even if the test runs as the
/// superuser. Returns the action's text, or that of an Error that it raises.
[[nodiscard]] std::string withoutRights(const std::function<std::string()>& action);

} // namespace z7::cashflow::test
