#pragma once

#include "host/terminal/Console.h"

#include <string>

namespace z7::cashflow::host {

/// The text of a file, or of standard input for "-". Failure (usage) if it cannot be read, is empty, or is longer
/// than 64 MiB.
[[nodiscard]] std::string inputText(const std::string& file, const Console& console);

} // namespace z7::cashflow::host
