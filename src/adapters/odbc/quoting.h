#pragma once

#include <string>
#include <string_view>

namespace z7::cashflow::odbc {

/// A text in the form of a statement for the server: N'it''s'.
[[nodiscard]] std::string serverText(std::string_view text);
/// A name in the form of a statement for the server: [a]]b].
[[nodiscard]] std::string serverName(std::string_view name);

} // namespace z7::cashflow::odbc
