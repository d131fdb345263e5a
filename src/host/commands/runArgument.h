#pragma once

#include "workbench/changes/RunLog.h"

#include <string>

namespace z7::cashflow::host {

/// Whether a word can only be the number of a run: digits alone.
[[nodiscard]] bool looksLikeRun(const std::string& word);
/// The number that a word holds. Failure (usage) if it is not one from 1 on.
[[nodiscard]] std::int32_t readRun(const std::string& word);

/// A run of an account's log. Failure (refused) if the account has no log, or the log no such run.
[[nodiscard]] workbench::LoggedRun requiredRun(Connection& connection, std::int32_t number);
/// Failure (refused) if the account has no log.
void requireLog(Connection& connection);

} // namespace z7::cashflow::host
