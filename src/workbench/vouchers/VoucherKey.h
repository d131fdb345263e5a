#pragma once

#include "z7cashflow/statements/VoucherKey.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The key of a ledger voucher as users write it: year/period/kind/number, such as "2024/1/2/15". It consists of
/// the library's key and the accounting year, 1 to 9999.
struct VoucherKey : cashflow::VoucherKey {
    constexpr VoucherKey() = default;
    /// The key with these parts, unchecked.
    constexpr VoucherKey(std::int16_t ofYear, std::uint8_t ofPeriod, std::int16_t ofKind, std::int32_t ofNumber)
        : cashflow::VoucherKey{ofPeriod, ofKind, ofNumber}, year(ofYear) {}

    /// Equal if year, period, kind and number are equal.
    friend bool operator==(const VoucherKey&, const VoucherKey&) = default;

    std::int16_t year = 0; ///< accounting year, 1 to 9999; 0 for no voucher
};

/// Parses a key: four plain numbers in range, separated by "/"; empty for any other text.
[[nodiscard]] std::optional<VoucherKey> readVoucherKey(std::string_view text);

/// A key as people write it: the kind may be given by its sign instead of its number, such as "2024/1/付/5".
struct WrittenVoucherKey {
    VoucherKey key;   ///< its kind is 0 if a sign was written
    std::string sign; ///< the sign; empty if a number was written
};

/// Parses a written key; empty for any other text, and if a number is out of range. Whether the sign exists is
/// checked by VoucherKinds.
[[nodiscard]] std::optional<WrittenVoucherKey> readWrittenVoucherKey(std::string_view text);

/// A part of a key that is out of range.
struct KeyPartOutOfRange {
    /// The part of the key.
    enum class Part { year, period, kind, number };
    Part part = Part::year; ///< which part
    std::int64_t least = 0; ///< the smallest allowed number
    std::int64_t most = 0;  ///< the largest allowed number
};

/// The first part that is out of range in an otherwise valid written key; empty for any other text.
[[nodiscard]] std::optional<KeyPartOutOfRange> keyPartOutOfRange(std::string_view text);

/// The text of a key, as readVoucherKey parses it.
[[nodiscard]] std::string voucherKeyText(const VoucherKey& key);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
