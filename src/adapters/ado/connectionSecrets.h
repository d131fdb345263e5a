#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::ado {

/// The values of a connection string that must not appear in a message, such as its password. Understands every string
/// that ADO accepts, with values in quotes or braces, and finds what it can in others.
[[nodiscard]] std::vector<std::string> secretsOf(std::string_view connectionString);

/// The text with every secret in it replaced by "***".
[[nodiscard]] std::string withoutSecrets(std::string text, const std::vector<std::string>& secrets);

} // namespace z7::cashflow::ado
