#include "z7cashflow/data/DataProvider.h"

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/statements/voucherStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/format.h"
#include "z7cashflow/support/guid.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace z7::cashflow {

namespace {

constexpr int accountingSystemInformation = 117;
constexpr std::string_view governmentAccounting = "政府会计制度";
constexpr std::int32_t stopSign = 16;

// The year that the user logged in to, whatever year the voucher at hand has set.
std::string loginYear() { return modPublic::requiredLogin().accountingYear(); }

bool givesRecord(Connection& objCon, const std::string& statement) {
    const auto result = objCon.Execute(statement);
    const bool found = !result->atEnd();
    result->Close();
    return found;
}

// A read of voucher lines as far as the account's accounting system wants it.
std::string withinAccounts(std::string statement) {
    const std::string system = toTextOrEmpty(modPublic::requiredLogin().information(accountingSystemInformation));
    return system.starts_with(governmentAccounting) ? std::move(statement) + filled(statements::exceptBudgetAccounts)
                                                    : statement;
}

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isLeftOut(const std::string& name, bool byOutsideKey, bool keyed) {
    if (isOneOf(name, {"RowGuid", "cCashItem"})) {
        return true;
    }
    if (!keyed && isOneOf(name, {"iNo_id", "iSignSeq", "iPeriod", "csign"})) {
        return true;
    }
    if (name == "dbill_date") {
        return !(byOutsideKey && keyed);
    }
    return !byOutsideKey && asciiLower(name) == "ccashitem_id";
}

// The fields of a row as far as a voucher table can give them. Account and year come from the chart of accounts, which
// is what ties a keyless table to a year.
statements::ColumnList voucherColumns(bool byOutsideKey, bool keyed) {
    const auto shape = CashFlowCollection::Create();
    const CashFlowStruct& fields = shape->CFStruct();
    statements::ColumnList columns(modPublic::context().literalPolicy, statements::voucherLines.name());
    for (const std::string& name : fields.Fields()) {
        if (!fields.Item(name)->isSave || isLeftOut(name, byOutsideKey, keyed)) {
            continue;
        }
        if (name == "ccode" || asciiLower(name) == "iyear") {
            columns.addOfAccount(name);
        } else {
            columns.add(name);
        }
    }
    return columns;
}

} // namespace

std::shared_ptr<Recordset> DataProvider::GetCashTable(Connection& objCon, std::uint8_t iPeriod, std::int16_t iSignSeq,
                                                      std::int32_t iNo_id) {
    return GetCashTable(objCon, {iPeriod, iSignSeq, iNo_id});
}

std::shared_ptr<Recordset> DataProvider::GetCashTable(Connection& objCon, const VoucherKey& key) {
    constexpr std::int16_t emptySetState = 2;
    const bool emptySet = modPublic::context().VouchState == emptySetState;
    return objCon.Execute(
        filled(emptySet ? statements::noStoredRows : statements::storedRows, modPublic::GetIYear(), key));
}

std::shared_ptr<Recordset> DataProvider::GetCashTable2(Connection& objCon, const std::string& coutNo_id) {
    return GetCashTable(objCon, ledgerVoucherOf(objCon, {coutNo_id}).key);
}

std::shared_ptr<Recordset> DataProvider::GetVoucherTable(Connection& objCon, const std::string& strVoucherTable,
                                                         std::uint8_t iPeriod, std::int16_t iSignSeq,
                                                         std::int32_t iNo_id) {
    return GetVoucherTable(objCon, strVoucherTable, {iPeriod, iSignSeq, iNo_id});
}

std::shared_ptr<Recordset> DataProvider::GetVoucherTable(Connection& objCon, const std::string& strVoucherTable,
                                                         const VoucherKey& key) {
    const bool keyed = HaveVoucherKey(objCon, strVoucherTable);
    const statements::ColumnList columns = voucherColumns(false, keyed);
    const std::int16_t year = modPublic::GetIYear();
    return objCon.Execute(
        withinAccounts(keyed ? filled(statements::voucherLines, columns, strVoucherTable, year, key)
                             : filled(statements::keylessVoucherLines, columns, strVoucherTable, year)));
}

std::shared_ptr<Recordset> DataProvider::GetVoucherTable2(Connection& objCon, const std::string& strVoucherTable,
                                                          const std::string& coutNo_id) {
    const bool keyed = HaveVoucherKey(objCon, strVoucherTable);
    return objCon.Execute(
        withinAccounts(filled(keyed ? statements::outsideVoucherLines : statements::keylessOutsideVoucherLines,
                              voucherColumns(true, keyed), strVoucherTable, modPublic::GetIYear(), coutNo_id)));
}

bool DataProvider::CodeIsCashFlowKm(Connection& objCon, const std::string& ccode) {
    return givesRecord(objCon, filled(statements::cashAccount, modPublic::GetIYear(), ccode));
}

double DataProvider::GetCashSumInVoucher(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                         std::int16_t iSignSeq, std::int32_t iNo_id) {
    return GetCashSumInVoucher(objCon, strVoucherTable, {iPeriod, iSignSeq, iNo_id});
}

double DataProvider::GetCashSumInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                         const VoucherKey& key) {
    const std::int16_t year = modPublic::GetIYear();
    const auto result = objCon.Execute(HaveVoucherKey(objCon, strVoucherTable)
                                           ? filled(statements::cashSum, strVoucherTable, year, key)
                                           : filled(statements::keylessCashSum, strVoucherTable, year));
    const Variant sum = result->atEnd() ? Variant() : result->Fields().Item("mysum");
    result->Close();
    return toDouble(format(sum.isNull() ? Variant(0.0) : sum, "#.00"));
}

bool DataProvider::HaveVoucherKey(Connection& /*objCon*/, const std::string& strVoucherTable) {
    return isOneOf(asciiLower(strVoucherTable), {"gl_accvouch", "gl_v_accvouch"});
}

double DataProvider::GetCashSumInVoucher2(Connection& objCon, const std::string& strVoucherTable,
                                          const std::string& coutNo_id) {
    const auto result = objCon.Execute(filled(statements::outsideCashSum, strVoucherTable, coutNo_id));
    const double sum = result->atEnd() ? 0.0 : toDouble(result->Fields().Item("mysum"));
    result->Close();
    return sum;
}

void DataProvider::GetVoucherKeyFromOut_id(Connection& objCon, const std::string& coutNo_id, std::uint8_t& iPeriod,
                                           std::int16_t& iSignSeq, std::int32_t& iNo_id, Date& dbill_date) {
    const auto result = objCon.Execute(filled(statements::ledgerVoucherOf, modPublic::GetIYear(), coutNo_id));
    if (result->atEnd()) {
        iPeriod = 0;
        iSignSeq = 0;
        iNo_id = 0;
        dbill_date = Date::none();
    } else {
        FieldList& fields = result->Fields();
        iPeriod = toByte(fields.Item("iperiod"));
        iSignSeq = toInt16(fields.Item("isignseq"));
        iNo_id = toInt32(fields.Item("ino_id"));
        dbill_date = toDate(fields.Item("dbill_date"));
    }
    result->Close();
}

DatedVoucherKey DataProvider::ledgerVoucherOf(Connection& objCon, const OutsideKey& key) {
    DatedVoucherKey found;
    GetVoucherKeyFromOut_id(objCon, key.text, found.key.period, found.key.kind, found.key.number, found.date);
    return found;
}

std::string DataProvider::GetGUID() { return guidText(modPublic::context().guidSource); }

bool DataProvider::HaveCashFlowCodeInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                             std::uint8_t iPeriod, std::int16_t iSignSeq, std::int32_t iNo_id) {
    return HaveCashFlowCodeInVoucher(objCon, strVoucherTable, {iPeriod, iSignSeq, iNo_id});
}

bool DataProvider::HaveCashFlowCodeInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                             const VoucherKey& key) {
    const std::int16_t year = modPublic::GetIYear();
    return givesRecord(objCon, HaveVoucherKey(objCon, strVoucherTable)
                                   ? filled(statements::cashLine, strVoucherTable, key, year)
                                   : filled(statements::keylessCashLine, strVoucherTable, year));
}

bool DataProvider::HaveCashFlowCodeInVoucher2(Connection& objCon, const std::string& strVoucherTable,
                                              const std::string& coutNo_id) {
    // Only these spellings are tied to the year of their lines.
    const bool keyed = strVoucherTable == "GL_accvouch" || asciiLower(strVoucherTable) == "gl_v_accvouch";
    return givesRecord(objCon, filled(keyed ? statements::outsideCashLine : statements::keylessOutsideCashLine,
                                      strVoucherTable, coutNo_id, loginYear()));
}

void DataProvider::CallRef(Connection& /*objCon*/, const std::string& /*reference*/, const Variant& /*first*/,
                           const Variant& /*second*/) {}

std::string DataProvider::GetAccInfo(Connection& objCon, const std::string& csysid, const std::string& cname) {
    const auto result = objCon.createRecordset();
    result->Open(filled(statements::accountOption, csysid, cname), &objCon, CursorType::forwardOnly,
                 LockType::readOnly);
    std::string value;
    if (result->atEnd()) {
        modPublic::ShowMessage(csysid + "--" + cname, stopSign, "GetAccinfo Error!", "", 0);
    } else {
        value = toTextOrEmpty(result->Fields().Item("CValue"));
    }
    result->Close();
    return value;
}

std::string DataProvider::GetVoucherOption(Connection& objCon, const std::string& operatorName,
                                           const std::string& optionName) {
    const auto result = objCon.createRecordset();
    result->Open(filled(statements::voucherOptions, operatorName), &objCon, CursorType::forwardOnly,
                 LockType::readOnly);
    std::string value = "0";
    if (!result->atEnd()) {
        const Variant option = result->Fields().Item(optionName);
        value = option.isNull() ? value : toText(option);
    }
    result->Close();
    return value;
}

std::string DataProvider::DateToYearPeriod(Connection& objCon, Date date) {
    Z7Login& login = modPublic::requiredLogin();
    const std::string day = dateText(date);
    const auto result = objCon.createRecordset();
    result->Open(filled(statements::accountingPeriod, login.accountId(), day, day), &objCon, CursorType::snapshot,
                 LockType::unspecified);
    std::string yearAndPeriod = "190000";
    if (!result->atEnd()) {
        yearAndPeriod = toText(result->Fields().Item("iyear")) + format(result->Fields().Item("iID"), "00");
    }
    result->Close();
    return yearAndPeriod;
}

} // namespace z7::cashflow
