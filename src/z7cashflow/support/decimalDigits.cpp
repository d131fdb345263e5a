#include "z7cashflow/support/decimalDigits.h"

#include "z7cashflow/support/Error.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace z7::cashflow {

DecimalDigits decimalDigits(double value) {
    if (!std::isfinite(value)) {
        raisePlatformError(Reason::numberNotFinite);
    }
    DecimalDigits result;
    if (value == 0.0) {
        return result;
    }
    result.negative = value < 0;

    // One digit, a point, fourteen digits, "e", a signed exponent.
    std::array<char, 32> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                       std::chars_format::scientific, 14);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
    const std::size_t mark = text.find('e');
    result.digits = text.substr(0, 1);
    result.digits += text.substr(2, mark - 2);
    result.digits.erase(result.digits.find_last_not_of('0') + 1);
    int exponent = 0;
    std::from_chars(text.data() + mark + 2, text.data() + text.size(), exponent);
    result.point = (text[mark + 1] == '-' ? -exponent : exponent) + 1;
    return result;
}

} // namespace z7::cashflow
