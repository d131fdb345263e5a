#include "workbench/vouchers/Judge.h"

#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>

namespace z7::cashflow::workbench {

namespace {

constexpr std::int32_t accountingSystemCode = 117;

Finding findingOf(Finding::Kind kind, std::int32_t line = 0, const std::string& account = {}) {
    Finding finding;
    finding.kind = kind;
    finding.line = line;
    finding.account = account;
    return finding;
}

} // namespace

Voucher Judge::read(const VoucherKey& key) {
    return readVoucher(connection_, key, toTextOrEmpty(modPublic::requiredLogin().information(accountingSystemCode)));
}

std::int32_t Judge::yearOf(Date date) {
    const auto known = years_.find(date.dayNumber());
    if (known != years_.end()) {
        return known->second;
    }
    const std::string text = data_.DateToYearPeriod(connection_, date);
    const std::int32_t year = toInt32(Variant(text.substr(0, text.size() - 2))); // the last two digits are the period
    years_.emplace(date.dayNumber(), year);
    return year;
}

std::optional<Refusal> Judge::outsideYear(const Voucher& voucher) {
    using Kind = Finding::Kind;
    if (voucher.lines.empty()) {
        return ownRefusal(errors::noVoucherDateForSave, {findingOf(Kind::voucherGone)});
    }
    if (voucher.date == Date::none()) {
        return ownRefusal(errors::dateOutsideYear, {findingOf(Kind::dateMissing)});
    }
    for (const VoucherLine& line : voucher.lines) {
        if (line.date && yearOf(*line.date) != voucher.key.year) {
            Finding outside = findingOf(Kind::dateOutside, line.number, line.account);
            outside.date = *line.date;
            outside.year = voucher.key.year;
            return ownRefusal(errors::dateOutsideYear, {outside});
        }
    }
    return std::nullopt;
}

std::optional<Refusal> Judge::unworkable(const Voucher& voucher) {
    if (auto refusal = outsideYear(voucher)) {
        return refusal;
    }
    auto missing = missingAmounts(voucher, false);
    return missing.empty() ? std::nullopt : std::optional(ownRefusal(errors::invalidNull, std::move(missing)));
}

// The missing amounts of cash lines, or of all lines. Without them the library cannot add up the voucher's cash.
std::vector<Finding> Judge::missingAmounts(const Voucher& voucher, bool all) {
    std::vector<Finding> missing;
    for (const VoucherLine& line : voucher.lines) {
        for (const bool debit : {true, false}) {
            const bool counts = line.state == VoucherLine::Account::counts && (line.cash || all);
            if (counts && !(debit ? line.debit : line.credit)) {
                Finding finding = findingOf(Finding::Kind::amountMissing, line.number, line.account);
                finding.debit = debit;
                missing.push_back(std::move(finding));
            }
        }
    }
    return missing;
}

void Judge::enterYear(const Voucher& voucher) const { modPublic::SetIYear(voucher.key.year); }

Judge::Rows Judge::storedRows(const Voucher& voucher) {
    const VoucherKey& key = voucher.key;
    enterYear(voucher);
    return gl_.GetCashFlowColFromDB(connection_, voucherTable, key.period, key.kind, key.number, voucher.date);
}

Judge::Rows Judge::generatedRows(const Voucher& voucher) {
    const VoucherKey& key = voucher.key;
    enterYear(voucher);
    return gl_.CreateCashFlowColFromDB(connection_, voucherTable, key.period, key.kind, key.number, voucher.date);
}

double Judge::cashSum(const VoucherKey& key) {
    return data_.GetCashSumInVoucher(connection_, voucherTable, key.period, key.kind, key.number);
}

Verdict Judge::compare(const Voucher& voucher, Rows rows, RowsOrigin origin) {
    const VoucherKey& key = voucher.key;
    if (!rows) {
        rows = CashFlowCollection::Create();
    }
    enterYear(voucher);
    rows->UpdateCol(key.period, key.kind, key.number, voucher.date);
    rows->VoucherTable(voucherTable);
    Verdict verdict;
    verdict.rows = rows->Count();
    verdict.cashSum = cashSum(key);
    if (verdict.rows == 0 &&
        !data_.HaveCashFlowCodeInVoucher(connection_, voucherTable, key.period, key.kind, key.number)) {
        verdict.kind = Verdict::Kind::noCash;
        return verdict;
    }
    std::string reason;
    if (gl_.CheckCFColFromDB(connection_, voucherTable, key.period, key.kind, key.number, rows, &reason)) {
        verdict.kind = verdict.rows == 0 ? Verdict::Kind::nothing : Verdict::Kind::matched;
        return verdict;
    }
    const bool placed = gl_.CheckKmFrom(connection_, rows, nullptr);
    verdict.kind = Verdict::Kind::unmatched;
    verdict.refusal =
        explained(Error(placed ? errors::sumsDiffer : errors::rowsDoNotFit, "CashFlow", reason), voucher, rows, origin);
    return verdict;
}

Verdict Judge::standing(const Voucher& voucher) {
    Verdict verdict;
    verdict.refusal = unworkable(voucher);
    if (!verdict.refusal) {
        enterYear(voucher);
        const auto rows = readStoredRows(connection_, voucher.key);
        verdict.refusal = hidden(rows);
        if (!verdict.refusal) {
            return compare(voucher, rows.empty() ? nullptr : storedRows(voucher), RowsOrigin::stored);
        }
        verdict.kind = Verdict::Kind::unmatched;
        verdict.cashSum = cashSum(voucher.key);
        verdict.rows = static_cast<std::int32_t>(rows.size());
    }
    return verdict;
}

} // namespace z7::cashflow::workbench
