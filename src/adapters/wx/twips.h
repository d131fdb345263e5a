#pragma once

#include <cstdint>

namespace z7::cashflow::wx {

/// A form's design counts in twips, 1/1440 inch; the window system counts in pixels of a screen with 96 of them to the
/// inch and enlarges them itself on a screen with more. This is the one place where one becomes the other.
inline constexpr std::int32_t twipsPerPixel = 15;

/// The nearest number of pixels.
[[nodiscard]] constexpr int toPixels(std::int32_t twips) noexcept {
    return (twips >= 0 ? twips + twipsPerPixel / 2 : twips - twipsPerPixel / 2) / twipsPerPixel;
}

[[nodiscard]] constexpr std::int32_t toTwips(int pixels) noexcept { return pixels * twipsPerPixel; }

} // namespace z7::cashflow::wx
