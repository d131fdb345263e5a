#pragma once

#include <string>
#include <string_view>

namespace z7::cashflow::odbc {

/// A text as the server reads it in a statement: N'it''s'.
[[nodiscard]] std::string serverText(std::string_view text);
/// A name as the server reads it in a statement: [a]]b].
[[nodiscard]] std::string serverName(std::string_view name);

} // namespace z7::cashflow::odbc
