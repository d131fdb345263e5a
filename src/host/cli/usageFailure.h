#pragma once

#include "host/cli/Failure.h"

#include <string>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

namespace z7::cashflow::host {

/// What is wrong with a command line: a sentence that names the word, the word that was probably meant, and how to get
/// help.
[[nodiscard]] Failure usageFailure(const CLI::App& program, const CLI::ParseError& error);

/// The failure for a word that is not a command, with the command that was probably meant.
[[nodiscard]] Failure unknownCommand(const CLI::App& program, const std::string& word);

} // namespace z7::cashflow::host
