#pragma once

#include "workbench/vouchers/PeriodRange.h"
#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// A voucher in a list.
struct VoucherHead {
    VoucherKey key;      ///< key of the voucher
    Date date;           ///< of the first line that has a date, otherwise Date::none()
    std::string summary; ///< of the first line
};

/// The vouchers of a year, or of some of its periods, sorted by key.
[[nodiscard]] std::vector<VoucherHead> listVouchers(Connection& connection, std::int16_t year,
                                                    const std::optional<PeriodRange>& periods);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
