#pragma once

#include "host/work/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// A voucher as lists show it.
struct VoucherHead {
    VoucherKey key;
    Date date;           ///< date of the first line that has one, else Date::none()
    std::string summary; ///< summary text of the first line
};

/// Name of the table that holds the ledger's vouchers.
inline constexpr const char* voucherTable = "gl_accvouch";

/// The vouchers of a year, or of one period of it, in the order of their keys.
[[nodiscard]] std::vector<VoucherHead> listVouchers(Connection& connection, std::int16_t year,
                                                    std::optional<std::uint8_t> period);

/// One voucher, or nothing if it has no line.
[[nodiscard]] std::optional<VoucherHead> findVoucher(Connection& connection, const VoucherKey& key);

} // namespace z7::cashflow::host
