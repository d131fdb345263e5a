#pragma once

#include <cstdint>

namespace z7::cashflow::wx {

/// A form's design is in twips, 1/1440 inch; here it is converted to pixels of 1/96 inch. On screens with a higher
/// resolution some window systems scale these themselves; for the others the toolkit's FromDIP does it, and every size
/// that is set passes through it.
inline constexpr std::int32_t twipsPerPixel = 15;

/// Rounds to the nearest pixel.
[[nodiscard]] constexpr int toPixels(std::int32_t twips) noexcept {
    return (twips >= 0 ? twips + twipsPerPixel / 2 : twips - twipsPerPixel / 2) / twipsPerPixel;
}

[[nodiscard]] constexpr std::int32_t toTwips(int pixels) noexcept { return pixels * twipsPerPixel; }

} // namespace z7::cashflow::wx
