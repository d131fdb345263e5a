#pragma once

#include "workbench/vouchers/Refusal.h"
#include "workbench/vouchers/VoucherKey.h"

#include <cstdint>
#include <optional>

namespace z7::cashflow::workbench {

/// What became of a voucher.
enum class Outcome {
    stored,  ///< its rows are in the database
    noCash,  ///< it has no line on a cash-flow account, and was left alone
    nothing, ///< it has no rows now
    refused  ///< its rows do not match it, and nothing was changed
};

/// One voucher's result.
struct VoucherResult {
    VoucherKey key;
    Outcome outcome = Outcome::refused;
    std::int32_t rows = 0;    ///< the rows that this save stored; 0 if it was refused
    std::int32_t removed = 0; ///< the rows that were stored before and that this save replaced
    std::optional<Refusal> refusal;
    /// Why the stored rows do not match the voucher, where the account option bXJLL lets them be stored all the same.
    std::optional<Refusal> mismatch;
};

} // namespace z7::cashflow::workbench
