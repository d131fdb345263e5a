#pragma once

#include <string>

namespace z7::cashflow {

/// A number as decimal digits: 0.d1d2d3... times 10 to the power of point. 1234.5 is digits "12345", point 4; 0.05 is
/// digits "5", point -1. Zero has no digits.
struct DecimalDigits {
    bool negative = false;
    std::string digits; ///< at most 15, no zeros at either end
    int point = 0;
};

/// The digits of a finite number, rounded to 15 significant ones. Error 6 if the number is not finite.
[[nodiscard]] DecimalDigits decimalDigits(double value);

} // namespace z7::cashflow
