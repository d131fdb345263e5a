#pragma once

#include "workbench/changes/RowImage.h"
#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// What the log records of a run besides its rows. The host provides it, so that tests can set user and time.
struct RunNote {
    std::string user;                   ///< user, such as "demo"
    std::string command;                ///< the command line without its database, such as "allot --year 2024"
    std::function<Date()> now;          ///< the local time
    std::optional<std::int32_t> undoes; ///< the run to be undone
};

/// The log of one run: the rows before and after, for each voucher that the run changes. It is written in the
/// voucher's own transaction, so that rows and log are stored together or not at all. The run is numbered with its
/// first change; a run without changes is not logged.
class RunLog {
public:
    /// The connection outlives this object.
    RunLog(Connection& connection, RunNote note) : connection_(connection), note_(std::move(note)) {}
    /// The log of one of several sessions that work on the same run, with the number that reserve returned. Without a
    /// number nothing is recorded.
    RunLog(Connection& connection, std::optional<std::int32_t> run)
        : connection_(connection), available_(run.has_value()), number_(run), reserved_(true) {}

    /// Whether the account has the log's tables; queried once, outside a transaction. Without them do not
    /// record anything. Errors of the database pass through, except for a missing table.
    [[nodiscard]] bool available();
    /// Numbers the run before it changes anything, in a transaction of its own, and returns the number. The log must be
    /// available and the connection in no transaction. Call settle at the end of the run.
    [[nodiscard]] std::int32_t reserve();
    /// Ends a reserved run. If it changed nothing it is removed again, unless the database fails; readers of the log
    /// do not see a run without rows.
    void settle(bool changed);
    /// Records the stored rows of a voucher before they are changed. There must be at least one.
    void noteBefore(const VoucherKey& key) { note(key, false); }
    /// The same after the change.
    void noteAfter(const VoucherKey& key) { note(key, true); }
    /// Call this when the transaction of a voucher has ended, with whether it was committed.
    void ended(bool committed);
    /// The number of the run; empty as long as it has changed nothing, and if there is no log.
    [[nodiscard]] std::optional<std::int32_t> number() const { return committed_ ? number_ : std::nullopt; }

private:
    void note(const VoucherKey& key, bool after);
    [[nodiscard]] std::int32_t begin();

    Connection& connection_;
    RunNote note_;
    std::optional<bool> available_;
    std::optional<std::int32_t> number_;
    bool reserved_ = false;  ///< the number was committed before the first change
    bool committed_ = false; ///< a change of the run has been committed
};

/// A run in the log.
struct LoggedRun {
    std::int32_t number = 0;            ///< counted from 1 in the order of the runs
    std::string user;                   ///< user who started it, such as "demo"
    Date time;                          ///< local time of its first change
    std::string command;                ///< as in RunNote
    std::optional<std::int32_t> undoes; ///< the run that this run undid
    std::int32_t vouchers = 0;          ///< number of vouchers changed
};

/// A voucher that a run changed.
struct LoggedVoucher {
    VoucherKey key;               ///< key of the voucher
    std::vector<RowImage> before; ///< its rows before the run; empty if there were none
    std::vector<RowImage> after;  ///< its rows after the run; empty if there are none
};

/// Whether the account has the log's tables. Errors of the database pass through, except for a missing table.
[[nodiscard]] bool hasLog(Connection& connection);
/// All runs, newest first. The account must have a log. Errors of the database pass through.
[[nodiscard]] std::vector<LoggedRun> readRuns(Connection& connection);
/// A run by its number; empty if the log does not contain it.
[[nodiscard]] std::optional<LoggedRun> findRun(Connection& connection, std::int32_t number);
/// The vouchers of a run, sorted by key.
[[nodiscard]] std::vector<VoucherKey> vouchersOfRun(Connection& connection, std::int32_t run);
/// The rows of one voucher before and after a run; both empty if the run did not change it.
[[nodiscard]] LoggedVoucher readLogged(Connection& connection, std::int32_t run, const VoucherKey& key);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
