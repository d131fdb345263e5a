#include "z7cashflow/dialog/clsMain.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/dialog/dialogText.h"
#include "z7cashflow/dialog/frmCashFlow.h"
#include "z7cashflow/dialog/loginConnection.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>

namespace z7::cashflow {

/// The key of a ledger voucher as given by a host.
struct clsMain::Voucher {
    const std::string& table;
    std::uint8_t iPeriod;
    std::int16_t isignseq;
    std::int32_t iNo_id;
    Date dbill_date;
    bool blnCreate;

    [[nodiscard]] bool touchesCash(Connection& objCon) const {
        return DataProvider().HaveCashFlowCodeInVoucher(objCon, table, iPeriod, isignseq, iNo_id);
    }
    [[nodiscard]] std::shared_ptr<CashFlowCollection> storedRows(Connection& objCon) const {
        return VoucherProvider().gl().GetCashFlowColFromDB(objCon, table, iPeriod, isignseq, iNo_id, dbill_date);
    }
    [[nodiscard]] std::shared_ptr<CashFlowCollection> generatedRows(Connection& objCon) const {
        return VoucherProvider().gl().CreateCashFlowColFromDB(objCon, table, iPeriod, isignseq, iNo_id, dbill_date);
    }
};

namespace {

bool accountOption(Connection& objCon, const char* name) {
    return asciiUpper(DataProvider().GetAccInfo(objCon, "GL", name)) == "TRUE";
}

std::string trimmed(const Variant& value) {
    const std::string text = toTextOrEmpty(value);
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

// Items that a user has chosen by hand survive a regeneration.
void takeItemsFrom(const CashFlowCollection& former, const CashFlowCollection& rows) {
    for (const auto& row : rows) {
        if (!isNullOrEmpty(row->Item("cCashItem"))) {
            continue;
        }
        const std::string inid = trimmed(row->Item("inid"));
        const auto found = std::find_if(former.begin(), former.end(), [&](const auto& other) {
            return trimmed(other->Item("inid")) == inid && !isNullOrEmpty(other->Item("cCashItem"));
        });
        if (found != former.end()) {
            row->SetValue("cCashItem", (*found)->Item("cCashItem"));
        }
    }
}

bool checkIsOn(const bool* blnCheckCF) { return blnCheckCF == nullptr || *blnCheckCF; }

} // namespace

void clsMain::SetVouchLockSucc(bool value) { modPublic::context().VouchLockSucc = value; }

void clsMain::SetVouchEdit(bool value) { modPublic::context().VouchEdit = value; }

void clsMain::SetCurUserName(const std::string& value) { modPublic::context().CurUserName = value; }

void clsMain::SetVouchBillName(const std::string& value) { modPublic::context().VouchBillName = value; }

void clsMain::SetVouchState(std::int16_t value) { modPublic::context().VouchState = value; }

void clsMain::SetVouchIn(std::int16_t value) { modPublic::context().VouchIn = value; }

void clsMain::Login(const std::shared_ptr<Z7Login>& value) { modPublic::SetLogin(value); }

void clsMain::readOptions(Connection& objCon) {
    modPublic::context().bCashCode = accountOption(objCon, "bCashCode");
    modPublic::context().bAutoDisplay = accountOption(objCon, "bAutoDisplay");
}

void clsMain::removeAllRows() {
    for (std::int32_t left = CashFlowCol_->Count(); left > 0; --left) {
        CashFlowCol_->Remove(1);
    }
}

void clsMain::takeRowsOf(Connection& objCon, const Voucher& voucher) {
    if (!CashFlowCol_) {
        CashFlowCol_ = CashFlowCollection::Create();
        CashFlowCol_->VoucherTable(voucher.table);
    }
    if (CashFlowCol_->iNo_id() != voucher.iNo_id || CashFlowCol_->isignseq() != voucher.isignseq ||
        CashFlowCol_->iPeriod() != voucher.iPeriod) {
        removeAllRows();
        CashFlowCol_->VoucherTable(voucher.table);
    }
    if (CashFlowCol_->Count() > 0) {
        return;
    }
    CashFlowCol_ = voucher.storedRows(objCon);
    if (!CashFlowCol_ && voucher.blnCreate) {
        CashFlowCol_ = voucher.generatedRows(objCon);
    }
}

void clsMain::regenerate(Connection& objCon, const Voucher& voucher) {
    if (!voucher.blnCreate || !modPublic::context().iUpdateCashFlow) {
        return;
    }
    former_ = CashFlowCol_;
    CashFlowCol_ = voucher.generatedRows(objCon);
    takeItemsFrom(*former_, *CashFlowCol_);
}

void clsMain::finishCollection(const Voucher& voucher) {
    if (!CashFlowCol_) {
        CashFlowCol_ = CashFlowCollection::Create();
    }
    CashFlowCol_->VoucherTable(voucher.table);
    CashFlowCol_->UpdateCol(voucher.iPeriod, voucher.isignseq, voucher.iNo_id, voucher.dbill_date);
}

void clsMain::showDialog(frmCashFlow& dialog, bool blnCheckCF) {
    dialog.LoadData(modPublic::GetLogin(), CashFlowCol_, blnCheckCF);
    dialog.showModal();
    CashFlowCol_ = dialog.CashFlowCol();
}

void clsMain::ShowCashFlow(const std::string& strVoucherTable, std::uint8_t iPeriod, std::int16_t isignseq,
                           std::int32_t iNo_id, Date dbill_date, bool blnCreate, const bool* blnCheckCF,
                           const std::int16_t* iyear) {
    frmCashFlow dialog;
    dialog.ReadOnly(ReadOnly_);
    const auto objCon = createLoginConnection();
    openWithLogin(*objCon);
    modPublic::SetIYear(iyear == nullptr ? std::int16_t{0} : *iyear);
    readOptions(*objCon);
    modPublic::context().iUpdateCashFlow =
        toBool(DataProvider().GetVoucherOption(*objCon, modPublic::requiredLogin().operatorName(), "iUpdateCashFlow"));
    const Voucher voucher{strVoucherTable, iPeriod, isignseq, iNo_id, dbill_date, blnCreate};
    if (!voucher.touchesCash(*objCon)) {
        showNotice(modPublic::GetText(ReadOnly_ ? "Z7.CW.GL.CashFlow.Z711.00001" : "Z7.CW.GL.CashFlow.00012"));
        return;
    }
    takeRowsOf(*objCon, voucher);
    regenerate(*objCon, voucher);
    finishCollection(voucher);
    showDialog(dialog, checkIsOn(blnCheckCF));
    objCon->Close();
}

bool clsMain::InitCashFlow(const std::string& strVoucherTable, std::uint8_t iPeriod, std::int16_t isignseq,
                           std::int32_t iNo_id, Date dbill_date, bool blnCreate, const bool* /*blnCheckCF*/) {
    std::shared_ptr<Connection> objCon;
    bool touchesCash = false;
    bool failed = false;
    try {
        objCon = createLoginConnection();
        openWithLogin(*objCon);
        readOptions(*objCon);
        const Voucher voucher{strVoucherTable, iPeriod, isignseq, iNo_id, dbill_date, blnCreate};
        touchesCash = voucher.touchesCash(*objCon);
        if (touchesCash) {
            takeRowsOf(*objCon, voucher);
            finishCollection(voucher);
        }
    } catch (const std::exception&) {
        failed = true; // the result says so
    }
    if (touchesCash && !failed) {
        return true;
    }
    if (!objCon) {
        raisePlatformError(Reason::dialogConnectionMissing);
    }
    objCon->Close();
    return false;
}

void clsMain::takeOutsideRows(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
                              Date dbill_date, bool blnCreate) {
    if (!CashFlowCol_) {
        CashFlowCol_ = CashFlowCollection::Create();
        CashFlowCol_->coutNo_id(coutNo_id);
        CashFlowCol_->VoucherTable(strVoucherTable);
    }
    if (CashFlowCol_->coutNo_id() != coutNo_id) {
        removeAllRows();
        CashFlowCol_->coutNo_id(coutNo_id);
        CashFlowCol_->VoucherTable(strVoucherTable);
    }
    if (CashFlowCol_->Count() > 0) {
        return;
    }
    VoucherProvider provider;
    std::string xml = provider.out().GetCashFlowColFromDB(objCon, strVoucherTable, coutNo_id);
    if (xml.empty() && blnCreate) {
        xml = provider.out().CreateCashFlowColFromDB(objCon, strVoucherTable, coutNo_id);
    }
    CashFlowCol_ = CashFlowCollection::Create();
    CashFlowCol_->coutNo_id(coutNo_id);
    CashFlowCol_->dbill_date(dbill_date);
    CashFlowCol_->Load(xml);
}

void clsMain::ShowCashFlowOutVoucher(const std::string& strVoucherTable, const std::string& coutNo_id, Date dbill_date,
                                     bool blnCreate, const bool* blnCheckCF) {
    frmCashFlow dialog;
    dialog.ReadOnly(ReadOnly_);
    const auto objCon = createLoginConnection();
    openWithLogin(*objCon);
    if (!DataProvider().HaveCashFlowCodeInVoucher2(*objCon, strVoucherTable, coutNo_id)) {
        showNotice(modPublic::GetText("Z7.CW.GL.CashFlow.00012"));
        return;
    }
    takeOutsideRows(*objCon, strVoucherTable, coutNo_id, dbill_date, blnCreate);
    if (!CashFlowCol_) {
        CashFlowCol_ = CashFlowCollection::Create();
        CashFlowCol_->coutNo_id(coutNo_id);
        CashFlowCol_->VoucherTable(strVoucherTable);
    }
    showDialog(dialog, checkIsOn(blnCheckCF));
    objCon->Close();
}

} // namespace z7::cashflow
