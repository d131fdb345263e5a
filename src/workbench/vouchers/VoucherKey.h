#pragma once

#include "z7cashflow/statements/VoucherKey.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace z7::cashflow::workbench {

/// A ledger voucher as a user writes it: year/period/kind/number, such as "2024/1/2/15". It is the library's key and
/// the accounting year, 1 to 9999.
struct VoucherKey : cashflow::VoucherKey {
    constexpr VoucherKey() = default;
    constexpr VoucherKey(std::int16_t ofYear, std::uint8_t ofPeriod, std::int16_t ofKind, std::int32_t ofNumber)
        : cashflow::VoucherKey{ofPeriod, ofKind, ofNumber}, year(ofYear) {}

    friend bool operator==(const VoucherKey&, const VoucherKey&) = default;

    std::int16_t year = 0;
};

/// The key that a text holds: four plain numbers, in range, between single "/"; nothing for any other text.
[[nodiscard]] std::optional<VoucherKey> readVoucherKey(std::string_view text);

/// A key as people write it: its kind may be the sign of a kind in place of its number, such as "2024/1/付/5".
struct WrittenVoucherKey {
    VoucherKey key;   ///< its kind is 0 where a sign is written
    std::string sign; ///< the sign; empty where a number is written
};

/// The written key that a text holds; nothing for any other text, and for one with a number out of its range. Whether
/// there is a kind of that sign, VoucherKinds knows.
[[nodiscard]] std::optional<WrittenVoucherKey> readWrittenVoucherKey(std::string_view text);

/// A part of a key that is out of its range.
struct KeyPartOutOfRange {
    enum class Part { year, period, kind, number };
    Part part = Part::year;
    std::int64_t least = 0;
    std::int64_t most = 0;
};

/// The first such part of a text that is otherwise a written key; nothing for any other text.
[[nodiscard]] std::optional<KeyPartOutOfRange> keyPartOutOfRange(std::string_view text);

/// The text that readVoucherKey reads.
[[nodiscard]] std::string voucherKeyText(const VoucherKey& key);

} // namespace z7::cashflow::workbench
