#pragma once

#include "host/cli/GlobalOptions.h"
#include "host/terminal/Console.h"

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// Runs the program with its arguments (without the program's name) and returns its exit code. No failure leaves
/// this function; each becomes a message on standard error. serverConnection creates the connections to databases
/// other than the embedded one; if it is empty, ODBC connections. The clock gives the time for the log of changes;
/// if it is empty, the machine's time.
[[nodiscard]] int runApplication(const std::vector<std::string>& arguments, const Console& console,
                                 const ConnectionMaker& serverConnection = {}, const Clock& clock = {});

} // namespace z7::cashflow::host
