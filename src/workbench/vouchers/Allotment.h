#pragma once

#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/Judge.h"
#include "workbench/vouchers/VoucherResult.h"
#include "workbench/vouchers/voucherList.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// Saves the rows of vouchers, each voucher in its own transaction: it is locked before it is read; if it cannot be
/// processed, it is refused without calling the library; and the stored rows are read back before the commit. A
/// refused voucher is rolled back, as is every voucher if nothing is to be kept. A voucher whose rows did not
/// change is rolled back, too, so that its rows keep their identities.
class Allotment {
public:
    /// The connection, the data access, the provider and the log outlive this object. If keep is false, every
    /// voucher is rolled back, nothing is logged, and the results list the changes of all rows. A null log
    /// means no logging.
    Allotment(Connection& connection, DataProvider& data, IGlVoucherProvider& gl, bool keep, RunLog* log = nullptr)
        : connection_(connection), data_(data), gl_(gl), judge_(connection, data, gl), keep_(keep),
          log_(keep && log != nullptr && log->available() ? log : nullptr) {}

    /// Makes results list the changes of all rows for saves that are kept, too. This costs one more statement
    /// per voucher.
    void tellEveryRow() noexcept { everyRow_ = true; }

    /// Saves the given rows, otherwise the stored rows of the voucher again, or generated ones if none are
    /// stored. Errors that concern the database as a whole pass through, after a rollback; all others, such as
    /// a lock held by another session, become refusals.
    [[nodiscard]] VoucherResult allot(const VoucherKey& key, Judge::Rows rows = nullptr);

    /// Prepares the rows to save from a voucher and its stored rows, and sets their origin (initially a
    /// document). A null pointer leaves the choice to the library. If it returns a refusal, nothing is saved.
    using RowMaker = std::function<std::optional<Refusal>(const Voucher& voucher, const std::vector<StoredRow>& before,
                                                          Judge::Rows& rows, RowsOrigin& origin)>;
    /// Saves rows that are prepared while the voucher is locked. If compareSums is false, a mismatch of the
    /// sums is reported in the result and not refused. Errors as for allot.
    [[nodiscard]] VoucherResult change(const VoucherKey& key, const RowMaker& make, bool compareSums = true);
    /// Removes all rows of a voucher, whether or not readers find them. Errors as for allot.
    [[nodiscard]] VoucherResult removeRows(const VoucherKey& key);

    /// Replaces the stored rows by those of a document. Rows of another voucher are refused unless force is
    /// set. The account option bXJLL decides whether rows that do not match are refused, or stored with the
    /// mismatch in the result. Errors as for allot.
    [[nodiscard]] VoucherResult take(const VoucherKey& key, const std::string& document, bool force);

    /// Saves one voucher of a run.
    using SaveOne = std::function<VoucherResult(const VoucherKey&)>;
    /// Allocates vouchers in their order until stopRequested, which is called before each voucher, returns
    /// true. Passes each result to take after the voucher's transaction has ended. Returns the number of
    /// vouchers processed.
    std::size_t allotAll(const std::vector<VoucherHead>& vouchers, const std::function<bool()>& stopRequested,
                         const std::function<void(const VoucherResult&)>& take) {
        return saveAll(
            vouchers, [this](const VoucherKey& key) { return allot(key); }, stopRequested, take);
    }
    /// The same, saving each voucher by the given function.
    static std::size_t saveAll(const std::vector<VoucherHead>& vouchers, const SaveOne& save,
                               const std::function<bool()>& stopRequested,
                               const std::function<void(const VoucherResult&)>& take);

private:
    /// Runs a save in the voucher's transaction, logs it, and determines what became of the rows.
    void finish(VoucherResult& result, const std::function<std::optional<Refusal>()>& save,
                const std::function<Refusal(const Error&)>& explain);
    /// Remembers the rows that are about to be replaced, if there are any, and logs them.
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
    std::vector<RowImage> before_; ///< of the current voucher
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
