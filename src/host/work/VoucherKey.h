#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace z7::cashflow::host {

/// A ledger voucher as a user writes it: year/period/kind/number, such as "2024/1/2/15".
struct VoucherKey {
    std::int16_t year = 0;   ///< accounting year, 1 to 9999
    std::uint8_t period = 0; ///< accounting period, 0 to 255
    std::int16_t kind = 0;   ///< number of the voucher kind in dsign
    std::int32_t number = 0; ///< number within period and kind

    friend auto operator<=>(const VoucherKey&, const VoucherKey&) = default;
};

/// The key that a text holds: four numbers without a sign, in range, between single "/"; nothing for any other text.
[[nodiscard]] std::optional<VoucherKey> readVoucherKey(std::string_view text);

/// A part of a key that is out of its range.
struct KeyPartOutOfRange {
    enum class Part { year, period, kind, number };
    Part part = Part::year;
    std::int64_t least = 0;
    std::int64_t most = 0;
};

/// The first such part of a text that is otherwise a key, four numbers between single "/"; nothing for any other text.
[[nodiscard]] std::optional<KeyPartOutOfRange> keyPartOutOfRange(std::string_view text);

/// The text that readVoucherKey reads.
[[nodiscard]] std::string voucherKeyText(const VoucherKey& key);

} // namespace z7::cashflow::host
