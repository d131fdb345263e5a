#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::host {

/// The word of a list that a mistyped word probably means: it differs by one typing error, or in words of more than
/// four letters by up to two. Empty if there is none. A typing error is a letter that is missing, added, replaced,
/// or swapped with its neighbour.
[[nodiscard]] std::string nearMatch(std::string_view typed, const std::vector<std::string>& words);

} // namespace z7::cashflow::host
