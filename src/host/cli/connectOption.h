#pragma once

#include <string>
#include <string_view>

namespace z7::cashflow::host {

/// The connection string of --connect or Z7CF_CONNECT: the text itself, or for "@FILE" the contents of the file. In
/// a file the string may span several lines; a byte-order mark, blank lines and lines that begin with "#" are
/// ignored. Failure (usage) if the text is empty, if the file cannot be read or is not valid UTF-8, or if a text on
/// the command line, which every user of the machine can see, contains a secret.
[[nodiscard]] std::string connectionStringOf(const std::string& option, bool onCommandLine);

/// The file of an option "@FILE" if every user of the machine can read it or write to it; otherwise empty.
[[nodiscard]] std::string fileOpenToOthers(const std::string& option);

/// Whether a text, parsed as a connection string, has a value for a keyword that names a secret.
[[nodiscard]] bool holdsSecret(std::string_view text);

} // namespace z7::cashflow::host
