#include "host/Verdict.h"

#include "z7cashflow/model/modPublic.h"

namespace z7::cashflow::host {

std::shared_ptr<CashFlowCollection> storedRows(Session& session, const VoucherHead& voucher) {
    const VoucherKey& key = voucher.key;
    modPublic::SetIYear(key.year);
    return session.provider().Gl().GetCashFlowColFromDB(session.connection(), voucherTable, key.period, key.kind,
                                                        key.number, voucher.date);
}

std::shared_ptr<CashFlowCollection> generatedRows(Session& session, const VoucherHead& voucher) {
    const VoucherKey& key = voucher.key;
    modPublic::SetIYear(key.year);
    return session.provider().Gl().CreateCashFlowColFromDB(session.connection(), voucherTable, key.period, key.kind,
                                                           key.number, voucher.date);
}

Verdict judge(Session& session, const VoucherHead& voucher, std::shared_ptr<CashFlowCollection> rows) {
    const VoucherKey& key = voucher.key;
    if (!rows) {
        rows = session.provider().CreateCashFlowCollection();
    }
    rows->UpdateCol(key.period, key.kind, key.number, voucher.date);
    const bool none = rows->Count() == 0;
    if (none && !session.data().HaveCashFlowCodeInVoucher(session.connection(), voucherTable, key.period, key.kind,
                                                          key.number)) {
        return {Verdict::Kind::noCash, {}};
    }
    std::string reason;
    if (!session.provider().Gl().CheckCFColFromDB(session.connection(), voucherTable, key.period, key.kind, key.number,
                                                  rows, &reason)) {
        return {Verdict::Kind::refused, reason};
    }
    return {none ? Verdict::Kind::nothing : Verdict::Kind::meets, {}};
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

std::string reasonText(Language language, const std::string& reason) {
    const std::size_t lineBreak = reason.find("\r\n");
    if (lineBreak != std::string::npos) {
        return reason.substr(0, lineBreak) + (language == Language::chinese ? "；" : "; ") +
               reason.substr(lineBreak + 2);
    }
    const std::size_t firstTab = reason.find('\t');
    if (firstTab == std::string::npos) {
        return reason;
    }
    const std::size_t secondTab = reason.find('\t', firstTab + 1);
    const std::string line = reason.substr(firstTab + 1, secondTab - firstTab - 1);
    const std::string text = reason.substr(0, firstTab);
    return line.empty() ? text : hostText(language, HostText::reasonAtLine, {text, line});
}

} // namespace z7::cashflow::host
