#pragma once

#include "host/text/Language.h"

#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace z7::cashflow::host {

/// An option as it is typed, with the kind of its value: "-h, --help" or "--year NUMBER".
[[nodiscard]] std::string optionName(const CLI::Option& option, Language language);

/// What an option or an argument means, with what it excludes and whether it is required.
[[nodiscard]] std::string optionMeaning(const CLI::Option& option, Language language);

/// How a command is typed: the line, which names it, followed by the places of its options, arguments and commands.
[[nodiscard]] std::string usageWords(const CLI::App& app, std::string line, Language language);

} // namespace z7::cashflow::host
