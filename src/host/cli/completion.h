#pragma once

#include <string>

namespace CLI {
class App;
}

namespace z7::cashflow::host {

/// A script that has bash complete the program's commands, the options of the command at hand, and file names.
[[nodiscard]] std::string bashCompletion(const CLI::App& program);

/// The same for zsh, which shows what each command and option means.
[[nodiscard]] std::string zshCompletion(const CLI::App& program);

} // namespace z7::cashflow::host
