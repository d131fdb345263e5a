#pragma once

#include <string_view>

namespace z7::cashflow::sqlite {

/// The order of the collation z7_text: letter case and blanks at the end do not count. Negative, 0 or positive.
[[nodiscard]] int compareTexts(std::string_view a, std::string_view b);

/// Whether a text fits a pattern of "%", "_", "[set]" and "[^set]", without regard to letter case.
[[nodiscard]] bool isLike(std::string_view text, std::string_view pattern);

} // namespace z7::cashflow::sqlite
