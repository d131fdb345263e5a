#pragma once

#include <map>
#include <string>

namespace z7::cashflow::host {

/// The files that document the program on a system, by their paths: manual pages of the program and of each command in
/// both languages (man/...), and completions for bash and zsh. All are made from the declarations that --help shows.
[[nodiscard]] std::map<std::string, std::string> programFiles();

} // namespace z7::cashflow::host
