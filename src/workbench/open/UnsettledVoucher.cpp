#include "workbench/open/UnsettledVoucher.h"

#include "workbench/statement/CashFlowStatement.h"
#include "workbench/vouchers/databaseFailure.h"

#include <map>
#include <tuple>
#include <utility>

namespace z7::cashflow::workbench {

namespace {

using KeyOrder = std::tuple<std::uint8_t, std::int16_t, std::int32_t>;

KeyOrder orderOf(const VoucherKey& key) { return {key.period, key.kind, key.number}; }

Refusal sumsRefusal(const VoucherGap& gap) {
    Finding sums;
    sums.kind = Finding::Kind::sumsDiffer;
    sums.voucherSum = gap.cash.value();
    sums.rowsSum = gap.rows.value();
    return ownRefusal(errors::sumsDiffer, {sums});
}

Refusal goneRefusal() { return ownRefusal(errors::noVoucherDateForSave, {Finding{}}); }

} // namespace

Verdict standingOf(Judge& judge, const VoucherKey& key) {
    Verdict verdict;
    try {
        verdict = judge.standing(judge.read(key));
    } catch (const Error& error) {
        if (isDatabaseFailure(error)) {
            throw;
        }
        verdict.refusal = Refusal{error, {}};
    }
    return verdict;
}

std::vector<UnsettledVoucher> findUnsettled(Connection& connection, Judge& judge,
                                            const std::vector<VoucherHead>& vouchers, std::int16_t year,
                                            const std::optional<PeriodRange>& periods) {
    const PeriodRange range = periods.value_or(PeriodRange{});
    std::map<KeyOrder, VoucherGap> gaps;
    for (VoucherGap& gap : findGaps(connection, year, range.first, range.last)) {
        gaps.emplace(KeyOrder{gap.period, gap.kind, gap.number}, gap);
    }
    std::vector<UnsettledVoucher> unsettled;
    for (const VoucherHead& head : vouchers) {
        const auto gap = gaps.find(orderOf(head.key));
        Verdict verdict = standingOf(judge, head.key);
        if (verdict.refusal || gap != gaps.end()) {
            const Amount cash = Amount::of(verdict.cashSum.value_or(0.0));
            UnsettledVoucher voucher{head, verdict.refusal ? std::move(*verdict.refusal) : sumsRefusal(gap->second),
                                     verdict.kind != Verdict::Kind::unworkable, cash, cash};
            if (gap != gaps.end()) {
                voucher.cash = gap->second.cash;
                voucher.rows = gap->second.rows;
                gaps.erase(gap);
            }
            unsettled.push_back(std::move(voucher));
        }
    }
    for (const auto& [key, gap] : gaps) {
        const VoucherHead head{{year, gap.period, gap.kind, gap.number}, Date::none(), {}};
        unsettled.push_back({head, goneRefusal(), false, gap.cash, gap.rows});
    }
    return unsettled;
}

} // namespace z7::cashflow::workbench
