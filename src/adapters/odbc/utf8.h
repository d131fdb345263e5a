#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace z7::cashflow::odbc {

/// The position of the first byte that is not part of a UTF-8 character, or npos.
[[nodiscard]] std::size_t findBadUtf8(std::string_view text) noexcept;

/// Conversions to and from UTF-16, for systems whose narrow ODBC calls use another character set. An unpaired
/// surrogate becomes U+FFFD; the text to be widened must be UTF-8.
[[nodiscard]] std::u16string widened(std::string_view utf8);
[[nodiscard]] std::string narrowed(std::u16string_view utf16);

} // namespace z7::cashflow::odbc
