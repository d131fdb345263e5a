#include "workbench/vouchers/Allotment.h"

#include "workbench/vouchers/Transaction.h"
#include "workbench/vouchers/rowsDocument.h"
#include "z7cashflow/model/modPublic.h"

namespace z7::cashflow::workbench {

namespace {

std::int32_t countOf(const std::vector<StoredRow>& rows) { return static_cast<std::int32_t>(rows.size()); }

} // namespace

VoucherResult Allotment::change(const VoucherKey& key, const RowMaker& make, bool compareSums) {
    VoucherResult result;
    result.key = key;
    Voucher voucher{key, Date::none(), {}};
    Judge::Rows rows;
    RowsOrigin origin = RowsOrigin::document;
    const auto save = [&]() -> std::optional<Refusal> {
        lockVoucher(connection_, key);
        voucher = judge_.read(key);
        if (auto refusal = judge_.unworkable(voucher)) {
            return refusal;
        }
        const auto before = readStoredRows(connection_, key);
        if (auto refusal = make(voucher, before, rows, origin)) {
            return refusal;
        }
        takeBefore(key, !before.empty());
        modPublic::SetIYear(key.year); // so that the year of the previous voucher has no effect
        gl_.SaveCashFlowColEx(connection_, voucherTable, key.period, key.kind, key.number, voucher.date, &rows,
                              &compareSums);
        if (!rows) {
            return std::nullopt;
        }
        result.removed = countOf(before);
        result.rows = rows->Count();
        auto unread = judge_.readBack(voucher, *rows, origin);
        if (!unread && !compareSums) {
            result.mismatch = judge_.compare(voucher, rows, origin).refusal;
        }
        return unread;
    };
    finish(result, save, [&](const Error& error) { return judge_.explained(error, voucher, rows, origin); });
    if (!result.refusal) {
        result.outcome = !rows ? Outcome::noCash : result.rows == 0 ? Outcome::nothing : Outcome::stored;
    }
    return result;
}

VoucherResult Allotment::allot(const VoucherKey& key, Judge::Rows handedIn) {
    return change(key,
                  [&](const Voucher&, const std::vector<StoredRow>& before, Judge::Rows& rows,
                      RowsOrigin& origin) -> std::optional<Refusal> {
                      rows = handedIn;
                      if (handedIn) {
                          return std::nullopt;
                      }
                      origin = before.empty() ? RowsOrigin::generated : RowsOrigin::stored;
                      return Judge::hidden(before);
                  });
}

VoucherResult Allotment::removeRows(const VoucherKey& key) {
    VoucherResult result;
    result.key = key;
    const auto remove = [&]() -> std::optional<Refusal> {
        lockVoucher(connection_, key);
        const auto before = readStoredRows(connection_, key);
        takeBefore(key, !before.empty());
        connection_.Execute("delete from gl_cashtable where " + rowsOfVoucher(key));
        result.removed = countOf(before);
        result.outcome = Outcome::nothing;
        return std::nullopt;
    };
    finish(result, remove, [&](const Error& error) {
        return judge_.explained(error, Voucher{key, Date::none(), {}}, nullptr, RowsOrigin::stored);
    });
    return result;
}

VoucherResult Allotment::take(const VoucherKey& key, const std::string& document, bool force) {
    VoucherResult result;
    result.key = key;
    Voucher voucher{key, Date::none(), {}};
    Judge::Rows rows;
    const auto save = [&]() -> std::optional<Refusal> {
        rows = rowsOfDocument(document);
        if (auto refusal = foreignRows(document, key, force)) {
            return refusal;
        }
        lockVoucher(connection_, key);
        voucher = judge_.read(key);
        auto refusal = judge_.unworkable(voucher);
        return refusal ? refusal : store(voucher, document, rows, result);
    };
    finish(result, save,
           [&](const Error& error) { return judge_.explained(error, voucher, rows, RowsOrigin::document); });
    return result;
}

std::optional<Refusal> Allotment::store(const Voucher& voucher, std::string document, Judge::Rows rows,
                                        VoucherResult& result) {
    const VoucherKey& key = voucher.key;
    modPublic::SetIYear(key.year);
    const bool cash = data_.HaveCashFlowCodeInVoucher(connection_, voucherTable, key.period, key.kind, key.number);
    const auto before = readStoredRows(connection_, key);
    takeBefore(key, !before.empty());
    bool checkSum = true; // replaced by the account option bXJLL
    gl_.SaveCashFlowColFromXml(connection_, voucherTable, key.period, key.kind, key.number, &document, &checkSum);
    if (!cash) {
        result.outcome = Outcome::noCash;
        return std::nullopt;
    }
    if (auto refusal = judge_.readBack(voucher, *rows, RowsOrigin::document)) {
        return refusal;
    }
    result.rows = rows->Count();
    result.removed = countOf(before);
    result.outcome = result.rows == 0 ? Outcome::nothing : Outcome::stored;
    if (!checkSum) {
        result.mismatch = judge_.compare(voucher, std::move(rows), RowsOrigin::document).refusal;
    }
    return std::nullopt;
}

void Allotment::takeBefore(const VoucherKey& key, bool some) {
    before_.clear();
    if (some) {
        before_ = readRowImages(connection_, key);
        if (log_ != nullptr) {
            log_->noteBefore(key);
        }
    }
}

void Allotment::finish(VoucherResult& result, const std::function<std::optional<Refusal>()>& save,
                       const std::function<Refusal(const Error&)>& explain) {
    before_.clear();
    const VoucherKey key = result.key;
    bool changed = false;
    const auto saveAndNote = [&]() -> std::optional<Refusal> {
        auto refusal = save();
        if (refusal) {
            return refusal;
        }
        if (before_.empty() && keep_ && !everyRow_) { // every row is new; no further query is needed
            changed = result.rows > 0;
        } else {
            const auto after = readRowImages(connection_, key);
            changed = !sameRows(before_, after, false);
            result.changes = compareRows(before_, after);
        }
        if (changed && log_ != nullptr) {
            log_->noteAfter(key);
        }
        return std::nullopt;
    };
    const auto kept = [&] { return keep_ && changed; };
    result.refusal = saveInTransaction(connection_, kept, saveAndNote, explain);
    if (result.refusal) {
        const auto refusal = std::move(result.refusal);
        result = VoucherResult();
        result.key = key;
        result.refusal = refusal;
    }
    if (log_ != nullptr) {
        log_->ended(kept() && !result.refusal);
    }
}

std::size_t Allotment::saveAll(const std::vector<VoucherHead>& vouchers, const SaveOne& save,
                               const std::function<bool()>& stopRequested,
                               const std::function<void(const VoucherResult&)>& take) {
    std::size_t done = 0;
    for (const VoucherHead& voucher : vouchers) {
        if (stopRequested()) {
            break;
        }
        const VoucherResult result = save(voucher.key);
        ++done;
        take(result);
    }
    return done;
}

} // namespace z7::cashflow::workbench
