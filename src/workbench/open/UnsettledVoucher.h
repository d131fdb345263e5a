#pragma once

#include "workbench/Amount.h"
#include "workbench/vouchers/Judge.h"
#include "workbench/vouchers/Verdict.h"
#include "workbench/vouchers/voucherList.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace z7::cashflow::workbench {

/// The verdict on what is stored for a voucher. One whose data breaks a statement has it as an unworkable voucher, so
/// that a list goes on; errors of the database as a whole come out.
[[nodiscard]] Verdict standingOf(Judge& judge, const VoucherKey& key);

/// A voucher with something left to do: no rows are stored though it moves cash, the stored rows do not match it, or it
/// cannot be worked with.
struct UnsettledVoucher {
    VoucherHead head;
    Refusal refusal;      ///< why, and what to do about it
    bool workable = true; ///< rows can be allocated; false if the voucher itself has to be corrected first
    Amount cash;          ///< debit less credit of its lines on cash accounts; 0 if it is not known
    Amount rows;          ///< the effect on cash of its stored rows that readers find; 0 as above

    /// The cash that its rows do not account for, as in the cash-flow statement.
    [[nodiscard]] Amount difference() const { return cash - rows; }
};

/// Those of the listed vouchers of a year that are unsettled, in the order of their keys, and after them the vouchers
/// of the periods that have rows but are not in the ledger. Every voucher in which a statement of the periods differs
/// is among them. Errors of the database.
[[nodiscard]] std::vector<UnsettledVoucher> findUnsettled(Connection& connection, Judge& judge,
                                                          const std::vector<VoucherHead>& vouchers, std::int16_t year,
                                                          const std::optional<PeriodRange>& periods);

} // namespace z7::cashflow::workbench
