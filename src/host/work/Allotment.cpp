#include "host/work/Allotment.h"

#include "z7cashflow/model/modPublic.h"

namespace z7::cashflow::host {

VoucherResult Allotment::allot(const VoucherHead& voucher) {
    const VoucherKey& key = voucher.key;
    VoucherResult result{key, Outcome::refused, 0, std::nullopt};
    modPublic::SetIYear(key.year); // the year of the voucher before this one must not reach it
    std::shared_ptr<CashFlowCollection> rows;
    result.refusal = saveInTransaction(connection_, keep_, [&] {
        provider_.SaveCashFlowColEx(connection_, voucherTable, key.period, key.kind, key.number, voucher.date, &rows);
    });
    if (!result.refusal) {
        result.rows = rows ? rows->Count() : 0;
        result.outcome = !rows ? Outcome::noCash : result.rows == 0 ? Outcome::nothing : Outcome::stored;
    }
    return result;
}

std::size_t Allotment::allotAll(const std::vector<VoucherHead>& vouchers, const std::function<bool()>& stopRequested,
                                const std::function<void(const VoucherResult&)>& take) {
    std::size_t done = 0;
    for (const VoucherHead& voucher : vouchers) {
        if (stopRequested()) {
            break;
        }
        const VoucherResult result = allot(voucher);
        ++done;
        take(result);
    }
    return done;
}

} // namespace z7::cashflow::host
