#include "host/cli/application.h"

#include <unistd.h>

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    // A reader that goes away shows as a failed write, so that work in hand comes to its end.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    // A file that may not grow further shows as a failed write as well.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    const bool errorsOnTerminal = isatty(STDERR_FILENO) == 1;
    const z7::cashflow::host::Console console{std::cin, std::cout, std::cerr,
                                              errorsOnTerminal && isatty(STDIN_FILENO) == 1, errorsOnTerminal};
    return z7::cashflow::host::runApplication(std::vector<std::string>(argv + 1, argv + argc), console);
}
