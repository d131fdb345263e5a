#pragma once

#include <cstdint>

class wxKeyEvent;

namespace z7::cashflow::wx {

/// The platform-independent number of a key: 116 is F5, 46 Delete, 13 Enter, 65 A. 0 for a key that has no number
/// here. The number identifies the key and not the character that it types, so that a decimal point, character 46,
/// is never taken for Delete.
[[nodiscard]] std::int32_t keyCode(const wxKeyEvent& event);

} // namespace z7::cashflow::wx
