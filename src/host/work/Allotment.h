#pragma once

#include "host/work/Transaction.h"
#include "host/work/VoucherList.h"
#include "z7cashflow/providers/IGlVoucherProvider.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// What became of a voucher.
enum class Outcome {
    stored,  ///< its rows are in the database
    noCash,  ///< it has no line on a cash-flow account, and was left alone
    nothing, ///< its cash lines cancel out, so that it has no rows
    refused  ///< its rows do not fit it, and nothing was changed
};

/// One voucher's result.
struct VoucherResult {
    VoucherKey key;
    Outcome outcome = Outcome::refused;
    std::int32_t rows = 0; ///< the rows that were stored; 0 unless the outcome is stored
    std::optional<Error> refusal;
};

/// Allots vouchers one by one: finds or generates the rows, checks them and saves them, each voucher in a transaction of its own,
/// which is rolled back if the voucher is refused or nothing is to be kept.
class Allotment {
public:
    /// The connection and the provider outlive it. With keep false every voucher is rolled back.
    Allotment(Connection& connection, IGlVoucherProvider& provider, bool keep)
        : connection_(connection), provider_(provider), keep_(keep) {}

    /// Errors that concern the database as a whole come out, after a rollback; all others are refusals.
    [[nodiscard]] VoucherResult allot(const VoucherHead& voucher);

    /// Allots vouchers in their order until stopRequested answers true, which is asked before each of them. Hands each
    /// result to the taker once the voucher's transaction has ended. Returns the number of vouchers that were done.
    std::size_t allotAll(const std::vector<VoucherHead>& vouchers, const std::function<bool()>& stopRequested,
                         const std::function<void(const VoucherResult&)>& take);

private:
    Connection& connection_;
    IGlVoucherProvider& provider_;
    bool keep_;
};

} // namespace z7::cashflow::host
