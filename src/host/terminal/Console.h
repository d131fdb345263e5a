#pragma once

#include <cstddef>
#include <iosfwd>

namespace z7::cashflow::host {

/// The streams of a run. Not owned; they outlive the run.
struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool interactive = false;      ///< questions can be answered: in and err are a terminal
    bool errorsOnTerminal = false; ///< a progress bar may be drawn on err: it is a terminal that takes escape sequences
    std::size_t columns = 0;       ///< width of the terminal that out is; 0 if it is not one, and nothing has to be cut
    std::size_t errorColumns = 0;  ///< width of the terminal that err is; 0 if it is not one
};

} // namespace z7::cashflow::host
