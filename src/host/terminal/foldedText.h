#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::host {

/// Wraps a text into lines of at most the given terminal width. Lines break at blanks and beside wide characters,
/// but not before a closing mark such as "，" or "）". A word that is wider than a line gets a line of its own.
[[nodiscard]] std::vector<std::string> foldedText(std::string_view text, std::size_t columns);

} // namespace z7::cashflow::host
