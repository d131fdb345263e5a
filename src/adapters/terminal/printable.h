#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace z7::cashflow::terminal {

/// A text that is safe to show on one line of a terminal: line breaks and tabs become blanks, and every other control
/// character, mark that turns the writing direction, and byte that is not valid UTF-8 becomes the replacement
/// character; the mark that joins two emoji to one stays between these two. So a text from a database can neither move
/// the cursor nor imitate other output.
[[nodiscard]] std::string printable(std::string_view text);

/// The first character of a text as people count them, with its combining marks and with the emoji joined to it; empty
/// for an empty text.
[[nodiscard]] std::string_view firstCharacter(std::string_view text);

/// The number of terminal columns that a printable text takes: 2 for each wide character, such as a Chinese one or
/// emoji joined to one, 0 for combining marks, else 1.
[[nodiscard]] std::size_t displayWidth(std::string_view text);

/// The longest beginning of a printable text, in whole characters, that takes at most that many columns.
[[nodiscard]] std::string_view fitToWidth(std::string_view text, std::size_t columns);

} // namespace z7::cashflow::terminal
