#include "z7cashflow/support/format.h"

#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/decimalDigits.h"

#include <algorithm>

namespace z7::cashflow {

namespace {

struct Pattern {
    std::size_t minWhole = 0;    ///< digits in front of the point at least
    std::size_t minDecimals = 0; ///< least number of digits after the decimal point
    std::size_t maxDecimals = 0;
    bool point = false;
    bool grouped = false;
};

Pattern parsePattern(std::string_view text) {
    Pattern pattern;
    for (const char c : text) {
        if (c == '.') {
            pattern.point = true;
        } else if (c == ',') {
            pattern.grouped = pattern.grouped || !pattern.point;
        } else if (pattern.point) {
            ++pattern.maxDecimals;
            pattern.minDecimals = c == '0' ? pattern.maxDecimals : pattern.minDecimals;
        } else if (c == '0' || pattern.minWhole > 0) {
            ++pattern.minWhole;
        }
    }
    return pattern;
}

// The digits before and after the decimal point.
struct Split {
    std::string whole;
    std::string decimals;
};

// Rounds half away from zero to a number of decimals, on the decimal digits.
Split rounded(const DecimalDigits& number, std::size_t decimals) {
    std::string digits = number.digits;
    int point = number.point;
    if (point < 0) {
        digits.insert(0, static_cast<std::size_t>(-point), '0');
        point = 0;
    }
    const std::size_t kept = static_cast<std::size_t>(point) + decimals;
    if (digits.size() > kept) {
        const bool up = digits[kept] >= '5';
        digits.resize(kept);
        if (up) {
            auto at = digits.rbegin();
            for (; at != digits.rend() && *at == '9'; ++at) {
                *at = '0';
            }
            if (at != digits.rend()) {
                ++*at;
            } else {
                digits.insert(digits.begin(), '1');
                ++point;
            }
        }
    }
    digits.resize(static_cast<std::size_t>(point) + decimals, '0');
    Split split{digits.substr(0, static_cast<std::size_t>(point)), digits.substr(static_cast<std::size_t>(point))};
    split.whole.erase(0, std::min(split.whole.find_first_not_of('0'), split.whole.size()));
    return split;
}

std::string grouped(const std::string& whole) {
    std::string text = whole;
    for (std::size_t at = text.size(); at > 3;) {
        at -= 3;
        text.insert(at, 1, ',');
    }
    return text;
}

std::string formatNumber(double value, const Pattern& pattern) {
    const DecimalDigits number = decimalDigits(value);
    Split split = rounded(number, pattern.maxDecimals);
    const auto isZero = [](const std::string& digits) { return digits.find_first_not_of('0') == std::string::npos; };
    const bool negative = number.negative && !(isZero(split.whole) && isZero(split.decimals));

    while (split.decimals.size() > pattern.minDecimals && split.decimals.back() == '0') {
        split.decimals.pop_back();
    }
    if (split.whole.size() < pattern.minWhole) {
        split.whole.insert(0, pattern.minWhole - split.whole.size(), '0');
    }
    std::string text = negative ? "-" : "";
    text += pattern.grouped ? grouped(split.whole) : split.whole;
    if (pattern.point) {
        text += "." + split.decimals;
    }
    return text;
}

} // namespace

std::string format(const Variant& value, std::string_view pattern) {
    if (value.isNull()) {
        return {};
    }
    if (const auto* text = value.get<std::string>(); text != nullptr && !readNumber(*text)) {
        return *text;
    }
    return formatNumber(toDouble(value), parsePattern(pattern));
}

} // namespace z7::cashflow
