#pragma once

#include "host/text/Language.h"

#include <string>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

namespace z7::cashflow::host {

/// What is wrong with a command line that the program has refused, in the user's language, with the words that it is about.
[[nodiscard]] std::string usageText(Language language, const CLI::App& program, const CLI::ParseError& error);

} // namespace z7::cashflow::host
