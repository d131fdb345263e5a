#include "z7cashflow/dialog/dialogText.h"
#include "z7cashflow/dialog/frmCashFlow.h"
#include "z7cashflow/dialog/loginConnection.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/dialogStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <array>
#include <optional>

// Opening the dialog: captions, grid, and a line for each row.

namespace z7::cashflow {

namespace {

struct ColumnDesign {
    const char* captionKey;
    std::int16_t width;     ///< in twips
    std::int16_t maxLength; ///< in characters; 0 for a column without an editor
    std::int32_t kind;
    std::int32_t style;
    std::optional<std::int16_t> decimals;
    bool leftAligned;
};

constexpr std::array<ColumnDesign, 8> columns{{
    {"Z7.CW.GL.ZWSQL.EndItem.frmXmDlmx.Picture1.Toolbar1.Button7_7.Caption", 3000, 120, 0, 1, std::nullopt, true},
    {"Z7.CW.GL.CashFlow.00032", 1600, 40, 1, 1, std::nullopt, true},
    {"Z7.CW.GL.CashFlow.00033", 500, 8, 0, 1, std::nullopt, false},
    {"Z7.CW.GL.CashFlow.00034", 1500, 15, 2, 4, 2, false},
    {"Z7.CW.GL.CashFlow.00035", 1200, 80, 1, 1, std::nullopt, true},
    {"Z7.CW.GL.CashFlow.00036", 4000, 255, 0, 1, std::nullopt, false},
    {"Z7.CW.GL.CashFlow.00037", 1000, 0, 0, 0, std::nullopt, false},
    {nullptr, 0, 0, 0, 0, std::nullopt, false}, // the key of the row, in a hidden column
}};

template <class Use> void eachColumn(Use&& use) {
    std::int32_t col = 0;
    for (const ColumnDesign& column : columns) {
        use(col++, column);
    }
}

} // namespace

void frmCashFlow::LoadData(const std::shared_ptr<Z7Login>& objLogin,
                           const std::shared_ptr<CashFlowCollection>& CashFlowCol, bool blnCheckCF) {
    if (!CashFlowCol) {
        return;
    }
    CashFlowCol_ = CashFlowCol;
    objLogin_ = objLogin;
    blnCheckCF_ = blnCheckCF;
    strOriginalXml_ = collection().Count() > 0 ? collection().Save() : std::string();
    const auto local = createLoginConnection();
    openWithLogin(*local);
    objData_ = std::make_shared<DataProvider>();
    objData_->CashFlowTemplateSave = [this](const std::string& message, std::int32_t style, bool& bCancel) {
        objData_CashFlowTemplateSave(message, style, bCancel);
    };
    objCon_ = createLoginConnection();
    openWithLogin(*objCon_);
    grid().Rows(1);
    grid().Rows(collection().Count() + 1);
    const auto summary = local->createRecordset();
    std::int32_t line = 1;
    for (const auto& row : collection()) {
        fillLine(line++, *row, *summary, *local);
    }
    local->Close();
    grid().Col(4);
    grid().ColSel(4);
}

void frmCashFlow::fillLine(std::int32_t line, const CashFlow& row, Recordset& summary, Connection& local) {
    SuperGrid& cells = grid();
    const bool isDebit = isNonZero(row.Item("md"));
    cells.TextMatrix(line, 1, toTextOrEmpty(row.Item("ccode")));
    cells.TextMatrix(line, 2, modPublic::DirectionText(isDebit ? "借" : "贷"));
    cells.TextMatrix(line, 3, amountInCell(row.Item(isDebit ? "md" : "mc")));
    if (!row.Item("cCashItem").isNull()) {
        const std::string item = toText(row.Item("cCashItem"));
        cells.TextMatrix(line, 4, item);
        cells.TextMatrix(line, 5, objData_->GetCFItemName(connection(), item));
    }
    const std::string inid = toTextOrEmpty(row.Item("inid"));
    const std::string& table = collection().VoucherTable();
    summary.Open(objData_->HaveVoucherKey(connection(), table)
                     ? filled(statements::lineSummary, table, modPublic::GetIYear(), voucherKey(), inid)
                     : filled(statements::keylessLineSummary, table, inid),
                 &local, CursorType::dynamic, LockType::optimistic);
    cells.TextMatrix(line, 0, summary.atEnd() ? std::string() : toTextOrEmpty(summary.Fields().Item("cdigest")));
    summary.Close();
    cells.TextMatrix(line, 6, inid);
    cells.TextMatrix(line, 7, row.key());
    colourLine(line);
}

void frmCashFlow::colourLine(std::int32_t line) {
    for (const std::int32_t col : {0, 2, 5}) {
        grid().SetCellColor(line, col, lngFixedColor_);
    }
}

void frmCashFlow::loadForm() {
    InitCaptions();
    InitGrid();
    blnClosing_ = false;
    blnCancelled_ = false;
    const auto key = voucherKey();
    dblCashSum_ =
        objData_->GetCashSumInVoucher(connection(), collection().VoucherTable(), key.period, key.kind, key.number);
}

void frmCashFlow::InitCaptions() {
    form().button("cmdOk").Caption(modPublic::GetText("Z7.GL.ZZPZ.00192"));
    form().button("cmdCancel").Caption(modPublic::GetText("Z7.GL.ZZPZ.00352"));
    form().button("cmdDel").Caption(modPublic::GetText("Z7.CW.APAR.ARAPMain.Delete_Row"));
    form().button("cmdAdd").Caption(modPublic::GetText("Z7.CW.APAR.ARAPMain.Add_Line"));
    form().button("cmdInsert").Caption(modPublic::GetText("Z7.CW.GL.CashFlow.Z790.00001"));
    form().button("cmdAutoGetData").Caption(modPublic::GetText("Z7.CW.GL.CashFlow.00207"));
    form().button("cmdTemplate").Caption(modPublic::GetText("Z7.CW.GL.CashFlow.00208"));
    form().frmCaption("ZQFrmCaptionMgr").caption(modPublic::GetText("Z7.CW.GL.CashFlow.00209"));
    for (Control* control : form().controls()) {
        ignoringErrors([&] { control->fontName("Tahoma"); }); // not every control writes
    }
}

void frmCashFlow::InitGrid() {
    SuperGrid& cells = grid();
    lngFixedColor_ = 0xE8E8E8;
    cells.GridMode(1);
    cells.SetDefaultColor(lngFixedColor_);
    cells.Cols(8);
    cells.FixedRows(1);
    cells.FixedCols(0);
    cells.Rows(1);
    eachColumn([&](std::int32_t col, const ColumnDesign& column) {
        cells.TextMatrix(0, col, column.captionKey == nullptr ? "guid" : modPublic::GetText(column.captionKey));
    });
    eachColumn([&](std::int32_t col, const ColumnDesign& column) {
        if (column.leftAligned) {
            cells.ColAlignment(col, 1);
        }
    });
    eachColumn([&](std::int32_t col, const ColumnDesign& column) { cells.ColWidth(col, column.width); });
    eachColumn([&](std::int32_t col, const ColumnDesign& column) {
        if (column.maxLength > 0) {
            cells.SetColumnEdit(col, column.maxLength, column.kind, column.style, column.decimals);
        }
    });
    LoadMyColWidth(cells, "frmCashFlow");
    cells.GridReadOnly(ReadOnly_);
    for (const char* button : {"cmdTemplate", "cmdAdd", "cmdDel", "cmdOk", "cmdInsert", "cmdAutoGetData"}) {
        form().button(button).Enabled(!ReadOnly_);
    }
    ApplyGridColors(cells);
}

void frmCashFlow::ApplyGridColors(SuperGrid& cells) {
    ignoringErrors([&] {
        const std::string type = asciiLower(cells.typeName());
        if (type != "msflexgrid" && type != "mshflexgrid" && type != "zqflexgridctl" && type != "supergrid") {
            return;
        }
        const auto colour = [&](void (SuperGrid::*set)(std::int32_t), std::int32_t value) {
            ignoringErrors([&] { (cells.*set)(value); });
        };
        colour(&SuperGrid::BackColorSel, 0x9F6646);
        colour(&SuperGrid::ForeColorSel, 0xFFFFFF);
        colour(&SuperGrid::BackColorBkg, 0xFFFFFF);
        colour(&SuperGrid::GridColor, 0xAEAEAE);
        colour(&SuperGrid::GridColorFixed, 0x888888);
    });
}

} // namespace z7::cashflow
