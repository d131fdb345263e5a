#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::host {

/// The word of a list that was probably meant by a mistyped one: it differs by one slip of the keys, or in longer words
/// by two. Empty if there is none. A slip is a letter that is missing, too many, another one, or swapped with its
/// neighbour.
[[nodiscard]] std::string nearMatch(std::string_view typed, const std::vector<std::string>& words);

} // namespace z7::cashflow::host
