#pragma once

#include "workbench/vouchers/Refusal.h"

#include <cstdint>
#include <optional>

namespace z7::cashflow::workbench {

/// How a voucher and its rows stand to each other. Every command judges by the same routine, see Judge.
struct Verdict {
    enum class Kind {
        matched,    ///< there are rows, and they match the voucher
        nothing,    ///< there are no rows, and the voucher needs none because its cash lines cancel out
        noCash,     ///< there are no rows, and the voucher has no line on a cash-flow account
        unmatched,  ///< the rows, or their absence, do not match the voucher
        unworkable, ///< the voucher itself is such that rows can be neither generated nor compared
    };
    Kind kind = Kind::unworkable;
    std::optional<Refusal> refusal; ///< why, if unmatched or unworkable
    std::int32_t rows = 0;          ///< the rows that were judged
    std::optional<double> cashSum;  ///< debit less credit on the cash-flow accounts; nothing if it is not known

    [[nodiscard]] bool isRefused() const noexcept { return refusal.has_value(); }
};

} // namespace z7::cashflow::workbench
