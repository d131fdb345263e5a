#include "z7cashflow/dialog/DefineRef.h"
#include "z7cashflow/dialog/dialogText.h"
#include "z7cashflow/dialog/frmCashFlow.h"
#include "z7cashflow/dialog/referenceClients.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/dialogStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>

// Editing in the grid. Each accepted cell is stored directly in the row of its line.

namespace z7::cashflow {

namespace {

constexpr std::int32_t stopSign = 16;

bool refuse(const std::string& prompt) {
    showNotice(prompt);
    return false;
}

std::string debitWord() { return modPublic::DirectionText("借"); }

std::string creditWord() { return modPublic::DirectionText("贷"); }

} // namespace

void frmCashFlow::BeforeEdit(bool& cancel, std::int32_t /*column*/) {
    const auto& state = modPublic::context();
    if (state.CurUserName != state.VouchBillName && !state.VouchEdit) {
        modPublic::ShowMessage(modPublic::GetText("Z7.GL.ZZPZ.01154"), stopSign, modPublic::GetText("Z7.GL.ZZPZ.00003"),
                               "", 0);
        cancel = true;
    }
}

void frmCashFlow::CellValidate(std::string& text, std::int32_t& cancel, std::int32_t row, std::int32_t col) {
    bool ok = true;
    CheckCell(text, row, static_cast<std::int16_t>(col), ok);
    if (!ok) {
        cancel = 1;
    }
}

void frmCashFlow::RowValidate(std::int32_t& cancel, std::int32_t row, std::int32_t& col) {
    if (grid().Row() < 1) {
        return;
    }
    const std::int32_t columns = grid().Cols();
    for (std::int32_t c = 0; c < columns; ++c) {
        std::string text = grid().TextMatrix(row, c);
        CellValidate(text, cancel, row, c);
        if (cancel == 1) {
            grid().SetFocus();
            col = c;
            return;
        }
    }
}

void frmCashFlow::AppendRow() {
    const std::int32_t lines = grid().Rows();
    double sum = 0.0;
    for (std::int32_t line = 1; line < lines; ++line) {
        sum += toDouble(grid().TextMatrix(line, 3));
    }
    if (dblCashSum_ > sum) {
        cmdAdd();
    }
}

void frmCashFlow::CheckCell(std::string& text, std::int32_t row, std::int16_t col, bool& ok) {
    ok = true;
    const std::shared_ptr<CashFlow> cf = collection().Item(grid().TextMatrix(row, 7));
    switch (col) {
    case 1:
        ok = checkAccount(text, row, *cf);
        break;
    case 3:
        ok = checkAmount(text, row, *cf);
        break;
    case 4:
        ok = checkItem(text, row, *cf);
        break;
    case 6:
        ok = checkLineNumber(text, *cf);
        break;
    default:
        break;
    }
}

bool frmCashFlow::checkAccount(const std::string& text, std::int32_t row, CashFlow& cf) {
    if (text.empty()) {
        return refuse(modPublic::GetText("Z7.CW.GL.CashFlow.00043"));
    }
    if (!accountFits(text)) {
        return false;
    }
    const auto line = findVoucherLine(text, grid().TextMatrix(row, 6));
    if (!line) {
        return refuse(modPublic::GetText("Z7.CW.GL.CashFlow.00045"));
    }
    FieldList& fields = line->Fields();
    grid().TextMatrix(row, 0, toTextOrEmpty(fields.Item("cdigest")));
    grid().TextMatrix(row, 1, toTextOrEmpty(fields.Item("ccode")));
    grid().TextMatrix(row, 6, toTextOrEmpty(fields.Item("inid")));
    grid().SetCellColor(row, 0, lngFixedColor_);
    bookAmount(row, fields, cf);
    line->Close();
    cf.SetValue("ccode", grid().TextMatrix(row, 1));
    return true;
}

// The account option decides whether rows belong to cash-flow accounts or to all others.
bool frmCashFlow::accountFits(const std::string& ccode) {
    const auto option = connection().Execute(filled(statements::cashCodeOption));
    const bool wantsCashAccounts = asciiUpper(toTextOrEmpty(option->Fields().Item("CValue"))) == "TRUE";
    option->Close();
    const auto account =
        connection().Execute(filled(statements::accountFlag, modPublic::requiredLogin().accountingYear(), ccode));
    if (account->atEnd()) {
        return refuse(modPublic::GetText("Z7.CW.GL.CashFlow.00045"));
    }
    const Variant flag = account->Fields().Item("bCashItem");
    if (!flag.isNull() && toBool(flag) != wantsCashAccounts) {
        if (wantsCashAccounts) {
            return refuse(modPublic::GetText("Z7.GL.ZZPZ.02010"));
        }
        return refuse(asciiUpper(modPublic::requiredLogin().languageTag()) == "ZH-CN"
                          ? "请使用非现金流量科目!"
                          : modPublic::GetText("Z7.GL.ZZPZ.00234"));
    }
    account->Close();
    return true;
}

// The voucher line of a grid line, or a null pointer. If its number is no longer right, the first line with the
// account in the whole table is used.
std::shared_ptr<Recordset> frmCashFlow::findVoucherLine(const std::string& ccode, const std::string& inid) {
    constexpr int attempts = 3;
    const std::string& table = collection().VoucherTable();
    const bool keyed = objData_->HaveVoucherKey(connection(), table);
    const auto statement = [&](int attempt) {
        if (inid.empty()) {
            return keyed ? filled(statements::firstLineOfAccount, table, ccode, voucherKey())
                         : filled(statements::keylessFirstLineOfAccount, table, ccode);
        }
        if (attempt > 0) {
            return filled(statements::linesOfAccount, table, ccode);
        }
        return keyed ? filled(statements::lineOfAccount, table, ccode, voucherKey(), inid)
                     : filled(statements::keylessLineOfAccount, table, ccode, inid);
    };
    for (int attempt = 0; attempt < attempts; ++attempt) {
        auto line = connection().Execute(statement(attempt));
        if (!line->atEnd()) {
            return line;
        }
        line->Close();
    }
    return nullptr;
}

// Proposes the remaining amount of the voucher line if the cell is empty, and stores the cell's amount on the line's
// side.
void frmCashFlow::bookAmount(std::int32_t row, FieldList& line, CashFlow& cf) {
    SuperGrid& cells = grid();
    const Sides taken =
        cells.TextMatrix(row, 3).empty() ? sidesOfLine(collection(), toDouble(line.Item("inid"))) : Sides();
    const bool isDebit = isNonZero(line.Item("md"));
    cells.TextMatrix(row, 2, isDebit ? debitWord() : creditWord());
    if (cells.TextMatrix(row, 3).empty()) {
        cells.TextMatrix(
            row, 3,
            amountInCell(isDebit ? remainder(line.Item("md"), taken.md) : remainder(line.Item("mc"), taken.mc)));
    }
    cf.SetValue(isDebit ? "md" : "mc", amountInRow(cells.TextMatrix(row, 3)));
    cf.SetValue(isDebit ? "mc" : "md", std::int16_t{0});
}

bool frmCashFlow::checkAmount(std::string& text, std::int32_t row, CashFlow& cf) {
    if (leadingNumber(text) == 0.0) {
        return refuse(modPublic::GetText("Z7.CW.GL.CashFlow.00049"));
    }
    const std::string given = text;
    text = amountInCell(given);
    cf.SetValue(grid().TextMatrix(row, 2) == debitWord() ? "md" : "mc", amountInRow(given));
    return true;
}

bool frmCashFlow::checkItem(const std::string& text, std::int32_t row, CashFlow& cf) {
    if (text.empty()) {
        return refuse(modPublic::GetText("Z7.CW.GL.CashFlow.00052"));
    }
    const auto item = connection().Execute(filled(statements::cashFlowItem, text));
    const bool known = !item->atEnd();
    item->Close();
    if (!known) {
        return refuse(modPublic::GetText("Z7.CW.GL.CashFlow.00054"));
    }
    cf.SetValue("cCashItem", text);
    const std::string name = objData_->GetCFItemName(connection(), text);
    if (name.empty()) {
        return false;
    }
    grid().TextMatrix(row, 5, name);
    return true;
}

// cmdOk checks whether the voucher has this line.
bool frmCashFlow::checkLineNumber(const std::string& text, CashFlow& cf) {
    if (!readNumber(text)) {
        return refuse("请输入正确分录行号");
    }
    cf.SetValue("inid", text);
    return true;
}

void frmCashFlow::ReferenceClick(std::string& text, std::int32_t row, std::int32_t col) {
    grid().Col(col);
    if (col == 1) {
        pickVoucherLine(text, row);
    } else if (col == 4) {
        pickItem(text, row);
    }
}

// The amount of the chosen line replaces that of the cell, because the user has chosen another line.
void frmCashFlow::pickVoucherLine(std::string& text, std::int32_t row) {
    constexpr std::int32_t pickOneLine = 5;
    const auto client = createServerRefClient();
    client->RefName("voucher");
    client->RefStyle(pickOneLine);
    auto provider = std::make_shared<DefineRef>();
    const auto key = voucherKey();
    provider->VoucherTable(collection().VoucherTable());
    provider->iPeriod(key.period);
    provider->isignseq(key.kind);
    provider->iNo_id(key.number);
    provider->objCon(objCon_);
    objRefProvider_ = provider;
    std::shared_ptr<Recordset> shown = connection().createRecordset();
    std::shared_ptr<Recordset> picked = connection().createRecordset();
    std::string errorText;
    if (!client->ShowServerRef(objRefProvider_, shown, picked, errorText)) {
        modPublic::ShowMessage(errorText, 0, "", "", 0);
        return;
    }
    if (!picked || picked->State() == ObjectState::closed) {
        return;
    }
    if (!picked->atEnd()) {
        SuperGrid& cells = grid();
        FieldList& line = picked->Fields();
        text = toTextOrEmpty(line.Item("ccode"));
        cells.TextMatrix(row, 6, toTextOrEmpty(line.Item("inid")));
        const Sides taken = leadingNumber(cells.TextMatrix(row, 3)) == 0.0
                                ? sidesOfLine(collection(), toDouble(line.Item("inid")))
                                : Sides();
        const bool isDebit = isNonZero(line.Item("md"));
        cells.TextMatrix(row, 2, isDebit ? debitWord() : creditWord());
        cells.TextMatrix(
            row, 3,
            amountInCell(isDebit ? remainder(line.Item("md"), taken.md) : remainder(line.Item("mc"), taken.mc)));
    }
    picked->Close();
}

void frmCashFlow::pickItem(std::string& text, std::int32_t row) {
    constexpr const char* cashItemClass = "98";
    const auto client = createReferClient();
    client->SetRWAuth("", "", false);
    const std::string pattern = "%" + grid().TextMatrix(row, 4) + "%";
    std::string filter = filled(statements::itemFilter, pattern, pattern);
    if (!client->ItemRefInit(objLogin_, false, cashItemClass, filter)) {
        return;
    }
    client->Show();
    const auto picked = client->recmx();
    if (!picked || picked->State() != ObjectState::open) {
        return;
    }
    if (!picked->atEnd()) {
        text = toTextOrEmpty(picked->Fields().Item("citemcode"));
    }
    picked->Close();
}

} // namespace z7::cashflow
