#include "z7cashflow/data/DataProvider.h"

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/format.h"
#include "z7cashflow/support/guid.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace z7::cashflow {

namespace {

constexpr int accountingSystemInformation = 117;
constexpr std::string_view governmentAccounting = "政府会计制度";
constexpr std::int32_t stopSign = 16;

std::string yearText() { return std::to_string(modPublic::GetIYear()); }

// The year that the user logged in to, whatever year the voucher at hand has set.
std::string loginYearText() { return modPublic::requiredLogin().AccountingYear(); }

bool givesRecord(Connection& objCon, const std::string& statement) {
    const auto result = objCon.Execute(statement);
    const bool found = !result->EndOfFile();
    result->Close();
    return found;
}

// Budget accounts run beside the financial ones under government accounting and move no cash.
std::string budgetAccountTest() {
    const std::string system = toTextOrEmpty(modPublic::requiredLogin().Information(accountingSystemInformation));
    return system.starts_with(governmentAccounting) ? " and code.cUserDefineType<>N'预算类会计科目'" : "";
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

// "select " and the row's fields as far as a voucher table can give them. Account and year come from the chart of accounts,
// which is what gives a table without keys a year.
std::string voucherSelect(const std::string& strVoucherTable, bool byOutsideKey, bool keyed) {
    const auto shape = CashFlowCollection::Create();
    const CashFlowStruct& fields = shape->CFStruct();
    std::string text = "select ";
    for (const std::string& name : fields.Fields()) {
        if (!fields.Item(name)->isSave || isLeftOut(name, byOutsideKey, keyed)) {
            continue;
        }
        if (name == "ccode" || asciiLower(name) == "iyear") {
            text += " code.";
        }
        text += name + ",";
    }
    if (text.ends_with(',')) {
        text.pop_back();
    }
    return text + ",bCashItem from " + strVoucherTable;
}

} // namespace

std::shared_ptr<Recordset> DataProvider::GetCashTable(Connection& objCon, std::uint8_t iPeriod, std::int16_t iSignSeq,
                                                      std::int32_t iNo_id) {
    constexpr std::int16_t emptySetState = 2;
    const bool emptySet = modPublic::context().VouchState == emptySetState;
    return objCon.Execute("select table1.*,fitemss98.citemname from (select gl_cashtable.*, "
                          "code.ccode_name,code.bCashItem from gl_cashtable "
                          "inner join code on code.iyear=gl_cashtable.iyear and gl_cashtable.ccode=code.ccode where" +
                          std::string(emptySet ? " " : "  ") + "code.iyear=" + yearText() +
                          (emptySet ? " and  iperiod=" : " and iperiod=") + std::to_string(iPeriod) +
                          " and isignseq=" + std::to_string(iSignSeq) + " and ino_id=" + std::to_string(iNo_id) +
                          ") table1 inner join fitemss98 on table1.cCashItem =fitemss98.citemcode" +
                          (emptySet ? " Where 1=-1" : ""));
}

std::shared_ptr<Recordset> DataProvider::GetCashTable2(Connection& objCon, const std::string& coutNo_id) {
    std::uint8_t iPeriod = 0;
    std::int16_t iSignSeq = 0;
    std::int32_t iNo_id = 0;
    Date dbill_date;
    GetVoucherKeyFromOut_id(objCon, coutNo_id, iPeriod, iSignSeq, iNo_id, dbill_date);
    return GetCashTable(objCon, iPeriod, iSignSeq, iNo_id);
}

std::shared_ptr<Recordset> DataProvider::GetVoucherTable(Connection& objCon, const std::string& strVoucherTable,
                                                         std::uint8_t iPeriod, std::int16_t iSignSeq,
                                                         std::int32_t iNo_id) {
    const bool keyed = HaveVoucherKey(objCon, strVoucherTable);
    std::string text = voucherSelect(strVoucherTable, false, keyed);
    text += " as TempVoucher  inner join code on ";
    if (keyed) {
        text += " TempVoucher.iyear=code.iyear and ";
    }
    text += " code.iyear=" + yearText() + " and  TempVoucher.ccode=code.ccode where ";
    if (keyed) {
        text += "TempVoucher.iperiod=" + std::to_string(iPeriod) +
                " and TempVoucher.isignseq=" + std::to_string(iSignSeq) +
                " and TempVoucher.ino_id=" + std::to_string(iNo_id) + " and ";
    }
    text += " code.bend=1 and code.bclose=0";
    return objCon.Execute(text + budgetAccountTest());
}

std::shared_ptr<Recordset> DataProvider::GetVoucherTable2(Connection& objCon, const std::string& strVoucherTable,
                                                          const std::string& coutNo_id) {
    const bool keyed = HaveVoucherKey(objCon, strVoucherTable);
    std::string text = voucherSelect(strVoucherTable, true, keyed);
    text += " as TempVoucher  inner join code on  ";
    if (keyed) {
        text += " TempVoucher.iyear=code.iyear and ";
    }
    text += "  code.iyear=" + yearText() + " and   TempVoucher.ccode=code.ccode where TempVoucher.coutno_id=N'" +
            coutNo_id + "' and code.bend=1 and code.bclose=0   ";
    return objCon.Execute(text + budgetAccountTest());
}

bool DataProvider::CodeIsCashFlowKm(Connection& objCon, const std::string& ccode) {
    return givesRecord(objCon, "select ccode from code where iyear=" + yearText() + " and  ccode=N'" + ccode +
                                   "' and code.bcashitem=1");
}

double DataProvider::GetCashSumInVoucher(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                         std::int16_t iSignSeq, std::int32_t iNo_id) {
    std::string text =
        "select (sum(md) -sum(mc)) as mysum  from " + strVoucherTable + " as voucherTemp  inner join CODE on ";
    if (HaveVoucherKey(objCon, strVoucherTable)) {
        text += " code.iyear=" + yearText() +
                " and   voucherTemp.iYear=CODE.iYear and   voucherTemp.ccode=CODE.ccode where voucherTemp.iperiod=" +
                std::to_string(iPeriod) + " and voucherTemp.isignseq =" + std::to_string(iSignSeq) +
                " and voucherTemp.ino_id=" + std::to_string(iNo_id) +
                "  and CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1 group by voucherTemp.iperiod,isignseq,ino_id";
    } else {
        text += "  code.iyear=" + yearText() +
                " and   voucherTemp.ccode=CODE.ccode where CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1  ";
    }
    const auto result = objCon.Execute(text);
    const Variant sum = result->EndOfFile() ? Variant() : result->Fields().Item("mysum");
    result->Close();
    return toDouble(format(sum.isNull() ? Variant(0.0) : sum, "#.00"));
}

bool DataProvider::HaveVoucherKey(Connection& /*objCon*/, const std::string& strVoucherTable) {
    return isOneOf(asciiLower(strVoucherTable), {"gl_accvouch", "gl_v_accvouch"});
}

double DataProvider::GetCashSumInVoucher2(Connection& objCon, const std::string& strVoucherTable,
                                          const std::string& coutNo_id) {
    const auto result = objCon.Execute(
        "select (sum(md) -sum(mc)) as mysum  from " + strVoucherTable +
        " as voucherTemp  inner join gl_v_code on  voucherTemp.ccode=gl_v_code.ccode where voucherTemp.coutno_id=N'" +
        coutNo_id +
        "' and gl_v_code.bend=1 and gl_v_code.bclose=0 and gl_v_code.bcashitem=1 group by voucherTemp.coutno_id");
    const double sum = result->EndOfFile() ? 0.0 : toDouble(result->Fields().Item("mysum"));
    result->Close();
    return sum;
}

void DataProvider::GetVoucherKeyFromOut_id(Connection& objCon, const std::string& coutNo_id, std::uint8_t& iPeriod,
                                           std::int16_t& iSignSeq, std::int32_t& iNo_id, Date& dbill_date) {
    const auto result =
        objCon.Execute("select iperiod,isignseq,ino_id,dbill_date from gl_accvouch where iYear= " + yearText() +
                       " and iflag is null and coutNo_id=N'" + coutNo_id + "'");
    if (result->EndOfFile()) {
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

std::string DataProvider::GetGUID() { return guidText(modPublic::context().guidSource); }

bool DataProvider::HaveCashFlowCodeInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                             std::uint8_t iPeriod, std::int16_t iSignSeq, std::int32_t iNo_id) {
    std::string text = "select code.ccode from " + strVoucherTable + " as TempVoucher inner join code on ";
    if (HaveVoucherKey(objCon, strVoucherTable)) {
        text += "TempVoucher.ccode=code.ccode and tempvoucher.iyear=code.iyear where TempVoucher.iPeriod =" +
                std::to_string(iPeriod) + " and TempVoucher.iSignSeq =" + std::to_string(iSignSeq) +
                " and TempVoucher.iNo_id =" + std::to_string(iNo_id) +
                " and code.bCashItem=1 and code.bclose=0 and code.iyear=" + yearText();
    } else {
        text += " TempVoucher.ccode=code.ccode  where code.bCashItem=1 and code.bclose=0 and code.iyear=" + yearText();
    }
    return givesRecord(objCon, text);
}

bool DataProvider::HaveCashFlowCodeInVoucher2(Connection& objCon, const std::string& strVoucherTable,
                                              const std::string& coutNo_id) {
    // Only these spellings are tied to the year of their lines.
    const bool keyed = strVoucherTable == "GL_accvouch" || asciiLower(strVoucherTable) == "gl_v_accvouch";
    return givesRecord(objCon, "select code.ccode from  " + strVoucherTable +
                                   " as TempVoucher inner join code on TempVoucher.ccode=code.ccode" +
                                   (keyed ? " and tempvoucher.iyear=code.iyear" : "") +
                                   " where TempVoucher.coutNo_id=N'" + coutNo_id +
                                   "' and code.bcashitem=1 and code.bclose=0 and code.iyear=" + loginYearText());
}

void DataProvider::CallRef(Connection& /*objCon*/, const std::string& /*reference*/, const Variant& /*first*/,
                           const Variant& /*second*/) {}

std::string DataProvider::GetAccInfo(Connection& objCon, const std::string& csysid, const std::string& cname) {
    const auto result = objCon.CreateRecordset();
    result->Open("select cvalue,cdefault from accinformation WITH(NOLOCK) where csysid =N'" + csysid +
                     "' and cname = N'" + cname + "'",
                 &objCon, CursorType::ForwardOnly, LockType::ReadOnly);
    std::string value;
    if (result->EndOfFile()) {
        modPublic::ShowMessage(csysid + "--" + cname, stopSign, "GetAccinfo Error!", "", 0);
    } else {
        value = toTextOrEmpty(result->Fields().Item("CValue"));
    }
    result->Close();
    return value;
}

std::string DataProvider::GetVoucherOption(Connection& objCon, const std::string& operatorName,
                                           const std::string& optionName) {
    const auto result = objCon.CreateRecordset();
    result->Open("select * from GL_VoucherOption WITH(NOLOCK) where operator =N'" + operatorName + "'", &objCon,
                 CursorType::ForwardOnly, LockType::ReadOnly);
    std::string value = "0";
    if (!result->EndOfFile()) {
        const Variant option = result->Fields().Item(optionName);
        value = option.isNull() ? value : toText(option);
    }
    result->Close();
    return value;
}

std::string DataProvider::DateToYearPeriod(Connection& objCon, Date date) {
    Z7Login& login = modPublic::requiredLogin();
    const std::string day = dateText(date);
    const auto result = objCon.CreateRecordset();
    result->Open("select iyear,iid from zqsystem..ua_period where cacc_id =N'" + login.AccountId() + "' and dbegin<='" +
                     day + "' and dend>='" + day + "' ",
                 &objCon, CursorType::Static, LockType::Unspecified);
    std::string yearAndPeriod = "190000";
    if (!result->EndOfFile()) {
        yearAndPeriod = toText(result->Fields().Item("iyear")) + format(result->Fields().Item("iID"), "00");
    }
    result->Close();
    return yearAndPeriod;
}

} // namespace z7::cashflow
