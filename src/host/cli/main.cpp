#include "host/cli/application.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// The width of the terminal on a file descriptor; 0 if it is not a terminal.
std::size_t columnsOf(int descriptor) {
    winsize size{};
    return isatty(descriptor) == 1 && ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

} // namespace

int main(int argc, char** argv) {
    // A closed pipe then shows as a failed write, so that work in progress is completed.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    // So does a limit on the size of files.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    const bool errorsOnTerminal = isatty(STDERR_FILENO) == 1;
    const char* kind = std::getenv("TERM"); // NOLINT(concurrency-mt-unsafe): no thread was started
    const bool dumb = kind != nullptr && std::string_view(kind) == "dumb";
    const z7::cashflow::host::Console console{std::cin,
                                              std::cout,
                                              std::cerr,
                                              errorsOnTerminal && isatty(STDIN_FILENO) == 1,
                                              errorsOnTerminal && !dumb,
                                              columnsOf(STDOUT_FILENO),
                                              columnsOf(STDERR_FILENO)};
    return z7::cashflow::host::runApplication(std::vector<std::string>(argv + 1, argv + argc), console);
}
