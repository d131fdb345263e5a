#pragma once

#include "host/text/Language.h"

#include <memory>

namespace CLI {
class FormatterBase;
}

namespace z7::cashflow::host {

/// Lays out help in a language: names in one column, their meanings beside them, aligned by terminal width and
/// wrapped at 80 columns, except for commands to type. Subcommands inherit the formatter.
[[nodiscard]] std::shared_ptr<CLI::FormatterBase> helpFormatter(Language language);

} // namespace z7::cashflow::host
