#include "z7cashflow/dialog/DialogAccess.h"
#include "z7cashflow/dialog/dialogText.h"
#include "z7cashflow/dialog/frmCashFlow.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/providers/rowGeneration.h"
#include "z7cashflow/statements/dialogStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <array>
#include <vector>

// The seven buttons. None of them saves rows.

namespace z7::cashflow {

namespace {

constexpr std::int32_t settledCell = 2;
constexpr std::int32_t questionDefaultNo = 292;
constexpr std::array<std::int32_t, 8> rowColors{0xFFFFFF, 0, 0, 0, 0, 0, 0, 0};

std::vector<std::string> splitAtTabs(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (std::size_t tab = text.find('\t'); tab != std::string::npos; tab = text.find('\t', from)) {
        parts.push_back(text.substr(from, tab - from));
        from = tab + 1;
    }
    parts.push_back(text.substr(from));
    return parts;
}

} // namespace

bool frmCashFlow::settled() {
    if (grid().FinishEdit() == settledCell) {
        return true;
    }
    grid().SetFocus();
    return false;
}

// If the grid has dropped a line that the user never completed, its row is removed as well.
void frmCashFlow::removePendingRow() {
    if (collection().Count() > grid().Rows() - 1) {
        collection().Remove(strLastKey_);
    }
}

void frmCashFlow::standardExit() {
    grid().Col(1);
    grid().ColSel(1);
}

void frmCashFlow::cmdAdd() {
    blnCancelled_ = false;
    if (!settled()) {
        return;
    }
    removePendingRow();
    const auto cf = collection().CreateCFObject();
    collection().Add(cf);
    strLastKey_ = cf->key();
    grid().AddItem("", rowColors, std::nullopt);
    grid().Row(grid().Rows() - 1);
    grid().TextMatrix(grid().Row(), 7, cf->key());
    colourLine(grid().Row());
    standardExit();
}

void frmCashFlow::cmdInsert() {
    if (grid().Row() < grid().FixedRows() || !settled()) {
        return;
    }
    const std::int32_t above = grid().Row() - 1;
    blnCancelled_ = false;
    removePendingRow();
    const auto cf = collection().CreateCFObject();
    collection().Insert(cf, grid().TextMatrix(grid().Row(), 7));
    strLastKey_ = cf->key();
    grid().AddItem("", rowColors, grid().Row());
    if (grid().Row() != 1) {
        takeOverFromAbove(above, *cf);
    }
    grid().TextMatrix(grid().Row(), 7, strLastKey_);
    colourLine(grid().Row());
    standardExit();
}

// The new line belongs to the same voucher line as the one above and gets the rest of its amount.
void frmCashFlow::takeOverFromAbove(std::int32_t above, CashFlow& cf) {
    SuperGrid& cells = grid();
    const std::int32_t line = cells.Row();
    for (const std::int32_t col : {0, 1, 2, 6}) {
        cells.TextMatrix(line, col, cells.TextMatrix(above, col));
    }
    const std::string& table = collection().VoucherTable();
    const std::string ccode = cells.TextMatrix(above, 1);
    const std::string inid = cells.TextMatrix(above, 6);
    const auto found = connection().Execute(objData_->HaveVoucherKey(connection(), table)
                                                ? filled(statements::lineOfAccount, table, ccode, voucherKey(), inid)
                                                : filled(statements::keylessLineOfAccount, table, ccode, inid));
    if (found->atEnd()) {
        cells.TextMatrix(line, 3, "0.00");
        cf.SetValue("md", std::int16_t{0});
        cf.SetValue("mc", std::int16_t{0});
    } else {
        const Sides taken = sidesOfLine(collection(), toDouble(cells.TextMatrix(line, 6)));
        const bool isDebit = cells.TextMatrix(line, 2) == modPublic::DirectionText("借");
        cells.TextMatrix(line, 3,
                         amountInCell(isDebit ? remainder(found->Fields().Item("md"), taken.md)
                                              : remainder(found->Fields().Item("mc"), taken.mc)));
        cf.SetValue(isDebit ? "md" : "mc", amountInRow(cells.TextMatrix(line, 3)));
        cf.SetValue(isDebit ? "mc" : "md", std::int16_t{0});
    }
    found->Close();
}

void frmCashFlow::cmdDel() {
    const std::int32_t line = grid().Row();
    if (line >= 1) {
        if (!grid().TextMatrix(line, 1).empty() &&
            !asksToGoOn(modPublic::GetText("Z7.CW.GL.CashFlow.00025"), questionDefaultNo)) {
            return;
        }
        const std::string key = grid().TextMatrix(line, 7);
        if (!key.empty()) {
            collection().Remove(key);
        }
        grid().RemoveItem(line);
    }
    standardExit();
    blnCancelled_ = false;
}

void frmCashFlow::cmdAutoGetData() {
    if (!CashFlowCol_) {
        return;
    }
    blnCancelled_ = false;
    if (grid().Rows() > 1 && !asksToGoOn(modPublic::GetText("Z7.CW.GL.CashFlow.00023"), questionDefaultNo)) {
        return;
    }
    const auto key = voucherKey();
    const Date dbill_date = collection().dbill_date();
    VoucherProvider provider;
    if (!collection().coutNo_id().empty()) {
        const std::string xml =
            provider.out().CreateCashFlowColFromDB(connection(), collection().VoucherTable(), collection().coutNo_id());
        CashFlowCol_ = CashFlowCollection::Create();
        collection().iPeriod(key.period);
        collection().isignseq(key.kind);
        collection().iNo_id(static_cast<std::int16_t>(key.number));
        collection().dbill_date(dbill_date);
        collection().Load(xml);
    } else {
        CashFlowCol_ = provider.gl().CreateCashFlowColFromDB(connection(), collection().VoucherTable(), key.period,
                                                             key.kind, key.number, dbill_date);
    }
    LoadData(objLogin_, CashFlowCol_, blnCheckCF_);
    DialogAccess::Changed(collection(), true);
}

bool frmCashFlow::allLinesValid() {
    SuperGrid& cells = grid();
    for (std::int32_t line = cells.FixedRows(); line < cells.Rows(); ++line) {
        for (std::int32_t col = cells.FixedCols(); col < cells.Cols(); ++col) {
            std::string text = cells.TextMatrix(line, col);
            bool ok = true;
            CheckCell(text, line, static_cast<std::int16_t>(col), ok);
            if (!ok) {
                cells.Col(col);
                cells.Row(line);
                cells.SetFocus();
                form().sendKeys(" ");
                return false;
            }
        }
    }
    return true;
}

void frmCashFlow::cmdTemplate() {
    SuperGrid& cells = grid();
    if (cells.Row() < 1 || !allLinesValid()) {
        return;
    }
    blnCancelled_ = false;
    const std::int32_t line = cells.Row();
    const std::string account = cells.TextMatrix(line, 1);
    const bool bDir = cells.TextMatrix(line, 2) == modPublic::DirectionText("借");
    const std::string item = cells.TextMatrix(line, 4);
    const Date date = toDate(collection().Item(cells.TextMatrix(line, 7))->Item("dbill_date"));
    objData_->SaveCashFlowTemplate(connection(), account, bDir, item, date);
}

void frmCashFlow::objData_CashFlowTemplateSave(const std::string& message, std::int32_t style, bool& bCancel) {
    constexpr std::int32_t question = 32;
    constexpr std::int32_t yesNoQuestion = 36;
    if (style != question) {
        showNotice(message);
    } else if (!asksToGoOn(message + modPublic::GetText("Z7.CW.GL.CashFlow.00038"), yesNoQuestion)) {
        bCancel = true;
    }
}

// If a step raises an error, the next one is executed: the dialog stays open unless a check has passed.
void frmCashFlow::cmdOk() {
    VoucherProvider provider;
    bool goesOn = true;
    ignoringErrors([&] { goesOn = settled(); });
    if (!goesOn) {
        return;
    }
    ignoringErrors([&] { removePendingRow(); });
    ignoringErrors([&] { RefreshColFromVoucher(connection(), collection()); });
    std::string strInfo;
    ignoringErrors([&] { goesOn = provider.gl().CheckKmFrom(connection(), CashFlowCol_, &strInfo); });
    if (!goesOn) {
        LocateErrorCell(strInfo);
        ignoringErrors([&] { showNotice(strInfo); });
        ignoringErrors([&] { form().sendKeys(" "); });
        return;
    }
    bool closesUnchecked = false;
    ignoringErrors([&] {
        closesUnchecked = collection().Count() == 0 && !blnCheckCF_;
        if (closesUnchecked) {
            blnClosing_ = true;
            unload();
        }
    });
    if (!closesUnchecked) {
        ignoringErrors([&] { closeIfSumsMatch(provider.gl()); });
    }
}

void frmCashFlow::closeIfSumsMatch(IGlVoucherProvider& provider) {
    const auto key = voucherKey();
    std::string strInfo;
    if (provider.CheckCFColFromDB(connection(), collection().VoucherTable(), key.period, key.kind, key.number,
                                  CashFlowCol_, &strInfo)) {
        blnClosing_ = true;
        unload();
    } else {
        showNotice(strInfo);
    }
}

// strInfo is a reason, a line number and a column, or only a reason; in that case the cursor stays in its line.
void frmCashFlow::LocateErrorCell(std::string& strInfo) {
    const std::vector<std::string> parts = splitAtTabs(strInfo);
    std::int32_t inid = 0;
    std::int32_t col = 0;
    strInfo = parts[0];
    ignoringErrors([&] { inid = toInt32(parts.size() > 1 ? Variant(parts[1]) : Variant()); });
    ignoringErrors([&] { col = toInt32(parts.size() > 2 ? Variant(parts[2]) : Variant()); });
    ignoringErrors([&] {
        const std::int32_t lines = grid().Rows();
        std::int32_t line = 1;
        bool found = false;
        while (line < lines && !found) {
            found = true; // a cell that is not a number ends the search like the line itself
            ignoringErrors([&] { found = toDouble(grid().TextMatrix(line, 6)) == inid; });
            line += found ? 0 : 1;
        }
        ignoringErrors([&] { grid().Row(line); });
        ignoringErrors([&] { grid().Col(col); });
        grid().SetFocus();
    });
}

void frmCashFlow::cmdCancel() {
    if (!strOriginalXml_.empty()) {
        collection().Load(strOriginalXml_);
    } else {
        ignoringErrors([&] {
            for (std::int32_t left = collection().Count(); left > 0; --left) {
                collection().Remove(1);
            }
        });
    }
    DialogAccess::Changed(collection(), false);
    blnClosing_ = true;
    blnCancelled_ = true;
    unload();
}

} // namespace z7::cashflow
