#pragma once

#include "workbench/vouchers/Judge.h"
#include "workbench/vouchers/VoucherResult.h"
#include "workbench/vouchers/voucherList.h"
#include "z7cashflow/ports/Connection.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::workbench {

/// Saves the rows of vouchers one by one, each voucher in a transaction of its own: the voucher is locked before anything of it is
/// read, what cannot be worked with is refused without asking the library, and what was stored is read back before it is
/// committed. A refused voucher is rolled back, as is every voucher if nothing is to be kept.
class Allotment {
public:
    /// The connection, the data access and the provider outlive it. With keep false every voucher is rolled back.
    Allotment(Connection& connection, DataProvider& data, IGlVoucherProvider& gl, bool keep)
        : connection_(connection), data_(data), gl_(gl), judge_(connection, data, gl), keep_(keep) {}

    /// Saves the rows that are handed in, else the stored rows of a voucher anew, or generated ones where none are
    /// stored. Errors that concern the database as a whole come out, after a rollback; all others are refusals, a lock that another
    /// session holds among them.
    [[nodiscard]] VoucherResult allot(const VoucherKey& key, Judge::Rows rows = nullptr);

    /// Saves the rows of a document in place of the stored ones. Rows of another voucher are refused unless forced. The account
    /// option bXJLL decides whether rows that do not match are refused, or stored with a mismatch in the result. Errors as above.
    [[nodiscard]] VoucherResult take(const VoucherKey& key, const std::string& document, bool force);

    /// Allots vouchers in their order until stopRequested answers true, which is asked before each of them. Hands each
    /// result to the taker once the voucher's transaction has ended. Returns the number of vouchers that were done.
    std::size_t allotAll(const std::vector<VoucherHead>& vouchers, const std::function<bool()>& stopRequested,
                         const std::function<void(const VoucherResult&)>& take);

private:
    [[nodiscard]] std::optional<Refusal> store(const Voucher& voucher, std::string document, Judge::Rows rows,
                                               VoucherResult& result);

    Connection& connection_;
    DataProvider& data_;
    IGlVoucherProvider& gl_;
    Judge judge_;
    bool keep_;
};

} // namespace z7::cashflow::workbench
