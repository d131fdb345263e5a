#include "workbench/changes/undo.h"

#include "workbench/vouchers/Transaction.h"
#include "workbench/vouchers/Voucher.h"
#include "workbench/vouchers/databaseFailure.h"

namespace z7::cashflow::workbench {

namespace {

Refusal changedSince(std::int32_t run) {
    Finding finding;
    finding.kind = Finding::Kind::changedSince;
    finding.run = run;
    return ownRefusal(errors::changedSince, {finding});
}

Refusal explained(const Error& error) {
    Finding held;
    held.kind = Finding::Kind::heldElsewhere;
    return {error, isHeldElsewhere(error) ? std::vector<Finding>{held} : std::vector<Finding>{}};
}

} // namespace

VoucherResult undoVoucher(Connection& connection, RunLog& log, std::int32_t run, const VoucherKey& key, bool keep) {
    VoucherResult result{};
    result.key = key;
    const auto restore = [&]() -> std::optional<Refusal> {
        lockVoucher(connection, key);
        const LoggedVoucher logged = readLogged(connection, run, key);
        const auto rows = readRowImages(connection, key);
        if (!sameRows(rows, logged.after, true)) {
            return changedSince(run);
        }
        log.noteBefore(key);
        connection.Execute("delete from gl_cashtable where " + rowsOfVoucher(key));
        connection.Execute("insert into gl_cashtable (" + rowColumnList() + ") select " + rowColumnList() +
                           " from z7_run_row where iRun=" + std::to_string(run) + " and bAfter=0 and " +
                           rowsOfVoucher(key));
        log.noteAfter(key);
        const auto restored = readRowImages(connection, key);
        if (!sameRows(restored, logged.before, true)) {
            return ownRefusal(errors::rowsNotReadable, {});
        }
        result.changes = compareRows(rows, restored);
        result.rows = static_cast<std::int32_t>(restored.size());
        result.removed = static_cast<std::int32_t>(rows.size());
        return std::nullopt;
    };
    result.refusal = saveInTransaction(
        connection, [keep] { return keep; }, restore, explained);
    log.ended(keep && !result.refusal);
    result.outcome = result.refusal ? Outcome::refused : result.rows == 0 ? Outcome::nothing : Outcome::stored;
    return result;
}

} // namespace z7::cashflow::workbench
