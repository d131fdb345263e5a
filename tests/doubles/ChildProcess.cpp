#include "doubles/ChildProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <utility>

namespace z7::cashflow::test {
namespace {

void openPipe(int (&ends)[2]) {
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe can be opened for the test");
    }
}

void closePipe(const int (&ends)[2]) {
    close(ends[0]);
    close(ends[1]);
}

bool giveUpRights() {
    constexpr uid_t nobody = 65534;
    return geteuid() != 0 || (setresgid(nobody, nobody, 0) == 0 && setresuid(nobody, nobody, 0) == 0);
}

} // namespace

ChildProcess::ChildProcess(const std::function<int()>& action) : process_(fork()) {
    if (process_ < 0) {
        throw std::runtime_error("no process can be started for the test");
    }
    if (process_ > 0) {
        return;
    }
    int result = raised;
    try {
        result = action();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "child process: %s\n", error.what());
    } catch (...) { // nothing may return into the copied test
    }
    _exit(result);
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : process_(std::exchange(other.process_, 0)), result_(other.result_) {}

ChildProcess::~ChildProcess() { wait(); }

int ChildProcess::wait() {
    if (process_ > 0) {
        int status = 0;
        waitpid(std::exchange(process_, 0), &status, 0);
        result_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    return result_;
}

int ChildProcess::kill() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
    }
    return wait();
}

int inProcess(const std::function<void()>& action) {
    return ChildProcess([&action] {
               action();
               return 0;
           })
        .wait();
}

Signal::Signal() { openPipe(ends_); }

Signal::~Signal() { closePipe(ends_); }

void Signal::send() const {
    if (write(ends_[1], "s", 1) != 1) {
        throw std::runtime_error("the signal cannot be sent");
    }
}

void Signal::wait() const {
    char sent = 0;
    if (read(ends_[0], &sent, 1) != 1) {
        throw std::runtime_error("the signal was not sent");
    }
}

std::string withoutRights(const std::function<std::string()>& action) {
    int ends[2];
    openPipe(ends);
    ChildProcess child([&] {
        std::string text = "cannot become another user";
        if (giveUpRights()) {
            try {
                text = action();
            } catch (const std::exception& error) {
                text = error.what();
            }
        }
        return write(ends[1], text.data(), text.size()) < 0 ? 1 : 0;
    });
    close(std::exchange(ends[1], -1));
    std::string text;
    char part[4096];
    for (ssize_t size = 0; (size = read(ends[0], part, sizeof part)) > 0;) {
        text.append(part, static_cast<std::size_t>(size));
    }
    closePipe(ends);
    return text;
}

} // namespace z7::cashflow::test
