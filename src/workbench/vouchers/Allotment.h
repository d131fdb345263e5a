#pragma once

#include "workbench/changes/RunLog.h"
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

/// Saves the rows of vouchers one by one, each voucher in a transaction of its own: the voucher is locked before
/// anything of it is read, what cannot be worked with is refused without asking the library, and what was stored is
/// read back before it is committed. A refused voucher is rolled back, as is every voucher if nothing is to be kept. A
/// voucher whose rows come out as they were is rolled back too: its rows stay untouched, with their identities.
class Allotment {
public:
    /// The connection, the data access, the provider and the log outlive it. With keep false every voucher is rolled
    /// back, nothing is noted, and the results hold the changes of every row. Without a log nothing is noted.
    Allotment(Connection& connection, DataProvider& data, IGlVoucherProvider& gl, bool keep, RunLog* log = nullptr)
        : connection_(connection), data_(data), gl_(gl), judge_(connection, data, gl), keep_(keep),
          log_(keep && log != nullptr && log->available() ? log : nullptr) {}

    /// Has the changes of every row told in the results of saves that are kept, too, for one statement more a voucher.
    void tellEveryRow() noexcept { everyRow_ = true; }

    /// Saves the rows that are handed in, else the stored rows of a voucher anew, or generated ones where none are
    /// stored. Errors that concern the database as a whole come out, after a rollback; all others are refusals, a lock
    /// that another session holds among them.
    [[nodiscard]] VoucherResult allot(const VoucherKey& key, Judge::Rows rows = nullptr);

    /// Prepares the rows that are to be saved for a voucher, from the voucher and what is stored for it, and says where
    /// they come from (a document unless it says otherwise). A null pointer leaves that to the library. Nothing is
    /// saved if it returns a refusal.
    using RowMaker = std::function<std::optional<Refusal>(const Voucher& voucher, const std::vector<StoredRow>& before,
                                                          Judge::Rows& rows, RowsOrigin& origin)>;
    /// Saves rows that are made while the voucher is locked. Where their sum is not to be compared with the voucher's,
    /// a mismatch is in the result. Errors as above.
    [[nodiscard]] VoucherResult change(const VoucherKey& key, const RowMaker& make, bool compareSums = true);
    /// Removes all rows of a voucher, whether readers find them or not. Errors as above.
    [[nodiscard]] VoucherResult removeRows(const VoucherKey& key);

    /// Saves the rows of a document in place of the stored ones. Rows of another voucher are refused unless forced. The
    /// account option bXJLL decides whether rows that do not match are refused, or stored with a mismatch in the
    /// result. Errors as above.
    [[nodiscard]] VoucherResult take(const VoucherKey& key, const std::string& document, bool force);

    /// Saves one voucher of a run.
    using SaveOne = std::function<VoucherResult(const VoucherKey&)>;
    /// Allots vouchers in their order until stopRequested answers true, which is asked before each of them. Hands each
    /// result to the taker once the voucher's transaction has ended. Returns the number of vouchers that were done.
    std::size_t allotAll(const std::vector<VoucherHead>& vouchers, const std::function<bool()>& stopRequested,
                         const std::function<void(const VoucherResult&)>& take) {
        return saveAll(
            vouchers, [this](const VoucherKey& key) { return allot(key); }, stopRequested, take);
    }
    /// The same, each voucher saved by a routine.
    static std::size_t saveAll(const std::vector<VoucherHead>& vouchers, const SaveOne& save,
                               const std::function<bool()>& stopRequested,
                               const std::function<void(const VoucherResult&)>& take);

private:
    /// Runs a save in the voucher's transaction, notes it, and fills in what became of the rows.
    void finish(VoucherResult& result, const std::function<std::optional<Refusal>()>& save,
                const std::function<Refusal(const Error&)>& explain);
    /// Keeps the rows that are about to be replaced, if there are some, and notes them.
    void takeBefore(const VoucherKey& key, bool some);
    [[nodiscard]] std::optional<Refusal> store(const Voucher& voucher, std::string document, Judge::Rows rows,
                                               VoucherResult& result);

    Connection& connection_;
    DataProvider& data_;
    IGlVoucherProvider& gl_;
    Judge judge_;
    bool keep_;
    bool everyRow_ = false;
    RunLog* log_;
    std::vector<RowImage> before_; ///< of the voucher in hand
};

} // namespace z7::cashflow::workbench
