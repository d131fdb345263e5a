#pragma once

#include "workbench/Amount.h"
#include "workbench/vouchers/Refusal.h"
#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// Vouchers that lack the same thing, such as a template for 6602 debit.
struct OpenGroup {
    std::optional<Finding::Kind> kind; ///< what they lack; empty if only the refusal's number is known
    int number = 0;                    ///< the refusal's number; 0 if the kind is known
    std::string account;               ///< empty if the finding does not refer to an account
    std::optional<bool> debit;         ///< side of the account; empty if there is none
    std::string item;                  ///< the cash-flow item that does not exist; otherwise empty
    std::size_t vouchers = 0;          ///< number of vouchers in the group
    Amount
        amount; ///< of their lines on that account and side, otherwise of their unallocated cash; all taken as positive
    VoucherKey first; ///< the first of them
};

/// Groups refused vouchers by what they lack, usually by account and side. Memory grows with the number of groups,
/// not of vouchers.
class OpenSummary {
public:
    /// Adds a voucher to each group that one of its findings belongs to.
    void add(const VoucherKey& key, const Refusal& refusal);

    /// Sorted by what is lacking (in the order of Finding::Kind), account and side.
    [[nodiscard]] std::vector<OpenGroup> groups() const;
    /// The number of vouchers added; each counts once.
    [[nodiscard]] std::size_t vouchers() const noexcept { return vouchers_; }

private:
    // kind (-1 for none), number, account, side (-1 for none, credit, debit), item
    using Key = std::tuple<int, int, std::string, int, std::string>;

    std::map<Key, OpenGroup> groups_;
    std::size_t vouchers_ = 0;
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
