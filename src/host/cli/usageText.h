#pragma once

#include "host/text/Language.h"

#include <string>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

namespace z7::cashflow::host {

/// What is wrong with a command line, in the user's language: one sentence that names the word, the word that was
/// probably meant, and how to get help.
[[nodiscard]] std::string usageText(Language language, const CLI::App& program, const CLI::ParseError& error);

/// The sentence for a word that is not a command, with the command that was probably meant.
[[nodiscard]] std::string unknownCommandText(Language language, const CLI::App& program, const std::string& word);

} // namespace z7::cashflow::host
