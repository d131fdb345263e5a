#pragma once

#include <cstdint>

namespace z7::cashflow::workbench {

/// A range of accounting periods, both ends included.
struct PeriodRange {
    std::uint8_t first = 0;
    std::uint8_t last = 255;
};

} // namespace z7::cashflow::workbench
