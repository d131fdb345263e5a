#pragma once

#include <string>
#include <string_view>

namespace z7::cashflow::host {

/// The connection string that --connect or Z7CF_CONNECT gives: the text itself, or for "@FILE" what the file holds, without the blanks
/// and line breaks around it. Failure (usage) if the file cannot be read, and for a secret in a text that stands on the
/// command line, where every user of the machine can read it.
[[nodiscard]] std::string connectionStringOf(const std::string& option, bool onCommandLine);

/// Whether a text, read as a connection string, gives a value to a keyword that is named after a secret.
[[nodiscard]] bool holdsSecret(std::string_view text);

} // namespace z7::cashflow::host
