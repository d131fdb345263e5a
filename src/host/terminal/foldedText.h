#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::host {

/// A text as lines of at most so many terminal columns. Lines break at blanks and beside wide characters, though not
/// before a mark that closes something, such as "，" or "）". A word that is wider than a line stands on a line of its
/// own.
[[nodiscard]] std::vector<std::string> foldedText(std::string_view text, std::size_t columns);

} // namespace z7::cashflow::host
