#pragma once

#include <string>
#include <string_view>

namespace z7::cashflow::host {

/// The connection string that --connect or Z7CF_CONNECT gives: the text itself, or for "@FILE" what the file holds. In
/// a file the string may stand on several lines; a byte-order mark, blank lines and lines that begin with "#" do not
/// count. Failure (usage) if the text is empty, if the file cannot be read or is not text in UTF-8, and for a secret in
/// a text that stands on the command line, where every user of the machine can read it.
[[nodiscard]] std::string connectionStringOf(const std::string& option, bool onCommandLine);

/// The file of an option "@FILE" if every user of the machine can read it or write to it; else empty.
[[nodiscard]] std::string fileOpenToOthers(const std::string& option);

/// Whether a text, read as a connection string, gives a value to a keyword that is named after a secret.
[[nodiscard]] bool holdsSecret(std::string_view text);

} // namespace z7::cashflow::host
