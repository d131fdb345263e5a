#pragma once

#include "workbench/vouchers/Refusal.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// How the rows of a voucher compare with it. All commands use the same comparison, see Judge.
struct Verdict {
    /// How rows and voucher compare.
    enum class Kind {
        matched,    ///< the voucher has rows, and they match it
        nothing,    ///< no rows, and none are needed because the cash lines cancel out
        noCash,     ///< no rows, and the voucher has no line on a cash-flow account
        unmatched,  ///< the rows do not match the voucher, or rows are missing
        unworkable, ///< because of the voucher itself, rows can be neither generated nor compared
    };
    Kind kind = Kind::unworkable;   ///< the result
    std::optional<Refusal> refusal; ///< why, if unmatched or unworkable
    std::int32_t rows = 0;          ///< number of rows judged
    std::optional<double> cashSum;  ///< debit less credit on the cash-flow accounts; empty if unknown

    /// Whether the rows are not accepted; refusal says why.
    [[nodiscard]] bool isRefused() const noexcept { return refusal.has_value(); }
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
