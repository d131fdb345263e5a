#pragma once

#include "workbench/Amount.h"
#include "workbench/vouchers/Refusal.h"
#include "workbench/vouchers/VoucherKey.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace z7::cashflow::workbench {

/// Vouchers that lack the same thing, such as a template for 6602 debit.
struct OpenGroup {
    std::optional<Finding::Kind> kind; ///< what they lack; nothing if only the number of the refusal is known
    int number = 0;                    ///< number of the refusal; 0 where the kind is known
    std::string account;               ///< empty where what they lack is no matter of an account
    std::optional<bool> debit;         ///< the side of the account; nothing where it has none
    std::string item;                  ///< the cash-flow item that is not there; else empty
    std::size_t vouchers = 0;
    Amount
        amount; ///< their lines on that account and side, or their cash that is not allocated, all as positive amounts
    VoucherKey first; ///< the first of them
};

/// Counts refused vouchers by what they lack, most often by account and side. It keeps a record for each group, however
/// many vouchers there are.
class OpenSummary {
public:
    /// Takes one more voucher. It counts in each group that one of its findings belongs to.
    void add(const VoucherKey& key, const Refusal& refusal);

    /// By what is lacking (as Finding::Kind lists it), account and side.
    [[nodiscard]] std::vector<OpenGroup> groups() const;
    /// All vouchers that were added, each once.
    [[nodiscard]] std::size_t vouchers() const noexcept { return vouchers_; }

private:
    // kind (-1 for none), number, account, side (-1 for none, credit, debit), item
    using Key = std::tuple<int, int, std::string, int, std::string>;

    std::map<Key, OpenGroup> groups_;
    std::size_t vouchers_ = 0;
};

} // namespace z7::cashflow::workbench
