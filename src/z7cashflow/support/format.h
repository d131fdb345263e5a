#pragma once

#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// A number shown by a pattern of "#" (a digit if there is one), "0" (always a digit), "," between digits (groups of
/// three) and "." (what follows are decimals): 1234.565 is "1,234.57" under "##,##0.00", 3 is "03" under "00",
/// 0 is ".00" under "#.00".
///
/// Rounds half away from zero on the 15-digit decimal text of the number. A result that shows zero has no sign.
/// Null becomes the empty text, and a text that is not a number is returned unchanged.
[[nodiscard]] std::string format(const Variant& value, std::string_view pattern);

} // namespace z7::cashflow

Z7_PUBLIC_END
