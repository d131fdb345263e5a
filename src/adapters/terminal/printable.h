#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace z7::cashflow::terminal {

/// Makes a text safe to show on one line of a terminal: line breaks and tabs become blanks; other control
/// characters, marks that change the writing direction, and bytes that are not valid UTF-8 become the replacement
/// character; the mark that joins two emoji is kept between them. A text from a database can then neither move the
/// cursor nor imitate other output.
[[nodiscard]] std::string printable(std::string_view text);

/// The first user-perceived character of a text, with its combining marks and joined emoji; empty for an empty
/// text.
[[nodiscard]] std::string_view firstCharacter(std::string_view text);

/// The number of terminal columns of a printable text: 2 for each wide character (such as a Chinese one) or group
/// of joined emoji, 0 for combining marks, otherwise 1.
[[nodiscard]] std::size_t displayWidth(std::string_view text);

/// The longest prefix of a printable text, in whole characters, that fits into the given number of columns.
[[nodiscard]] std::string_view fitToWidth(std::string_view text, std::size_t columns);

} // namespace z7::cashflow::terminal
