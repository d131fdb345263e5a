#include "providers/ledgerStatements.h"

#include "z7cashflow/statements/itemStatements.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/statements/voucherStatements.h"

#include <initializer_list>
#include <iterator>
#include <sstream>

namespace z7::cashflow::test::ledger {

namespace {

constexpr auto asGiven = statements::LiteralPolicy::asGiven;
constexpr VoucherKey key{1, 2, 5};

// The columns that a voucher table can provide for a row: all stored ones except identity, item and date.
statements::ColumnList columns(bool keyed, bool byOutsideKey) {
    statements::ColumnList list(asGiven, "");
    const auto add = [&](const std::string& names) {
        std::istringstream words(names);
        for (std::istream_iterator<std::string> word(words), end; word != end; ++word) {
            list.add(*word);
        }
    };
    list.addOfAccount("iYear");
    add(keyed ? "iPeriod iSignSeq csign iNo_id inid md mc" : "inid md mc");
    list.addOfAccount("ccode");
    add("md_f mc_f nd_s nc_s cdept_id cperson_id ccus_id csup_id citem_class citem_id");
    add(byOutsideKey ? "ccashitem_id" : "");
    add("cDefine1 cDefine2 cDefine3 cDefine4 cDefine5 cDefine6 cDefine7 cDefine8 cDefine9 cDefine10 cDefine11 "
        "cDefine12 cDefine13 cDefine14 cDefine15 cDefine16");
    return list;
}

} // namespace

std::string option(const std::string& name) { return statements::accountOption.fill(asGiven, "GL", name); }

std::string period(const std::string& date) { return statements::accountingPeriod.fill(asGiven, "001", date, date); }

std::string haveCash(const std::string& table, const std::string& year) {
    return statements::cashLine.fill(asGiven, table, key, year);
}

std::string lines(const std::string& table, const std::string& year, const std::string& number) {
    return statements::voucherLines.fill(asGiven, columns(true, false), table, year,
                                         {key.period, key.kind, std::stoi(number)});
}

std::string keylessLines(const std::string& table) {
    return statements::keylessVoucherLines.fill(asGiven, columns(false, false), table, 2013);
}

std::string kind() { return statements::voucherKind.fill(asGiven, key.kind); }

std::string storedRows(const std::string& year) { return statements::storedRows.fill(asGiven, year, key); }

std::string itemName(const std::string& code) { return statements::itemName.fill(asGiven, code); }

std::string itemTemplate(const std::string& account, bool bDir, const std::string& year) {
    return statements::itemTemplate.fill(asGiven, year, account, bDir);
}

std::string cashSum(const std::string& table, const std::string& year) {
    return statements::cashSum.fill(asGiven, table, year, key);
}

std::string isCash(const std::string& account, const std::string& year) {
    return statements::cashAccount.fill(asGiven, year, account);
}

std::string voucherDate(const std::string& table) { return statements::voucherDate.fill(asGiven, table, key); }

std::string deleteRows(const std::string& number) {
    return statements::deleteRows.fill(asGiven, {key.period, key.kind, std::stoi(number)});
}

std::string deleteRowsOfFreeNumber(std::int32_t number) {
    const VoucherKey former{key.period, key.kind, number};
    return statements::deleteRowsOfFreeNumber.fill(asGiven, former, former);
}

std::string countLines(std::int32_t number) {
    return statements::countLines.fill(asGiven, {key.period, key.kind, number});
}

std::string currencyNames(const std::string& year) { return statements::takeCurrencyNames.fill(asGiven, key, year); }

std::string insertRow(const CashFlowCollection& collection, std::int32_t index, const std::string& table) {
    return collection.Item(index)->InsertSql(table, collection.CFStruct());
}

std::string outsideHaveCash(const std::string& table) {
    return statements::keylessOutsideCashLine.fill(asGiven, table, "OUT", 2013);
}

std::string outsideKey(const std::string& year) { return statements::ledgerVoucherOf.fill(asGiven, year, "OUT"); }

std::string outsideLines(const std::string& table) {
    return statements::keylessOutsideVoucherLines.fill(asGiven, columns(false, true), table, 2013, "OUT");
}

std::string outsideSum(const std::string& table) { return statements::outsideCashSum.fill(asGiven, table, "OUT"); }

} // namespace z7::cashflow::test::ledger
