#pragma once

#include "host/cli/GlobalOptions.h"
#include "host/terminal/Console.h"

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// Runs the program on its arguments (without its name) and returns its exit code. Every failure ends here, as a text
/// on the error stream. serverConnection makes the connections to databases other than the embedded one; empty for those of ODBC.
[[nodiscard]] int runApplication(const std::vector<std::string>& arguments, const Console& console,
                                 const ConnectionMaker& serverConnection = {});

} // namespace z7::cashflow::host
