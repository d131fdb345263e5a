#pragma once

#include "workbench/changes/RunLog.h"

#include <string>

namespace z7::cashflow::host {

/// Whether a word consists of digits only, and so can be the number of a run.
[[nodiscard]] bool looksLikeRun(const std::string& word);
/// The number of a run. Failure (usage) if the word is not a number from 1.
[[nodiscard]] std::int32_t readRun(const std::string& word);

/// A run in an account's log. Failure (refused) if the account has no log or the log does not contain the run.
[[nodiscard]] workbench::LoggedRun requiredRun(Connection& connection, std::int32_t number);
/// Failure (refused) if the account has no log.
void requireLog(Connection& connection);

} // namespace z7::cashflow::host
