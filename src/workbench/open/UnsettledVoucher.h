#pragma once

#include "workbench/Amount.h"
#include "workbench/vouchers/Judge.h"
#include "workbench/vouchers/Verdict.h"
#include "workbench/vouchers/voucherList.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The verdict on the stored rows of a voucher. An error of this voucher's data makes it unworkable, so that a list
/// can continue; errors of the database as a whole pass through.
[[nodiscard]] Verdict standingOf(Judge& judge, const VoucherKey& key);

/// A voucher that is not settled: it moves cash but has no stored rows, its rows do not match it, or it cannot be
/// processed.
struct UnsettledVoucher {
    VoucherHead head;     ///< key, date and summary
    Refusal refusal;      ///< why, and the remedy
    bool workable = true; ///< false if the voucher itself must be corrected before rows can be allocated
    Amount cash;          ///< debit less credit of its lines on cash accounts; 0 if unknown
    Amount rows;          ///< the effect on cash of its stored rows that readers find; 0 if unknown

    /// The cash that its rows do not cover, as in the cash-flow statement.
    [[nodiscard]] Amount difference() const { return cash - rows; }
};

/// The unsettled ones among the listed vouchers of a year, sorted by key, followed by the vouchers of the periods
/// that have rows but are not in the ledger. Together they include every voucher that makes a statement of these
/// periods differ. Errors of the database pass through.
[[nodiscard]] std::vector<UnsettledVoucher> findUnsettled(Connection& connection, Judge& judge,
                                                          const std::vector<VoucherHead>& vouchers, std::int16_t year,
                                                          const std::optional<PeriodRange>& periods);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
