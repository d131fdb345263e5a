#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Fills the places {0}, {1} ... of a text. A place without an argument stays as it is, and so does a brace that marks
/// no place.
[[nodiscard]] std::string fillPlaces(std::string_view text, const std::vector<std::string>& arguments);

/// The numbers of the places of a text, in the order of the text.
[[nodiscard]] std::vector<std::size_t> placesOf(std::string_view text);

} // namespace z7::cashflow

Z7_PUBLIC_END
