#pragma once

#include "host/cli/Failure.h"

#include <nlohmann/json_fwd.hpp>

namespace z7::cashflow::host {

/// The failure of a command: {"code":"file-missing","exitCode":3,"text":"...","arguments":["company.db"]}. "arguments"
/// are what the text names, "faults" the several faults of a file, each with code and text, and "cause" the error of
/// the database or the library that led to it; each is left out if there is none. The failure that is nothing else
/// than such an error is that error, see errorJson, with its exit code.
[[nodiscard]] nlohmann::ordered_json failureJson(const Failure& failure, Language language);

} // namespace z7::cashflow::host
