#pragma once

#include "workbench/changes/RowImage.h"
#include "workbench/vouchers/Refusal.h"
#include "workbench/vouchers/VoucherKey.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

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
    std::optional<Refusal> mismatch{};
    /// What became of each row, kept ones among them. Empty for a refused voucher, and where a save that is kept found
    /// no row before: every row is new then.
    std::vector<RowChange> changes{};
    /// The rows of one kind; a refused voucher has none.
    [[nodiscard]] std::int32_t count(RowChange::Kind kind) const {
        if (changes.empty()) {
            return kind == RowChange::Kind::added && !refusal ? rows : 0;
        }
        return static_cast<std::int32_t>(std::count_if(
            changes.begin(), changes.end(), [kind](const RowChange& change) { return change.kind == kind; }));
    }
    /// Whether the voucher has other rows than before.
    [[nodiscard]] bool changed() const {
        return !refusal &&
               (changes.empty() ? rows > 0 : count(RowChange::Kind::kept) < static_cast<std::int32_t>(changes.size()));
    }
};

} // namespace z7::cashflow::workbench
