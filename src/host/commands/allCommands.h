#pragma once

#include "host/cli/Command.h"

#include <memory>
#include <vector>

namespace z7::cashflow::host {

/// All commands in the order in which help lists them.
[[nodiscard]] std::vector<std::unique_ptr<Command>> allCommands();

} // namespace z7::cashflow::host
