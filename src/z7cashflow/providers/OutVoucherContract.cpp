#include "z7cashflow/providers/OutVoucherContract.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/GlSave.h"
#include "z7cashflow/providers/rowChecks.h"
#include "z7cashflow/providers/rowGeneration.h"
#include "z7cashflow/providers/rowsFromXml.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow {

namespace {

CashFlowCollection& requiredRows(const std::shared_ptr<CashFlowCollection>& collection) {
    if (!collection) {
        raisePlatformError(Reason::linesMissing);
    }
    return *collection;
}

} // namespace

std::string OutVoucherContract::VoucherTempTable() const { return settings_.VoucherTempTable; }

void OutVoucherContract::VoucherTempTable(const std::string& value) { settings_.VoucherTempTable = value; }

void OutVoucherContract::objLogin(const std::shared_ptr<Z7Login>& value) { modPublic::SetLogin(value); }

std::string OutVoucherContract::GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml,
                                                      bool blnCreateCF) {
    readCashCodeOption(objCon);
    modPublic::context().bAutoDisplay = asciiUpper(DataProvider().GetAccInfo(objCon, "GL", "bAutoDisplay")) == "TRUE";
    return saveOrEmpty(GetCashFlowColFromVoucherXml(objCon, strVoucherXml, blnCreateCF, settings_, gl_, *this));
}

std::string OutVoucherContract::GetCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                     const std::string& coutNo_id) {
    DataProvider data;
    if (!data.HaveCashFlowCodeInVoucher2(objCon, strVoucherTable, coutNo_id)) {
        return saveOrEmpty(nullptr);
    }
    const DatedVoucherKey voucher = data.ledgerVoucherOf(objCon, {coutNo_id});
    const auto stored = data.GetCashTable2(objCon, coutNo_id);
    std::shared_ptr<CashFlowCollection> collection;
    if (stored->atEnd()) {
        stored->Close();
        const auto& [key, date] = voucher;
        collection = gl_.CreateCashFlowColFromDB(objCon, strVoucherTable, key.period, key.kind, key.number, date);
    } else {
        collection = GetCashFlowColFromRs(objCon, *stored, Date(), {coutNo_id}, settings_.bFromDraft);
    }
    if (collection) {
        collection->UpdateCol(voucher);
        collection->VoucherTable(strVoucherTable);
    }
    return saveOrEmpty(collection);
}

std::string OutVoucherContract::CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                        const std::string& coutNo_id) {
    DataProvider data;
    if (!data.HaveCashFlowCodeInVoucher2(objCon, strVoucherTable, coutNo_id)) {
        return {};
    }
    const auto lines = data.GetVoucherTable2(objCon, strVoucherTable, coutNo_id);
    if (cashSum(*lines) == 0.0) {
        lines->Close();
        return saveOrEmpty(nullptr);
    }
    lines->MoveFirst();
    const auto collection = GetCashFlowColFromRs(objCon, *lines, Date(), {coutNo_id}, settings_.bFromDraft);
    const DatedVoucherKey voucher = data.ledgerVoucherOf(objCon, {coutNo_id});
    if (collection) {
        collection->UpdateCol(voucher);
        collection->VoucherTable(strVoucherTable);
        RefreshColFromVoucher(objCon, *collection);
    }
    return saveOrEmpty(collection);
}

bool OutVoucherContract::CheckCFColFromXml(Connection& objCon, const std::string& strVoucherXml,
                                           const std::string& /*strCFColxml*/, std::string* /*strInfo*/) {
    DataProvider data;
    VoucherKey key;
    Date date;
    std::string coutNo_id;
    const std::string table =
        data.VoucherXmlToDB(objCon, strVoucherXml, key.period, key.kind, key.number, date, coutNo_id, false);
    const bool byOutsideKey = !coutNo_id.empty();
    const auto lines = byOutsideKey ? data.GetVoucherTable2(objCon, table, coutNo_id)
                                    : data.GetVoucherTable(objCon, table, VoucherKey());
    const double sum = byOutsideKey ? data.GetCashSumInVoucher2(objCon, table, coutNo_id)
                                    : data.GetCashSumInVoucher(objCon, table, VoucherKey());
    const auto collection = GetCashFlowColFromRs(objCon, *lines, Date(), {coutNo_id}, settings_.bFromDraft);
    // The collection names no voucher table, so the row check's read is refused by the database.
    std::string unasked;
    return CheckColSum(objCon, requiredRows(collection), sum, unasked);
}

bool OutVoucherContract::CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                          const std::string& coutNo_id, const std::string& /*strCFColxml*/,
                                          std::string* /*strInfo*/) {
    DataProvider data;
    const auto lines = data.GetVoucherTable2(objCon, strVoucherTable, coutNo_id);
    const auto collection = GetCashFlowColFromRs(objCon, *lines, Date(), {coutNo_id}, settings_.bFromDraft);
    const double sum = data.GetCashSumInVoucher2(objCon, strVoucherTable, coutNo_id);
    requiredRows(collection).VoucherTable(strVoucherTable);
    std::string unasked;
    return CheckColSum(objCon, *collection, sum, unasked);
}

namespace {

// Replaces what is stored for the ledger voucher, in the context's year, by the collection's rows.
void replaceRows(Connection& objCon, const CashFlowCollection& collection) {
    objCon.Execute(filled(statements::deleteRowsInYear, modPublic::GetIYear(), collection.voucherKey()));
    for (const auto& row : collection) {
        objCon.Execute(row->InsertSql("gl_cashtable", collection.CFStruct()));
    }
}

} // namespace

bool OutVoucherContract::SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable,
                                         const std::string& coutNo_id, std::string* strCFColxml, bool* blnCheckCF) {
    try {
        std::string found;
        save(objCon, strVoucherTable, coutNo_id, strCFColxml != nullptr ? *strCFColxml : found,
             blnCheckCF == nullptr || *blnCheckCF);
        return true;
    } catch (const Error& failure) {
        throw failure.withSource("CashFlow");
    }
}

void OutVoucherContract::save(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
                              std::string& strCFColxml, bool blnCheckCF) {
    const std::string& table = settings_.VoucherTempTable.empty() ? strVoucherTable : settings_.VoucherTempTable;
    if (!DataProvider().HaveCashFlowCodeInVoucher2(objCon, table, coutNo_id)) {
        return;
    }
    if (strCFColxml.empty()) {
        strCFColxml = GetCashFlowColFromDB(objCon, strVoucherTable, coutNo_id);
    }
    if (strCFColxml.empty()) {
        return;
    }
    const auto collection = LoadCashFlowColFromXml(strCFColxml, objCon, strVoucherTable, OutsideKey{coutNo_id});
    if (!collection && !blnCheckCF) {
        return;
    }
    if (!collection) {
        modPublic::raiseCashFlowError(errors::sumsDiffer, modPublic::GetText("Z7.CW.GL.CashFlow.00011"));
    }
    if (blnCheckCF) {
        collection->VoucherTable(strVoucherTable);
        std::string strInfo;
        if (!gl_.CheckCFColFromDB(objCon, strVoucherTable, collection->iPeriod(), collection->isignseq(),
                                  collection->iNo_id(), collection, &strInfo)) {
            modPublic::raiseCashFlowError(errors::sumsDiffer, strInfo);
        }
    }
    replaceRows(objCon, *collection);
}

} // namespace z7::cashflow
