#pragma once

#include <iosfwd>

namespace z7::cashflow::host {

/// The streams of a run. Not owned; they outlive the run.
struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool interactive = false;      ///< questions can be answered: in and err are a terminal
    bool errorsOnTerminal = false; ///< a progress bar may be drawn on err
};

} // namespace z7::cashflow::host
