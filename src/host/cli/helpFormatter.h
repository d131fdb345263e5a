#pragma once

#include "host/text/Language.h"

#include <memory>

namespace CLI {
class FormatterBase;
}

namespace z7::cashflow::host {

/// Lays out help in a language: names in a column, their meaning beside them by the width that characters have on a
/// terminal, and no line wider than 80 columns but commands to be typed. Commands that are added to a program take over
/// its formatter.
[[nodiscard]] std::shared_ptr<CLI::FormatterBase> helpFormatter(Language language);

} // namespace z7::cashflow::host
