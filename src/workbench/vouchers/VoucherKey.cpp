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

/// The parts of a written key. A number that is too large for any part becomes -1; for a kind given by its sign the
/// number is 0.
struct Parts {
    std::array<std::int64_t, 4> numbers{};
    std::string sign;
};

constexpr std::size_t kindPart = 2;

bool isNumber(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Empty if the text does not have that form.
std::optional<Parts> partsOf(std::string_view text) {
    Parts parts;
    for (std::size_t i = 0; i < parts.numbers.size(); ++i) {
        const bool last = i + 1 == parts.numbers.size();
        const std::size_t length = last ? text.size() : text.find('/');
        if (length == std::string_view::npos || length == 0) {
            return std::nullopt;
        }
        const std::string_view part = text.substr(0, length);
        if (isNumber(part)) {
            if (std::from_chars(part.data(), part.data() + part.size(), parts.numbers[i]).ec != std::errc{}) {
                parts.numbers[i] = -1;
            }
        } else if (i == kindPart) {
            parts.sign = part;
        } else {
            return std::nullopt;
        }
        text.remove_prefix(last ? length : length + 1);
    }
    return parts;
}

std::optional<KeyPartOutOfRange> outOfRange(const Parts& parts) {
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        if (parts.numbers[i] < ranges[i].least || parts.numbers[i] > ranges[i].most) {
            return ranges[i];
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<KeyPartOutOfRange> keyPartOutOfRange(std::string_view text) {
    const auto parts = partsOf(text);
    return parts ? outOfRange(*parts) : std::nullopt;
}

std::optional<WrittenVoucherKey> readWrittenVoucherKey(std::string_view text) {
    const auto parts = partsOf(text);
    if (!parts || outOfRange(*parts)) {
        return std::nullopt;
    }
    const auto& numbers = parts->numbers;
    return WrittenVoucherKey{{static_cast<std::int16_t>(numbers[0]), static_cast<std::uint8_t>(numbers[1]),
                              static_cast<std::int16_t>(numbers[2]), static_cast<std::int32_t>(numbers[3])},
                             parts->sign};
}

std::optional<VoucherKey> readVoucherKey(std::string_view text) {
    const auto written = readWrittenVoucherKey(text);
    return written && written->sign.empty() ? std::optional(written->key) : std::nullopt;
}

std::string voucherKeyText(const VoucherKey& key) {
    return std::to_string(key.year) + '/' + std::to_string(key.period) + '/' + std::to_string(key.kind) + '/' +
           std::to_string(key.number);
}

} // namespace z7::cashflow::workbench
