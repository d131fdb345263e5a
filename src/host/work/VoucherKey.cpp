#include "host/work/VoucherKey.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace z7::cashflow::host {

namespace {

/// Takes digits and the separator behind them, if one is to follow, off the front of the text.
template <class T>
bool takeNumber(std::string_view& text, bool last, std::int64_t least, std::int64_t most, T& number) {
    const std::size_t length = last ? text.size() : text.find('/');
    if (length == std::string_view::npos || length == 0) {
        return false;
    }
    const std::string_view digits = text.substr(0, length);
    if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return false;
    }
    std::int64_t value = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc{} || value < least ||
        value > most) {
        return false;
    }
    number = static_cast<T>(value);
    text.remove_prefix(last ? length : length + 1);
    return true;
}

} // namespace

std::optional<VoucherKey> readVoucherKey(std::string_view text) {
    VoucherKey key;
    const bool read = takeNumber(text, false, 1, 9999, key.year) && takeNumber(text, false, 0, 255, key.period) &&
                      takeNumber(text, false, 0, std::numeric_limits<std::int16_t>::max(), key.kind) &&
                      takeNumber(text, true, 0, std::numeric_limits<std::int32_t>::max(), key.number);
    return read ? std::optional(key) : std::nullopt;
}

std::string voucherKeyText(const VoucherKey& key) {
    return std::to_string(key.year) + '/' + std::to_string(key.period) + '/' + std::to_string(key.kind) + '/' +
           std::to_string(key.number);
}

} // namespace z7::cashflow::host
