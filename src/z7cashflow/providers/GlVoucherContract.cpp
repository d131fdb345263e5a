#include "z7cashflow/providers/GlVoucherContract.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/GlSave.h"
#include "z7cashflow/providers/OutVoucherContract.h"
#include "z7cashflow/providers/rowChecks.h"
#include "z7cashflow/providers/rowGeneration.h"
#include "z7cashflow/providers/rowsFromXml.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow {

namespace {

CashFlowCollection& required(const std::shared_ptr<CashFlowCollection>& collection) {
    if (!collection) {
        raisePlatformError(Reason::rowsMissing);
    }
    return *collection;
}

} // namespace

std::string GlVoucherContract::VoucherTempTable() const { return settings_.VoucherTempTable; }

void GlVoucherContract::VoucherTempTable(const std::string& value) { settings_.VoucherTempTable = value; }

void GlVoucherContract::objLogin(const std::shared_ptr<Z7Login>& value) { modPublic::SetLogin(value); }

Variant GlVoucherContract::SetOldVouchNoID(const std::int32_t& vdata) {
    settings_.OldVouchNoID = vdata;
    return {};
}

void GlVoucherContract::bFromDraft(bool value) { settings_.bFromDraft = value; }

std::shared_ptr<CashFlowCollection> GlVoucherContract::GetCashFlowColFromDB(Connection& objCon,
                                                                            const std::string& strVoucherTable,
                                                                            std::uint8_t iPeriod, std::int16_t isignseq,
                                                                            std::int32_t iNo_id, Date dbill_date) {
    setYearOf(objCon, dbill_date);
    const auto stored = DataProvider().GetCashTable(objCon, iPeriod, isignseq, iNo_id);
    auto collection = GetCashFlowColFromRs(objCon, *stored, dbill_date, {}, settings_.bFromDraft);
    if (!collection && settings_.bFromDraft) {
        collection = CreateCashFlowColFromDB(objCon, strVoucherTable, iPeriod, isignseq, iNo_id, dbill_date);
    }
    if (collection) {
        collection->VoucherTable(strVoucherTable);
    }
    return collection;
}

std::shared_ptr<CashFlowCollection>
GlVoucherContract::CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                           std::int16_t isignseq, std::int32_t iNo_id, Date dbill_date) {
    const auto lines = DataProvider().GetVoucherTable(objCon, strVoucherTable, iPeriod, isignseq, iNo_id);
    std::shared_ptr<CashFlowCollection> collection;
    if (cashSum(*lines) != 0.0) {
        lines->MoveFirst();
        collection = GetCashFlowColFromRs(objCon, *lines, dbill_date, {}, settings_.bFromDraft);
    } else {
        lines->Close();
        collection = CashFlowCollection::Create();
    }
    collection->UpdateCol(iPeriod, isignseq, iNo_id, dbill_date);
    collection->VoucherTable(strVoucherTable);
    RefreshColFromVoucher(objCon, *collection);
    return collection;
}

bool GlVoucherContract::CheckKmFrom(Connection& objCon, const std::shared_ptr<CashFlowCollection>& objCFCol,
                                    std::string* strInfo) {
    std::string unasked;
    return CheckColAgainstVoucher(objCon, required(objCFCol), strInfo != nullptr ? *strInfo : unasked);
}

bool GlVoucherContract::CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                         std::int16_t isignseq, std::int32_t iNo_id,
                                         const std::shared_ptr<CashFlowCollection>& objCFCol, std::string* strInfo) {
    const double voucherSum = DataProvider().GetCashSumInVoucher(objCon, strVoucherTable, iPeriod, isignseq, iNo_id);
    required(objCFCol).VoucherTable(strVoucherTable);
    std::string unasked;
    return CheckColSum(objCon, *objCFCol, voucherSum, strInfo != nullptr ? *strInfo : unasked);
}

bool GlVoucherContract::SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                        std::int16_t isignseq, std::int32_t iNo_id,
                                        std::shared_ptr<CashFlowCollection>* objCFCol, bool* blnCheckCF) {
    return SaveCashFlowColEx(objCon, strVoucherTable, iPeriod, isignseq, iNo_id, Date::none(), objCFCol, blnCheckCF);
}

bool GlVoucherContract::SaveCashFlowColEx(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                          std::int16_t isignseq, std::int32_t iNo_id, Date bill_date,
                                          std::shared_ptr<CashFlowCollection>* objCFCol, bool* blnCheckCF) {
    std::shared_ptr<CashFlowCollection> found;
    const GlSave save{objCon, *this, settings_, strVoucherTable, {iPeriod, isignseq, iNo_id}, bill_date};
    return save.SaveCashFlowColCore(objCFCol != nullptr ? *objCFCol : found, blnCheckCF == nullptr || *blnCheckCF);
}

std::string GlVoucherContract::GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml,
                                                     bool blnCreateCF) {
    OutVoucherContract out(settings_, *this);
    return saveOrEmpty(GetCashFlowColFromVoucherXml(objCon, strVoucherXml, blnCreateCF, settings_, *this, out));
}

bool GlVoucherContract::SaveCashFlowColFromXml(Connection& objCon, const std::string& strVoucherTable,
                                               std::uint8_t iPeriod, std::int16_t isignseq, std::int32_t iNo_id,
                                               std::string* strCFColxml, bool* blnCheckCF) {
    std::shared_ptr<CashFlowCollection> collection;
    if (strCFColxml != nullptr && !strCFColxml->empty()) {
        collection =
            LoadCashFlowColFromXml(*strCFColxml, objCon, strVoucherTable, VoucherKey{iPeriod, isignseq, iNo_id});
        RefreshColFromVoucher(objCon, *collection);
    }
    // The account decides whether sums are compared on this way in, not the caller.
    const auto option = objCon.Execute(filled(statements::sumCheckOption));
    bool compareSums = !option->atEnd();
    option->Close();
    if (blnCheckCF != nullptr) {
        *blnCheckCF = compareSums;
    }
    return SaveCashFlowCol(objCon, strVoucherTable, iPeriod, isignseq, iNo_id, &collection, &compareSums);
}

} // namespace z7::cashflow
