#pragma once

#include "host/terminal/Console.h"

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// Runs the program on its arguments (without its name) and returns its exit code. Every failure ends here, as a text
/// on the error stream.
[[nodiscard]] int runApplication(const std::vector<std::string>& arguments, const Console& console);

} // namespace z7::cashflow::host
