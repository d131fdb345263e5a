#pragma once

#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::workbench {

/// A voucher as lists show it.
struct VoucherHead {
    VoucherKey key;
    Date date;           ///< date of the first line that has one, else Date::none()
    std::string summary; ///< summary text of the first line
};

/// Accounting periods from one to another, both included.
struct PeriodRange {
    std::uint8_t first = 0;
    std::uint8_t last = 255;
};

/// The vouchers of a year, or of some of its periods, in the order of their keys.
[[nodiscard]] std::vector<VoucherHead> listVouchers(Connection& connection, std::int16_t year,
                                                    const std::optional<PeriodRange>& periods);

/// One voucher, or nothing if it has no line.
[[nodiscard]] std::optional<VoucherHead> findVoucher(Connection& connection, const VoucherKey& key);

} // namespace z7::cashflow::workbench
