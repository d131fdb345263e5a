#include "z7cashflow/providers/GlSave.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/rowGeneration.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow {

namespace {

// Dates before 1901 tell no voucher's date.
constexpr Date firstTellingDate(367.0);

// The condition on a voucher as deletes and counts spell it.
std::string voucherCondition(int iPeriod, int isignseq, std::int32_t iNo_id) {
    return "iperiod=" + std::to_string(iPeriod) + " and isignseq=" + std::to_string(isignseq) +
           " and ino_id=" + std::to_string(iNo_id);
}

std::string deleteStatement(int iPeriod, int isignseq, std::int32_t iNo_id) {
    return "delete from gl_v_cashtable where " + voucherCondition(iPeriod, isignseq, iNo_id);
}

} // namespace

void setYearOf(Connection& objCon, Date date) {
    const std::string yearAndPeriod = DataProvider().DateToYearPeriod(objCon, date);
    modPublic::SetIYear(toInt16(leftCharacters(yearAndPeriod, 4)));
}

void readCashCodeOption(Connection& objCon) {
    modPublic::context().bCashCode = asciiUpper(DataProvider().GetAccInfo(objCon, "GL", "bCashCode")) == "TRUE";
}

bool GlSave::SaveCashFlowColCore(std::shared_ptr<CashFlowCollection>& objCFCol, bool blnCheckCF) const {
    try {
        return save(objCFCol, blnCheckCF);
    } catch (const Error& failure) {
        throw failure.withSource("CashFlow");
    }
}

bool GlSave::save(std::shared_ptr<CashFlowCollection>& objCFCol, bool blnCheckCF) const {
    readCashCodeOption(objCon);
    const std::string table = settings.VoucherTempTable.empty() ? strVoucherTable : settings.VoucherTempTable;
    if (isValidDate(bill_date) && bill_date != Date::none()) {
        setYearOf(objCon, bill_date);
    }
    if (!DataProvider().HaveCashFlowCodeInVoucher(objCon, table, iPeriod, isignseq, iNo_id)) {
        removeLeftBehind(objCFCol.get());
        return true;
    }
    if (objCFCol) {
        objCFCol->VoucherTable(table);
        RefreshColFromVoucher(objCon, *objCFCol);
    } else {
        findRows(objCFCol, table);
    }
    if (!objCFCol) {
        return true;
    }
    objCFCol->VoucherTable(table);
    check(objCFCol, table, blnCheckCF);
    removeReplacedRows(*objCFCol);
    for (const auto& row : *objCFCol) {
        objCon.Execute(row->InsertSql("gl_v_cashtable", objCFCol->CFStruct()));
    }
    takeCurrencyName();
    return true;
}

void GlSave::findRows(std::shared_ptr<CashFlowCollection>& objCFCol, const std::string& table) const {
    const Date date = bill_date < firstTellingDate ? dateOfVoucher() : bill_date;
    objCFCol = gl.GetCashFlowColFromDB(objCon, table, iPeriod, isignseq, iNo_id, date);
    if (objCFCol) {
        RefreshColFromVoucher(objCon, *objCFCol);
    } else {
        objCFCol = gl.CreateCashFlowColFromDB(objCon, table, iPeriod, isignseq, iNo_id, date);
    }
}

Date GlSave::dateOfVoucher() const {
    const auto voucher =
        objCon.Execute("select  dBill_date from " + strVoucherTable + " where iPeriod =" + std::to_string(iPeriod) +
                       " and iSignSeq =" + std::to_string(isignseq) + " and iNo_id =" + std::to_string(iNo_id));
    if (voucher->EndOfFile()) {
        voucher->Close();
        modPublic::RaiseCashFlowError(errors::noVoucherDateForSave, modPublic::GetText("Z7.CW.GL.CashFlow.00009"));
    }
    const Date date = toDate(voucher->Fields().Item("dBill_date"));
    voucher->Close();
    return date;
}

void GlSave::check(const std::shared_ptr<CashFlowCollection>& objCFCol, const std::string& table,
                   bool blnCheckCF) const {
    std::string strInfo;
    if (!gl.CheckKmFrom(objCon, objCFCol, &strInfo)) {
        modPublic::RaiseCashFlowError(errors::rowsDoNotFit, strInfo);
    }
    if (blnCheckCF && !gl.CheckCFColFromDB(objCon, table, iPeriod, isignseq, iNo_id, objCFCol, &strInfo)) {
        modPublic::RaiseCashFlowError(errors::sumsDiffer, strInfo);
    }
}

// The rows that the new ones replace stand under the voucher's number, or under its former one if it has got a new
// number; under the former one they stay as long as a voucher still has it.
void GlSave::removeReplacedRows(const CashFlowCollection& collection) const {
    const std::int16_t former = collection.ibackno_id();
    if (former == 0 || former == collection.iNo_id()) {
        objCon.Execute(deleteStatement(collection.iPeriod(), collection.isignseq(), collection.iNo_id()));
        return;
    }
    const auto count = objCon.CreateRecordset();
    count->Open("Select Count(*) From gl_v_accvouch Where " +
                    voucherCondition(collection.iPeriod(), collection.isignseq(), former),
                &objCon, CursorType::ForwardOnly, LockType::ReadOnly);
    if (!(toDouble(count->Fields().Item(0)) > 0)) {
        objCon.Execute(deleteStatement(collection.iPeriod(), collection.isignseq(), former));
    }
    count->Close();
}

// A voucher without a cash-flow account stores nothing; what an earlier form of it left behind goes.
void GlSave::removeLeftBehind(const CashFlowCollection* collection) const {
    if (collection != nullptr && collection->iNo_id() == collection->ibackno_id()) {
        objCon.Execute(deleteStatement(iPeriod, isignseq, iNo_id));
    } else if (settings.OldVouchNoID != 0) {
        objCon.Execute("if not exists(Select top 1 ccode From gl_v_accvouch where " +
                       voucherCondition(iPeriod, isignseq, settings.OldVouchNoID) + ") " +
                       deleteStatement(iPeriod, isignseq, settings.OldVouchNoID));
    }
}

void GlSave::takeCurrencyName() const {
    objCon.Execute(
        "UPDATE GL_CashTable SET cexch_name =  g.cexch_name FROM dbo.GL_CashTable c INNER JOIN dbo.GL_accvouch g"
        " ON  c.ccode = g.ccode AND  c.csign = g.csign  AND c.iyear = g.iyear"
        " AND c.iNo_id = g.ino_id AND  c.inid = g.inid "
        " Where c.iPeriod = " +
        std::to_string(iPeriod) + " And c.isignseq = " + std::to_string(isignseq) +
        " And c.iNo_id = " + std::to_string(iNo_id) + " and c.iyear = " + std::to_string(modPublic::GetIYear()));
}

} // namespace z7::cashflow
