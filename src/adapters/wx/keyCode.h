#pragma once

#include <cstdint>

class wxKeyEvent;

namespace z7::cashflow::wx {

/// The platform's number of a pressed key: 116 is F5, 46 Delete, 13 Enter, 65 A. 0 for a key without a number here. The
/// number is the key's and not that of the sign that it writes, so that a decimal point, sign 46, is never taken for
/// Delete.
[[nodiscard]] std::int32_t keyCode(const wxKeyEvent& event);

} // namespace z7::cashflow::wx
