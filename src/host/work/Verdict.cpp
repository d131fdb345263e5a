#include "host/work/Verdict.h"

#include "z7cashflow/model/modPublic.h"

namespace z7::cashflow::host {

std::shared_ptr<CashFlowCollection> storedRows(Session& session, const VoucherHead& voucher) {
    const VoucherKey& key = voucher.key;
    modPublic::SetIYear(key.year);
    return session.provider().Gl().GetCashFlowColFromDB(session.guarded(), voucherTable, key.period, key.kind,
                                                        key.number, voucher.date);
}

std::shared_ptr<CashFlowCollection> generatedRows(Session& session, const VoucherHead& voucher) {
    const VoucherKey& key = voucher.key;
    modPublic::SetIYear(key.year);
    return session.provider().Gl().CreateCashFlowColFromDB(session.guarded(), voucherTable, key.period, key.kind,
                                                           key.number, voucher.date);
}

Verdict judge(Session& session, const VoucherHead& voucher, std::shared_ptr<CashFlowCollection> rows) {
    const VoucherKey& key = voucher.key;
    if (!rows) {
        rows = session.provider().CreateCashFlowCollection();
    }
    rows->UpdateCol(key.period, key.kind, key.number, voucher.date);
    const bool none = rows->Count() == 0;
    if (none &&
        !session.data().HaveCashFlowCodeInVoucher(session.guarded(), voucherTable, key.period, key.kind, key.number)) {
        return {Verdict::Kind::noCash, {}};
    }
    std::string reason;
    if (!session.provider().Gl().CheckCFColFromDB(session.guarded(), voucherTable, key.period, key.kind, key.number,
                                                  rows, &reason)) {
        return {Verdict::Kind::refused, reason};
    }
    return {none ? Verdict::Kind::nothing : Verdict::Kind::meets, {}};
}

HostText savedText(Outcome outcome) noexcept {
    return outcome == Outcome::stored   ? HostText::savedRows
           : outcome == Outcome::noCash ? HostText::savedNoCash
                                        : HostText::savedNothing;
}

std::string verdictText(Language language, const Verdict& verdict) {
    switch (verdict.kind) {
    case Verdict::Kind::meets:
        return hostText(language, HostText::verdictMeets);
    case Verdict::Kind::nothing:
        return hostText(language, HostText::verdictNothing);
    case Verdict::Kind::noCash:
        return hostText(language, HostText::verdictNoCash);
    case Verdict::Kind::refused:
        break;
    }
    return hostText(language, HostText::verdictRefused, {reasonText(language, verdict.reason)});
}

} // namespace z7::cashflow::host
