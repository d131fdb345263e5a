#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstdint>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// A range of accounting periods, both ends included.
struct PeriodRange {
    std::uint8_t first = 0;  ///< first period
    std::uint8_t last = 255; ///< last period
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
