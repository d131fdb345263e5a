#include "workbench/vouchers/Voucher.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>

namespace z7::cashflow::workbench {

namespace {

constexpr const char* governmentSystem = "政府会计制度";
constexpr const char* budgetClass = "预算类会计科目";

std::string keyCondition(const VoucherKey& key, const std::string& alias) {
    return alias + "iyear=" + std::to_string(key.year) + " and " + alias + "iperiod=" + std::to_string(key.period) +
           " and " + alias + "isignseq=" + std::to_string(key.kind) + " and " + alias +
           "ino_id=" + std::to_string(key.number);
}

bool isTrue(const Variant& value) { return !value.isNull() && toBool(value); }

std::optional<double> amountOf(const Variant& value) {
    return value.isNull() ? std::nullopt : std::optional(toDouble(value));
}

VoucherLine::Account stateOf(const FieldList& fields, bool withoutBudget) {
    using Account = VoucherLine::Account;
    if (fields.Item("known").isNull()) {
        return Account::missing;
    }
    if (!isTrue(fields.Item("bend"))) {
        return Account::notEnd;
    }
    if (fields.Item("bclose").isNull() || toBool(fields.Item("bclose"))) {
        return Account::closed;
    }
    const Variant kind = fields.Item("cUserDefineType");
    return withoutBudget && (kind.isNull() || toText(kind) == budgetClass) ? Account::budget : Account::counts;
}

VoucherLine lineOf(const FieldList& fields, bool withoutBudget) {
    VoucherLine line;
    line.number = fields.Item("inid").isNull() ? 0 : toInt32(fields.Item("inid"));
    line.account = toTextOrEmpty(fields.Item("ccode"));
    line.accountName = toTextOrEmpty(fields.Item("ccode_name"));
    line.summary = toTextOrEmpty(fields.Item("cdigest"));
    const Variant date = fields.Item("dbill_date");
    line.date = date.isNull() ? std::nullopt : std::optional(toDate(date));
    line.debit = amountOf(fields.Item("md"));
    line.credit = amountOf(fields.Item("mc"));
    line.itemClass = toTextOrEmpty(fields.Item("citem_class"));
    line.auxiliaryItem = toTextOrEmpty(fields.Item("citem_id"));
    line.cash = isTrue(fields.Item("bCashItem"));
    line.state = stateOf(fields, withoutBudget);
    return line;
}

} // namespace

const VoucherLine* Voucher::line(std::int32_t number) const {
    const auto found =
        std::find_if(lines.begin(), lines.end(), [number](const VoucherLine& line) { return line.number == number; });
    return found == lines.end() ? nullptr : &*found;
}

Voucher readVoucher(Connection& connection, const VoucherKey& key, const std::string& accountingSystem) {
    const auto records = connection.Execute(
        "select v.inid,v.dbill_date,v.ccode,v.md,v.mc,v.citem_class,v.citem_id,c.ccode as known,c.bCashItem,c.bend,"
        "c.bclose,c.cUserDefineType,c.ccode_name,v.cdigest from gl_accvouch as v left join code as c on c.iyear=v.iyear and c.ccode=v.ccode "
        "where " +
        keyCondition(key, "v.") + " order by v.inid");
    const bool withoutBudget = accountingSystem.starts_with(governmentSystem);
    Voucher voucher{key, Date::none(), {}};
    for (; !records->atEnd(); records->MoveNext()) {
        VoucherLine line = lineOf(records->Fields(), withoutBudget);
        if (voucher.date == Date::none()) {
            voucher.date = line.date.value_or(Date::none());
        }
        voucher.lines.push_back(std::move(line));
    }
    return voucher;
}

void lockVoucher(Connection& connection, const VoucherKey& key) {
    connection.Execute("update gl_accvouch set cdigest=cdigest where " + keyCondition(key, ""));
}

std::vector<StoredRow> readStoredRows(Connection& connection, const VoucherKey& key) {
    const auto records = connection.Execute(
        "select t.inid,t.ccode,t.cCashItem,t.md,t.mc,i.citemcode as knownItem,i.citemname,c.ccode as knownAccount from "
        "gl_cashtable as t left join fitemss98 as i on i.citemcode=t.cCashItem left join code as c on "
        "c.iyear=t.iyear and c.ccode=t.ccode where " +
        keyCondition(key, "t.") + " order by t.inid,t.cCashItem,t.md,t.mc");
    std::vector<StoredRow> rows;
    for (; !records->atEnd(); records->MoveNext()) {
        const FieldList& fields = records->Fields();
        StoredRow row;
        row.line = fields.Item("inid").isNull() ? 0 : toInt32(fields.Item("inid"));
        row.account = toTextOrEmpty(fields.Item("ccode"));
        row.item = toTextOrEmpty(fields.Item("cCashItem"));
        row.itemName = toTextOrEmpty(fields.Item("citemname"));
        row.debit = amountOf(fields.Item("md")).value_or(0.0);
        row.credit = amountOf(fields.Item("mc")).value_or(0.0);
        row.itemKnown = !fields.Item("knownItem").isNull();
        row.accountKnown = !fields.Item("knownAccount").isNull();
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace z7::cashflow::workbench
