#pragma once

#include <cstddef>
#include <iosfwd>

namespace z7::cashflow::host {

/// The streams of a run. Not owned; they outlive the run.
struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool interactive = false;      ///< questions can be asked: in and err are terminals
    bool errorsOnTerminal = false; ///< a progress bar may be drawn on err: a terminal with escape sequences
    std::size_t columns = 0;       ///< width of the terminal on out; 0 if it is not a terminal, and nothing is cut
    std::size_t errorColumns = 0;  ///< width of the terminal on err; 0 if it is not a terminal
};

} // namespace z7::cashflow::host
