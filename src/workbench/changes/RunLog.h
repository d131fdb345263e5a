#pragma once

#include "workbench/changes/RowImage.h"
#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::workbench {

/// What the log notes of a run beside the rows: it is handed in by the host, so that a test can say who works and when.
struct RunNote {
    std::string user;                   ///< who works, such as "demo"
    std::string command;                ///< the words of the command without its database, such as "allot --year 2024"
    std::function<Date()> now;          ///< the time of the desk
    std::optional<std::int32_t> undoes; ///< the run that is undone
};

/// The log of one run: for each voucher that it changes, the rows before and after. It writes inside the voucher's own
/// transaction, so that rows and log are stored together or not at all. The run gets its number with the first change;
/// a run that changes nothing leaves no trace.
class RunLog {
public:
    /// The connection outlives it.
    RunLog(Connection& connection, RunNote note) : connection_(connection), note_(std::move(note)) {}

    /// Whether the account has the tables of the log; asked once, outside a transaction. Without them nothing is noted.
    /// Errors of the database other than that there is no such table.
    [[nodiscard]] bool available();
    /// Notes the rows that are stored for a voucher, which must be some, before they are changed.
    void noteBefore(const VoucherKey& key) { note(key, false); }
    /// The same after the change.
    void noteAfter(const VoucherKey& key) { note(key, true); }
    /// To be called when the transaction of a voucher has ended, with whether it was committed.
    void ended(bool committed);
    /// The number of the run; nothing while it has changed nothing, and where there is no log.
    [[nodiscard]] std::optional<std::int32_t> number() const { return committed_ ? number_ : std::nullopt; }

private:
    void note(const VoucherKey& key, bool after);
    [[nodiscard]] std::int32_t begin();

    Connection& connection_;
    RunNote note_;
    std::optional<bool> available_;
    std::optional<std::int32_t> number_;
    bool committed_ = false; ///< the record of the run is there to stay
};

/// A run of the log.
struct LoggedRun {
    std::int32_t number = 0;
    std::string user;
    Date time;
    std::string command;
    std::optional<std::int32_t> undoes; ///< the run that it undid
    std::int32_t vouchers = 0;          ///< the vouchers that it changed
};

/// A voucher that a run changed.
struct LoggedVoucher {
    VoucherKey key;
    std::vector<RowImage> before;
    std::vector<RowImage> after;
};

/// Whether the account has the tables of the log. Errors of the database other than that there is no such table.
[[nodiscard]] bool hasLog(Connection& connection);
/// All runs, the newest first. The account must have a log. Errors of the database.
[[nodiscard]] std::vector<LoggedRun> readRuns(Connection& connection);
/// One run, or nothing.
[[nodiscard]] std::optional<LoggedRun> findRun(Connection& connection, std::int32_t number);
/// The vouchers of a run, in the order of their keys.
[[nodiscard]] std::vector<VoucherKey> vouchersOfRun(Connection& connection, std::int32_t run);
/// What a run did to one voucher; without rows on both sides if it did not change it.
[[nodiscard]] LoggedVoucher readLogged(Connection& connection, std::int32_t run, const VoucherKey& key);

} // namespace z7::cashflow::workbench
