#pragma once

#include "host/cli/GlobalOptions.h"
#include "host/terminal/Console.h"

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// Runs the program on its arguments (without its name) and returns its exit code. Every failure ends here, as a text
/// on the error stream. serverConnection makes the connections to databases other than the embedded one; empty for
/// those of ODBC. The clock tells the time that the log of changes notes; empty for the machine's.
[[nodiscard]] int runApplication(const std::vector<std::string>& arguments, const Console& console,
                                 const ConnectionMaker& serverConnection = {}, const Clock& clock = {});

} // namespace z7::cashflow::host
