#include "workbench/changes/Assignment.h"

#include "workbench/changes/literal.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>

namespace z7::cashflow::workbench {

namespace {

using RowPointer = std::shared_ptr<CashFlow>;

Refusal refusalOf(int number, Finding::Kind kind, const VoucherLine& line, Amount amount) {
    Finding finding;
    finding.kind = kind;
    finding.line = line.number;
    finding.account = line.account;
    finding.debit = line.isDebit();
    finding.amount = amount.value();
    return ownRefusal(number, {finding});
}

std::vector<RowPointer> rowsOfLine(const CashFlowCollection& rows, std::int32_t line) {
    std::vector<RowPointer> found;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(found),
                 [line](const RowPointer& row) { return toTextOrEmpty(row->Item("inid")) == std::to_string(line); });
    return found;
}

std::vector<ItemPart> partsOf(const std::vector<RowPointer>& rows, bool debit) {
    std::vector<ItemPart> parts;
    for (const RowPointer& row : rows) {
        const std::string item = toTextOrEmpty(row->Item("cCashItem"));
        const Amount amount = Amount::of(row->Item(debit ? "md" : "mc"));
        if (!item.empty() && !amount.isZero()) {
            parts.push_back({item, amount});
        }
    }
    return parts;
}

/// The item that generation proposes for a line; empty if there is none.
std::string proposedItem(const CashFlowCollection& proposed, std::int32_t line) {
    for (const RowPointer& row : rowsOfLine(proposed, line)) {
        return toTextOrEmpty(row->Item("cCashItem"));
    }
    return {};
}

/// Splits a line into these parts: its rows are reused, one for each part, and those left over are removed.
void setParts(CashFlowCollection& rows, const VoucherLine& line, const std::vector<ItemPart>& parts) {
    std::vector<RowPointer> former = rowsOfLine(rows, line.number);
    for (const ItemPart& part : parts) {
        const auto same = std::find_if(former.begin(), former.end(), [&part](const RowPointer& row) {
            return toTextOrEmpty(row->Item("cCashItem")) == part.item;
        });
        const auto used = same != former.end() ? same : former.begin();
        const bool isNew = used == former.end();
        const RowPointer row = isNew ? rows.CreateCFObject() : *used;
        row->SetValue("inid", static_cast<std::int16_t>(line.number));
        row->SetValue("ccode", line.account);
        row->SetValue("cCashItem", part.item);
        row->SetValue("md", line.isDebit() ? part.amount.value() : 0.0);
        row->SetValue("mc", line.isDebit() ? 0.0 : part.amount.value());
        if (isNew) {
            rows.Add(row);
        } else {
            former.erase(used);
        }
    }
    for (const RowPointer& row : former) {
        rows.Remove(row->key());
    }
}

/// Fills in the items of generated rows without one: each takes the item of the first former row of its line that
/// has one.
void takeItems(const CashFlowCollection& former, CashFlowCollection& rows) {
    for (const RowPointer& row : rows) {
        if (!isNullOrEmpty(row->Item("cCashItem"))) {
            continue;
        }
        const std::string line = toTextOrEmpty(row->Item("inid"));
        const auto found = std::find_if(former.begin(), former.end(), [&line](const RowPointer& other) {
            return toTextOrEmpty(other->Item("inid")) == line && !isNullOrEmpty(other->Item("cCashItem"));
        });
        if (found != former.end()) {
            row->SetValue("cCashItem", (*found)->Item("cCashItem"));
        }
    }
}

void removeWithoutItem(CashFlowCollection& rows) {
    std::vector<std::string> keys;
    for (const RowPointer& row : rows) {
        if (isNullOrEmpty(row->Item("cCashItem"))) {
            keys.push_back(row->key());
        }
    }
    for (const std::string& key : keys) {
        rows.Remove(key);
    }
}

} // namespace

Judge::Rows Assignment::proposedRows(const Voucher& voucher) {
    Judge::Rows rows = judge_.generatedRows(voucher);
    if (!rows) {
        rows = CashFlowCollection::Create();
        rows->UpdateCol(voucher.key.period, voucher.key.kind, voucher.key.number, voucher.date);
    }
    return rows;
}

Judge::Rows Assignment::presentRows(const Voucher& voucher, bool stored) {
    Judge::Rows rows = stored ? judge_.storedRows(voucher) : nullptr;
    return rows ? rows : proposedRows(voucher);
}

bool Assignment::comparesSums() { return !connection_.Execute(filled(statements::sumCheckOption))->atEnd(); }

VoucherResult Assignment::assign(const VoucherKey& key, const std::vector<LineWish>& wishes,
                                 std::vector<LineRest>& rests) {
    const bool check = comparesSums();
    const auto make = [&](const Voucher& voucher, const std::vector<StoredRow>& before, Judge::Rows& rows,
                          RowsOrigin&) -> std::optional<Refusal> {
        rests.clear();
        if (auto refusal = Judge::hidden(before)) {
            return refusal;
        }
        const Judge::Rows proposed = proposedRows(voucher);
        rows = presentRows(voucher, !before.empty());
        for (const LineWish& wish : wishes) {
            const VoucherLine* line = voucher.line(wish.line);
            if (line == nullptr) {
                Finding missing;
                missing.kind = Finding::Kind::lineMissing;
                missing.line = wish.line;
                return ownRefusal(errors::cannotAssign, {missing});
            }
            const bool debit = line->isDebit();
            const LineSplit split = splitLine(partsOf(rowsOfLine(*rows, wish.line), debit), Amount::of(line->amount()),
                                              wish.items, proposedItem(*proposed, wish.line));
            if (split.fault == LineSplit::Fault::tooMuch) {
                return refusalOf(errors::cannotAssign, Finding::Kind::amountExceedsLine, *line,
                                 Amount::of(line->amount()));
            }
            if (split.fault == LineSplit::Fault::noItemLeft) {
                return refusalOf(errors::cannotAssign, Finding::Kind::restWithoutItem, *line, split.rest);
            }
            setParts(*rows, *line, split.parts);
            if (!split.rest.isZero()) {
                const auto first = static_cast<std::ptrdiff_t>(split.wished);
                rests.push_back({wish.line, {split.parts.begin() + first, split.parts.end()}});
            }
        }
        return std::nullopt;
    };
    return allotment_.change(key, make, check);
}

VoucherResult Assignment::regenerate(const VoucherKey& key, bool keepItems) {
    return allotment_.change(key,
                             [&](const Voucher& voucher, const std::vector<StoredRow>& before, Judge::Rows& rows,
                                 RowsOrigin& origin) -> std::optional<Refusal> {
                                 origin = RowsOrigin::generated;
                                 if (before.empty()) {
                                     return std::nullopt; // the library generates the rows
                                 }
                                 if (!keepItems) {
                                     rows = proposedRows(voucher);
                                     return std::nullopt;
                                 }
                                 if (auto refusal = Judge::hidden(before)) {
                                     return refusal;
                                 }
                                 const Judge::Rows former = judge_.storedRows(voucher);
                                 bool& showAll =
                                     modPublic::context().bAutoDisplay; // generates lines without an item, too
                                 const bool shown = std::exchange(showAll, true);
                                 try {
                                     rows = proposedRows(voucher);
                                 } catch (const Error&) {
                                     showAll = shown;
                                     throw;
                                 }
                                 showAll = shown;
                                 if (former) {
                                     takeItems(*former, *rows);
                                 }
                                 removeWithoutItem(*rows);
                                 return std::nullopt;
                             });
}

VoucherResult Assignment::reassign(const VoucherKey& key, const std::string& from, const std::string& to,
                                   const std::string& account) {
    return allotment_.change(
        key,
        [&](const Voucher& voucher, const std::vector<StoredRow>& before, Judge::Rows& rows,
            RowsOrigin& origin) -> std::optional<Refusal> {
            origin = RowsOrigin::stored;
            if (auto refusal = Judge::hidden(before)) {
                return refusal;
            }
            rows = presentRows(voucher, true);
            for (const RowPointer& row : *rows) {
                if (toTextOrEmpty(row->Item("cCashItem")) == from &&
                    (account.empty() || toTextOrEmpty(row->Item("ccode")) == account)) {
                    row->SetValue("cCashItem", to);
                }
            }
            return std::nullopt;
        },
        comparesSums());
}

std::vector<VoucherKey> vouchersWithItem(Connection& connection, std::int16_t year,
                                         const std::optional<PeriodRange>& periods, const std::string& item,
                                         const std::string& account) {
    std::string condition = "iYear=" + std::to_string(year) + " and cCashItem=" + literal(item);
    if (periods) {
        condition +=
            " and iPeriod>=" + std::to_string(periods->first) + " and iPeriod<=" + std::to_string(periods->last);
    }
    if (!account.empty()) {
        condition += " and ccode=" + literal(account);
    }
    const auto records = connection.Execute("select distinct iPeriod,iSignSeq,iNo_id from gl_cashtable where " +
                                            condition + " order by iPeriod,iSignSeq,iNo_id");
    std::vector<VoucherKey> keys;
    for (; !records->atEnd(); records->MoveNext()) {
        const FieldList& fields = records->Fields();
        keys.emplace_back(year, toByte(fields.Item("iPeriod")), toInt16(fields.Item("iSignSeq")),
                          toInt32(fields.Item("iNo_id")));
    }
    return keys;
}

} // namespace z7::cashflow::workbench
