#pragma once

#include "host/cli/GlobalOptions.h"
#include "workbench/changes/RunLog.h"

#include <optional>
#include <string>

namespace z7::cashflow::host {

/// What the log records about a command: the user of the settings, the time, and the command's words, such as
/// "save" or "undo 3".
[[nodiscard]] inline workbench::RunNote runNote(const GlobalOptions& options, std::string command,
                                                std::optional<std::int32_t> undoes = std::nullopt) {
    return {options.user, std::move(command), options.clock, undoes};
}

} // namespace z7::cashflow::host
