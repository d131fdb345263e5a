#include "host/report/openReport.h"

#include "host/cli/jsonText.h"
#include "host/text/HostText.h"
#include "host/text/refusalText.h"
#include "workbench/vouchers/openLineColumns.h"
#include "z7cashflow/support/conversions.h"

#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

namespace {

using namespace workbench;
using nlohmann::ordered_json;
using Kind = Finding::Kind;

HostText lackText(Kind kind) {
    switch (kind) {
    case Kind::voucherGone:
        return HostText::lackVoucherGone;
    case Kind::dateMissing:
        return HostText::lackDateMissing;
    case Kind::dateOutside:
        return HostText::lackDateOutside;
    case Kind::amountMissing:
        return HostText::lackAmount;
    case Kind::itemUnknown:
        return HostText::lackItem;
    case Kind::accountUnknown:
        return HostText::lackAccount;
    case Kind::noTemplate:
        return HostText::lackTemplate;
    case Kind::lineWithoutRow:
        return HostText::lackRow;
    case Kind::accountNotInYear:
        return HostText::lackAccountNotInYear;
    case Kind::accountClosed:
        return HostText::lackAccountClosed;
    case Kind::accountNotEnd:
        return HostText::lackAccountNotEnd;
    case Kind::rowWithoutLine:
        return HostText::lackRowWithoutLine;
    case Kind::rowOnOther:
        return HostText::lackRowOnOther;
    case Kind::rowsDoubled:
        return HostText::lackRowsDoubled;
    case Kind::notStoredYet:
        return HostText::lackNotStored;
    case Kind::newRowsMatch:
        return HostText::lackNewRowsMatch;
    case Kind::heldElsewhere:
        return HostText::lackHeldElsewhere;
    case Kind::sumsDiffer:
        return HostText::lackSums;
    case Kind::rowsNotFound:
    case Kind::noLedgerVoucher:
    case Kind::noRowsDocument: // these concern documents, wishes and undone runs, not stored rows
    case Kind::otherVoucher:
    case Kind::changedSince:
    case Kind::lineMissing:
    case Kind::amountExceedsLine:
    case Kind::restWithoutItem:
        break;
    }
    return HostText::lackReadable;
}

std::string sideText(bool debit, Language language) {
    return hostText(language, debit ? HostText::debit : HostText::credit);
}

std::string_view sideWord(bool debit) { return debit ? openLineColumns::debit : openLineColumns::credit; }

std::string dateOf(const VoucherHead& head) { return head.date == Date::none() ? std::string() : dayText(head.date); }

} // namespace

ReportTable openTable(const std::vector<UnsettledVoucher>& vouchers, const VoucherKinds& kinds, Language language) {
    ReportTable table({{hostText(language, HostText::voucher)},
                       {hostText(language, HostText::date)},
                       {hostText(language, HostText::summary), false, true},
                       {hostText(language, HostText::cashSum), true},
                       {hostText(language, HostText::allocated), true},
                       {hostText(language, HostText::difference), true},
                       {hostText(language, HostText::message)}});
    for (const UnsettledVoucher& voucher : vouchers) {
        table.add({kinds.keyText(voucher.head.key), dateOf(voucher.head), voucher.head.summary, voucher.cash,
                   voucher.rows, voucher.difference(), refusalText(language, voucher.refusal)});
    }
    return table;
}

std::string openTotal(const std::vector<UnsettledVoucher>& vouchers, Language language) {
    if (vouchers.empty()) {
        return hostText(language, HostText::openNone);
    }
    Amount difference;
    for (const UnsettledVoucher& voucher : vouchers) {
        difference += voucher.difference();
    }
    return hostText(language, HostText::openTotal, {std::to_string(vouchers.size()), difference.text()});
}

ordered_json openJson(const UnsettledVoucher& voucher, const VoucherKinds& kinds, Language language) {
    const VoucherHead& head = voucher.head;
    return {{"voucher", voucherKeyText(head.key)},
            {"sign", kinds.sign(head.key.kind)},
            {"date", head.date == Date::none() ? ordered_json() : ordered_json(dayText(head.date))},
            {"summary", head.summary},
            {"cash", voucher.cash.value()},
            {"rows", voucher.rows.value()},
            {"difference", voucher.difference().value()},
            {"error", errorJson(voucher.refusal, language)}};
}

ReportTable groupTable(const OpenSummary& summary, const VoucherKinds& kinds, Language language) {
    ReportTable table({{hostText(language, HostText::account)},
                       {hostText(language, HostText::side)},
                       {hostText(language, HostText::message)},
                       {hostText(language, HostText::vouchers), true},
                       {hostText(language, HostText::amount), true},
                       {hostText(language, HostText::firstVoucher)}});
    for (const OpenGroup& group : summary.groups()) {
        const std::string reason = group.kind ? hostText(language, lackText(*group.kind), {group.item})
                                              : hostText(language, HostText::lackError, {std::to_string(group.number)});
        table.add({group.account, group.debit ? sideText(*group.debit, language) : std::string(), reason,
                   std::to_string(group.vouchers), group.amount, kinds.keyText(group.first)});
    }
    table.add({hostText(language, HostText::total), "", "", std::to_string(summary.vouchers()), "", ""});
    return table;
}

ordered_json groupJson(const OpenGroup& group, const VoucherKinds& kinds) {
    ordered_json json = ordered_json::object();
    if (group.kind) {
        json["kind"] = findingWord(*group.kind);
    } else {
        json["number"] = group.number;
    }
    if (!group.account.empty()) {
        json["account"] = group.account;
    }
    if (group.debit) {
        json["side"] = sideWord(*group.debit);
    }
    if (!group.item.empty()) {
        json["item"] = group.item;
    }
    json["vouchers"] = group.vouchers;
    json["amount"] = group.amount.value();
    json["first"] = voucherKeyText(group.first);
    json["sign"] = kinds.sign(group.first.kind);
    return json;
}

ReportTable lineTable(const std::vector<OpenLine>& lines, const VoucherKinds& kinds, Language language) {
    ReportTable table({{hostText(language, HostText::voucher)},
                       {hostText(language, HostText::line), true},
                       {hostText(language, HostText::account)},
                       {hostText(language, HostText::side)},
                       {hostText(language, HostText::amount), true},
                       {hostText(language, HostText::summary), false, true},
                       {hostText(language, HostText::proposedItem)},
                       {hostText(language, HostText::itemName), false, true}});
    for (const OpenLine& line : lines) {
        table.add({kinds.keyText(line.voucher), std::to_string(line.line), line.account, sideText(line.debit, language),
                   line.amount, line.summary, line.item, line.itemName});
    }
    return table;
}

ReportTable lineList(const std::vector<OpenLine>& lines, const VoucherKinds& kinds) {
    std::vector<ReportTable::Column> columns;
    columns.reserve(openLineColumns::all.size());
    for (const std::string_view name : openLineColumns::all) {
        columns.push_back({std::string(name), name == openLineColumns::amount});
    }
    ReportTable table(std::move(columns));
    for (const OpenLine& line : lines) {
        table.add({kinds.keyText(line.voucher), std::to_string(line.line), line.account,
                   std::string(sideWord(line.debit)), line.amount, line.summary, line.item});
    }
    return table;
}

ordered_json lineJson(const OpenLine& line, const VoucherKinds& kinds) {
    return {{"voucher", voucherKeyText(line.voucher)},
            {"sign", kinds.sign(line.voucher.kind)},
            {"line", line.line},
            {"account", line.account},
            {"side", sideWord(line.debit)},
            {"amount", line.amount.value()},
            {"summary", line.summary},
            {"item", line.item},
            {"itemName", line.itemName}};
}

} // namespace z7::cashflow::host
