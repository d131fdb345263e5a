#include "workbench/vouchers/Allotment.h"

#include "workbench/vouchers/Transaction.h"
#include "workbench/vouchers/rowsDocument.h"
#include "z7cashflow/model/modPublic.h"

namespace z7::cashflow::workbench {

namespace {

std::int32_t countOf(const std::vector<StoredRow>& rows) { return static_cast<std::int32_t>(rows.size()); }

} // namespace

VoucherResult Allotment::allot(const VoucherKey& key, Judge::Rows rows) {
    VoucherResult result{key, Outcome::refused, 0, 0, std::nullopt, std::nullopt};
    Voucher voucher{key, Date::none(), {}};
    const bool handedIn = rows != nullptr;
    RowsOrigin origin = handedIn ? RowsOrigin::document : RowsOrigin::generated;
    const auto save = [&]() -> std::optional<Refusal> {
        lockVoucher(connection_, key);
        voucher = judge_.read(key);
        if (auto refusal = judge_.unworkable(voucher)) {
            return refusal;
        }
        const auto before = readStoredRows(connection_, key);
        if (auto refusal = handedIn ? std::nullopt : Judge::hidden(before)) {
            return refusal;
        }
        if (!handedIn && !before.empty()) {
            origin = RowsOrigin::stored;
        }
        modPublic::SetIYear(key.year); // the year of the voucher before this one must not reach it
        gl_.SaveCashFlowColEx(connection_, voucherTable, key.period, key.kind, key.number, voucher.date, &rows);
        if (!rows) {
            return std::nullopt;
        }
        result.removed = countOf(before);
        return judge_.readBack(voucher, *rows, origin);
    };
    result.refusal = saveInTransaction(
        connection_, keep_, save, [&](const Error& error) { return judge_.explained(error, voucher, rows, origin); });
    if (!result.refusal) {
        result.rows = rows ? rows->Count() : 0;
        result.outcome = !rows ? Outcome::noCash : result.rows == 0 ? Outcome::nothing : Outcome::stored;
    }
    return result;
}

VoucherResult Allotment::take(const VoucherKey& key, const std::string& document, bool force) {
    VoucherResult result{key, Outcome::refused, 0, 0, std::nullopt, std::nullopt};
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
    result.refusal = saveInTransaction(connection_, keep_, save, [&](const Error& error) {
        return judge_.explained(error, voucher, rows, RowsOrigin::document);
    });
    if (result.refusal) {
        result = {key, Outcome::refused, 0, 0, result.refusal, std::nullopt};
    }
    return result;
}

std::optional<Refusal> Allotment::store(const Voucher& voucher, std::string document, Judge::Rows rows,
                                        VoucherResult& result) {
    const VoucherKey& key = voucher.key;
    modPublic::SetIYear(key.year);
    const bool cash = data_.HaveCashFlowCodeInVoucher(connection_, voucherTable, key.period, key.kind, key.number);
    const auto before = readStoredRows(connection_, key);
    bool checkSum = true; // the account option bXJLL takes its place
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

std::size_t Allotment::allotAll(const std::vector<VoucherHead>& vouchers, const std::function<bool()>& stopRequested,
                                const std::function<void(const VoucherResult&)>& take) {
    std::size_t done = 0;
    for (const VoucherHead& voucher : vouchers) {
        if (stopRequested()) {
            break;
        }
        const VoucherResult result = allot(voucher.key);
        ++done;
        take(result);
    }
    return done;
}

} // namespace z7::cashflow::workbench
