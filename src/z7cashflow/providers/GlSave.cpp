#include "z7cashflow/providers/GlSave.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/rowGeneration.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/statements/voucherStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow {

namespace {

// Dates before 1901 tell no voucher's date.
constexpr Date firstTellingDate(367.0);

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
    if (!DataProvider().HaveCashFlowCodeInVoucher(objCon, table, key)) {
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
    objCFCol = gl.GetCashFlowColFromDB(objCon, table, key.period, key.kind, key.number, date);
    if (objCFCol) {
        RefreshColFromVoucher(objCon, *objCFCol);
    } else {
        objCFCol = gl.CreateCashFlowColFromDB(objCon, table, key.period, key.kind, key.number, date);
    }
}

Date GlSave::dateOfVoucher() const {
    const auto voucher = objCon.Execute(filled(statements::voucherDate, strVoucherTable, key));
    if (voucher->atEnd()) {
        voucher->Close();
        modPublic::raiseCashFlowError(errors::noVoucherDateForSave, modPublic::GetText("Z7.CW.GL.CashFlow.00009"));
    }
    const Date date = toDate(voucher->Fields().Item("dBill_date"));
    voucher->Close();
    return date;
}

void GlSave::check(const std::shared_ptr<CashFlowCollection>& objCFCol, const std::string& table,
                   bool blnCheckCF) const {
    std::string strInfo;
    if (!gl.CheckKmFrom(objCon, objCFCol, &strInfo)) {
        modPublic::raiseCashFlowError(errors::rowsDoNotFit, strInfo);
    }
    if (blnCheckCF && !gl.CheckCFColFromDB(objCon, table, key.period, key.kind, key.number, objCFCol, &strInfo)) {
        modPublic::raiseCashFlowError(errors::sumsDiffer, strInfo);
    }
}

// The rows that the new ones replace are stored under the voucher's number, or under its former one if it has got a new
// number; under the former one they stay as long as a voucher still has it.
void GlSave::removeReplacedRows(const CashFlowCollection& collection) const {
    const std::int16_t former = collection.ibackno_id();
    if (former == 0 || former == collection.iNo_id()) {
        objCon.Execute(filled(statements::deleteRows, collection.voucherKey()));
        return;
    }
    const VoucherKey formerKey{collection.iPeriod(), collection.isignseq(), former};
    const auto count = objCon.createRecordset();
    count->Open(filled(statements::countLines, formerKey), &objCon, CursorType::forwardOnly, LockType::readOnly);
    if (!(toDouble(count->Fields().Item(0)) > 0)) {
        objCon.Execute(filled(statements::deleteRows, formerKey));
    }
    count->Close();
}

// A voucher without a cash-flow account stores nothing, and what an earlier form of it stored is deleted.
void GlSave::removeLeftBehind(const CashFlowCollection* collection) const {
    if (collection != nullptr && collection->iNo_id() == collection->ibackno_id()) {
        objCon.Execute(filled(statements::deleteRows, key));
    } else if (settings.OldVouchNoID != 0) {
        const VoucherKey formerKey{key.period, key.kind, settings.OldVouchNoID};
        objCon.Execute(filled(statements::deleteRowsOfFreeNumber, formerKey, formerKey));
    }
}

void GlSave::takeCurrencyName() const {
    objCon.Execute(filled(statements::takeCurrencyNames, key, modPublic::GetIYear()));
}

} // namespace z7::cashflow
