#include "workbench/vouchers/OutsideAllotment.h"

#include "workbench/vouchers/Transaction.h"
#include "workbench/vouchers/rowsDocument.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/errorNumbers.h"

namespace z7::cashflow::workbench {

namespace {

Refusal noLedgerVoucher(std::int16_t year, const std::string& key) {
    Finding finding;
    finding.kind = Finding::Kind::noLedgerVoucher;
    finding.voucher = key;
    finding.year = year;
    return ownRefusal(errors::noLedgerVoucher, {finding});
}

} // namespace

std::optional<VoucherKey> OutsideAllotment::ledgerVoucher(std::int16_t year, const std::string& key) {
    const DatedVoucherKey found = data_.ledgerVoucherOf(connection_, {key});
    if (found.date == Date::none()) {
        return std::nullopt;
    }
    return VoucherKey(year, found.key.period, found.key.kind, found.key.number);
}

// The rows are stored under the key of the ledger voucher, so it is this voucher that must be locked. Before the
// lock is obtained another session may renumber or delete the voucher, so it is looked up again.
std::optional<Voucher> OutsideAllotment::lockLedgerVoucher(std::int16_t year, const std::string& key) {
    std::optional<VoucherKey> locked;
    for (auto found = ledgerVoucher(year, key); found != locked; found = ledgerVoucher(year, key)) {
        locked = found;
        if (locked) {
            lockVoucher(connection_, *locked);
        }
    }
    return locked ? std::optional(judge_.read(*locked)) : std::nullopt;
}

OutsideResult OutsideAllotment::save(std::int16_t year, const std::string& table, const std::string& key,
                                     std::string document) {
    OutsideResult result{table, key, Outcome::refused, 0, std::nullopt, false};
    const bool handedIn = !document.empty();
    const RowsOrigin origin = handedIn ? RowsOrigin::document : RowsOrigin::generated;
    bool cash = false;
    bool checkSum = true;
    bool changed = false;
    result.refusal = saveInTransaction(
        connection_, [&] { return changed; },
        [&]() -> std::optional<Refusal> {
            static_cast<void>(rowsOfDocument(document)); // a document that cannot be parsed raises its own error
            if (auto refusal = handedIn ? foreignRows(document, {}, true) : std::nullopt) {
                return refusal;
            }
            modPublic::SetIYear(year); // the outside contract expects its host to set the year
            const std::optional<Voucher> ledger = lockLedgerVoucher(year, key);
            if (!ledger) {
                return noLedgerVoucher(year, key);
            }
            const Voucher& voucher = *ledger;
            cash = data_.HaveCashFlowCodeInVoucher2(connection_, table, key);
            const auto before = readRowImages(connection_, voucher.key);
            if (log_ != nullptr && !before.empty()) {
                log_->noteBefore(voucher.key);
            }
            provider_.out().SaveCashFlowCol(connection_, table, key, &document, &checkSum);
            changed = !sameRows(before, readRowImages(connection_, voucher.key), false);
            if (log_ != nullptr && changed) {
                log_->noteAfter(voucher.key);
            }
            return cash ? judge_.readBack(voucher, *rowsOfDocument(document), origin) : std::nullopt;
        },
        [&](const Error& error) { return judge_.explained(error, Voucher{}, nullptr, RowsOrigin::stored); });
    if (log_ != nullptr) {
        log_->ended(changed && !result.refusal);
    }
    result.changed = changed && !result.refusal;
    if (!result.refusal) {
        result.rows = cash ? rowsOfDocument(document)->Count() : 0;
        result.outcome = !cash ? Outcome::noCash : result.rows == 0 ? Outcome::nothing : Outcome::stored;
    }
    return result;
}

} // namespace z7::cashflow::workbench
