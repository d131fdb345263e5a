#include "workbench/open/OpenLineFinder.h"

#include "workbench/forEachRecord.h"
#include "workbench/lists/accountLists.h"
#include "workbench/vouchers/databaseFailure.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"

#include <memory>

namespace z7::cashflow::workbench {

namespace {

/// A query for how often each item is used for an account and side. Rows whose item does not exist are not counted.
std::string usesOfItems(std::int16_t year) {
    return "select t.ccode,t.side,t.item,count(*) as uses from (select r.ccode,case when r.md<>0 then 1 else 0 end as "
           "side,i.citemcode as item from gl_cashtable r inner join fitemss98 i on i.citemcode=r.cCashItem where "
           "r.iyear=" +
           std::to_string(year) + ") t group by t.ccode,t.side,t.item order by t.ccode,t.side,t.item";
}

std::shared_ptr<CashFlowCollection> generated(Judge& judge, const Voucher& voucher) {
    std::shared_ptr<CashFlowCollection> rows;
    try {
        rows = judge.generatedRows(voucher);
    } catch (const Error& error) { // no proposals for a voucher whose rows cannot be generated
        if (isDatabaseFailure(error)) {
            throw;
        }
    }
    return rows;
}

} // namespace

OpenLineFinder::OpenLineFinder(Connection& connection, Judge& judge, std::int16_t year)
    : connection_(connection), judge_(judge) {
    for (ListedItem& item : listItems(connection)) {
        itemNames_.emplace(std::move(item.code), std::move(item.name));
    }
    std::map<std::pair<std::string, bool>, std::int32_t> most;
    forEachRecord(connection, usesOfItems(year), [&](const FieldList& fields) {
        const std::pair side{toTextOrEmpty(fields.Item("ccode")), toInt32(fields.Item("side")) != 0};
        const std::int32_t uses = toInt32(fields.Item("uses"));
        if (uses > most[side]) {
            most[side] = uses;
            usualItems_[side] = toTextOrEmpty(fields.Item("item"));
        }
    });
}

void OpenLineFinder::propose(OpenLine& line, const CashFlowCollection* generated) const {
    if (generated != nullptr) {
        for (const auto& row : *generated) {
            if (toTextOrEmpty(row->Item("inid")) == std::to_string(line.line)) {
                line.item = toTextOrEmpty(row->Item("cCashItem"));
            }
        }
    }
    if (line.item.empty()) {
        const auto usual = usualItems_.find({line.account, line.debit});
        line.item = usual == usualItems_.end() ? std::string() : usual->second;
    }
    const auto name = itemNames_.find(line.item);
    line.itemName = name == itemNames_.end() ? std::string() : name->second;
}

std::vector<OpenLine> OpenLineFinder::linesOf(const UnsettledVoucher& unsettled) {
    std::vector<OpenLine> lines;
    if (!unsettled.workable) {
        return lines;
    }
    const Voucher voucher = judge_.read(unsettled.head.key);
    const auto stored = readStoredRows(connection_, voucher.key);
    const auto newRows = generated(judge_, voucher);
    for (const VoucherLine& line : voucher.lines) {
        if (line.state != VoucherLine::Account::counts || line.cash != modPublic::context().bCashCode) {
            continue;
        }
        OpenLine open{voucher.key, line.number, line.account, line.isDebit(), Amount::of(line.amount()), line.summary,
                      {},          {}};
        for (const StoredRow& row : stored) {
            if (row.line == line.number && row.itemKnown && row.accountKnown) {
                open.amount -= Amount::of(open.debit ? row.debit : row.credit);
            }
        }
        if (!open.amount.isZero()) {
            propose(open, newRows.get());
            lines.push_back(std::move(open));
        }
    }
    return lines;
}

} // namespace z7::cashflow::workbench
