#pragma once

#include "workbench/changes/RowImage.h"
#include "workbench/vouchers/Refusal.h"
#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/support/visibility.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// What became of a voucher.
enum class Outcome {
    stored,  ///< its rows are stored
    noCash,  ///< it has no line on a cash-flow account and was left unchanged
    nothing, ///< it needs no rows and has none now
    refused  ///< its rows do not match it, or it cannot be processed; nothing was changed
};

/// The result for one voucher.
struct VoucherResult {
    VoucherKey key;                     ///< key of the voucher
    Outcome outcome = Outcome::refused; ///< what became of it
    std::int32_t rows = 0;              ///< number of rows stored by this save; 0 if refused
    std::int32_t removed = 0;           ///< number of previously stored rows that this save replaced
    std::optional<Refusal> refusal;     ///< why it was refused; otherwise empty
    /// Why the stored rows do not match the voucher, if the account option bXJLL allows storing them anyway.
    std::optional<Refusal> mismatch{};
    /// The change of every row, kept ones included. Empty for a refused voucher, and for a kept save if no rows
    /// were stored before: every row is then new.
    std::vector<RowChange> changes{};
    /// The number of rows with this kind of change; 0 for a refused voucher.
    [[nodiscard]] std::int32_t count(RowChange::Kind kind) const {
        if (changes.empty()) {
            return kind == RowChange::Kind::added && !refusal ? rows : 0;
        }
        return static_cast<std::int32_t>(std::count_if(
            changes.begin(), changes.end(), [kind](const RowChange& change) { return change.kind == kind; }));
    }
    /// Whether the stored rows of the voucher have changed.
    [[nodiscard]] bool changed() const {
        return !refusal &&
               (changes.empty() ? rows > 0 : count(RowChange::Kind::kept) < static_cast<std::int32_t>(changes.size()));
    }
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
