#pragma once

#include "host/text/Language.h"

#include <string>

namespace CLI {
class App;
}

namespace z7::cashflow::host {

/// The manual page of the program (a null parent) or of one of its commands, as source for man: what --help says, and
/// the exit codes. It carries no date, so that the same sources always make the same page.
[[nodiscard]] std::string manualPage(Language language, const CLI::App& app, const CLI::App* parent);

} // namespace z7::cashflow::host
