#pragma once

#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The key of a ledger voucher within its accounting year, such as period 3, kind 2, number 15. The default is the key
/// of a voucher that has no number yet.
struct VoucherKey {
    std::uint8_t period = 0; ///< accounting period, 0 to 255
    std::int16_t kind = 0;   ///< number of the voucher kind in dsign
    std::int32_t number = 0; ///< number within period and kind

    /// Equal if period, kind and number are equal.
    friend bool operator==(const VoucherKey&, const VoucherKey&) = default;
};

/// A ledger voucher's key and date; 1900-01-01 if there is no date.
struct DatedVoucherKey {
    VoucherKey key; ///< its key
    Date date;      ///< its date
};

/// The key of a voucher of another subsystem, such as "SO-2024-0301"; empty for a ledger voucher.
struct OutsideKey {
    std::string text; ///< coutno_id of the voucher's lines

    /// Whether there is no key.
    [[nodiscard]] bool empty() const noexcept { return text.empty(); }
};

} // namespace z7::cashflow

Z7_PUBLIC_END
