#pragma once

#include "z7cashflow/support/Error.h"

#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace z7::cashflow::test {

/// Runs an action in a process of its own, which ends without clean-up. Returns the process's exit code: 0, what the
/// action passed to _exit, or 1 after an exception; if a signal killed it, the negative number of the signal.
inline int inProcess(const std::function<void()>& action) {
    const pid_t child = fork();
    if (child == 0) {
        try {
            action();
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// Runs an action in a process of its own, as a user whom permissions bind where the test runs as the superuser.
/// Returns the action's text, or the description of the Error that ended it.
inline std::string withoutRights(const std::function<std::string()>& action) {
    int ends[2];
    if (pipe(ends) != 0) {
        return "no pipe";
    }
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        std::string text = "cannot become another user";
        if (geteuid() != 0 || (setresgid(nobody, nobody, 0) == 0 && setresuid(nobody, nobody, 0) == 0)) {
            try {
                text = action();
            } catch (const Error& error) {
                text = error.description();
            }
        }
        _exit(write(ends[1], text.data(), text.size()) < 0 ? 1 : 0);
    }
    close(ends[1]);
    std::string text;
    char part[4096];
    for (ssize_t size = 0; (size = read(ends[0], part, sizeof part)) > 0;) {
        text.append(part, static_cast<std::size_t>(size));
    }
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return text;
}

} // namespace z7::cashflow::test
