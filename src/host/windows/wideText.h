#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Texts for the calls of Windows, which take UTF-16.
namespace z7::cashflow::host {

/// UTF-16 of a text in UTF-8; U+FFFD stands for what is not valid.
[[nodiscard]] std::wstring wideText(std::string_view text);

/// UTF-8 of a text in UTF-16; U+FFFD stands for what is not valid.
[[nodiscard]] std::string utf8Text(std::wstring_view text);

/// How many bytes at the end of a text are the beginning of a character of UTF-8 that is not complete: 0 to 3.
[[nodiscard]] std::size_t incompleteBytes(std::string_view text) noexcept;

} // namespace z7::cashflow::host
