#include "workbench/vouchers/VoucherKey.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace z7::cashflow::workbench {

namespace {

using Part = KeyPartOutOfRange::Part;

constexpr std::array<KeyPartOutOfRange, 4> ranges{{
    {Part::year, 1, 9999},
    {Part::period, 0, 255},
    {Part::kind, 0, std::numeric_limits<std::int16_t>::max()},
    {Part::number, 0, std::numeric_limits<std::int32_t>::max()},
}};

/// The four numbers of a key; one that is too large for any part counts as -1. Nothing if the text is not of that form.
std::optional<std::array<std::int64_t, 4>> partsOf(std::string_view text) {
    std::array<std::int64_t, 4> parts{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool last = i + 1 == parts.size();
        const std::size_t length = last ? text.size() : text.find('/');
        if (length == std::string_view::npos || length == 0) {
            return std::nullopt;
        }
        const std::string_view digits = text.substr(0, length);
        if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
            return std::nullopt;
        }
        if (std::from_chars(digits.data(), digits.data() + digits.size(), parts[i]).ec != std::errc{}) {
            parts[i] = -1;
        }
        text.remove_prefix(last ? length : length + 1);
    }
    return parts;
}

} // namespace

std::optional<KeyPartOutOfRange> keyPartOutOfRange(std::string_view text) {
    const auto parts = partsOf(text);
    if (!parts) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        if ((*parts)[i] < ranges[i].least || (*parts)[i] > ranges[i].most) {
            return ranges[i];
        }
    }
    return std::nullopt;
}

std::optional<VoucherKey> readVoucherKey(std::string_view text) {
    const auto parts = partsOf(text);
    if (!parts || keyPartOutOfRange(text)) {
        return std::nullopt;
    }
    return VoucherKey{static_cast<std::int16_t>((*parts)[0]), static_cast<std::uint8_t>((*parts)[1]),
                      static_cast<std::int16_t>((*parts)[2]), static_cast<std::int32_t>((*parts)[3])};
}

std::string voucherKeyText(const VoucherKey& key) {
    return std::to_string(key.year) + '/' + std::to_string(key.period) + '/' + std::to_string(key.kind) + '/' +
           std::to_string(key.number);
}

} // namespace z7::cashflow::workbench
