#pragma once

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/DialogForm.h"
#include "z7cashflow/ports/ReferenceProvider.h"
#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/statements/VoucherKey.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow {

class IGlVoucherProvider;

/// The modal dialog in which a user edits the cash-flow rows of one voucher: a grid with a line for each row, and
/// seven buttons.
///
/// It changes the collection directly: every accepted cell is stored in its row at once. Rows are not saved here.
/// An object is used once: ReadOnly, LoadData, showModal, then CashFlowCol.
class frmCashFlow final : public FormEvents {
public:
    frmCashFlow();
    virtual ~frmCashFlow();
    frmCashFlow(const frmCashFlow&) = delete;
    frmCashFlow& operator=(const frmCashFlow&) = delete;

    /// The dialog's collection: the one given to LoadData, or its replacement by a regeneration.
    [[nodiscard]] const std::shared_ptr<CashFlowCollection>& CashFlowCol() const noexcept { return CashFlowCol_; }
    /// Whether the dialog is read-only; must be set before LoadData.
    [[nodiscard]] bool ReadOnly() const noexcept { return ReadOnly_; }
    void ReadOnly(bool value) noexcept { ReadOnly_ = value; }

    /// Fills the grid with the rows of a collection; the first call creates the window. Without a collection it
    /// does nothing. With blnCheckCF, OK compares the sums of an empty collection, too. Errors of the
    /// connection, the statements and the window system pass through; 91 without the host's factories.
    void LoadData(const std::shared_ptr<Z7Login>& objLogin, const std::shared_ptr<CashFlowCollection>& CashFlowCol,
                  bool blnCheckCF);
    /// After asking the user, stores the widths of a grid's columns under the name of a layout if they differ
    /// from the stored ones by more than 60 twips. Failures are ignored, except for a message about a failure
    /// while writing.
    void SaveMyColWidth(SuperGrid& grid, const std::string& name);
    /// Shows the dialog until it is closed. Call LoadData first.
    void showModal();

    // Events of the window.
    void BeforeEdit(bool& cancel, std::int32_t column) override;
    void CellValidate(std::string& text, std::int32_t& cancel, std::int32_t row, std::int32_t col) override;
    void RowValidate(std::int32_t& cancel, std::int32_t row, std::int32_t& col) override;
    void ReferenceClick(std::string& text, std::int32_t row, std::int32_t col) override;
    void AppendRow() override;
    void click(const std::string& button) override;
    void keyDown(std::int32_t& keyCode, std::int32_t shift) override;
    void closeRequested() override;
    void eventFailed(const Error& error) override;

private:
    using Widths = std::vector<std::int16_t>;

    // The window, created on the first use of a control.
    DialogForm& form();
    SuperGrid& grid() { return form().grid("SuperGrid1"); }
    void loadForm();
    void InitCaptions();
    void InitGrid();
    static void ApplyGridColors(SuperGrid& grid);
    void fillLine(std::int32_t line, const CashFlow& row, Recordset& summary, Connection& local);
    void colourLine(std::int32_t line);

    // Closing.
    void unload();
    void queryUnload();
    void removeUnfinishedRows();

    // Editing.
    void CheckCell(std::string& text, std::int32_t row, std::int16_t col, bool& ok);
    [[nodiscard]] bool checkAccount(const std::string& text, std::int32_t row, CashFlow& cf);
    [[nodiscard]] bool accountFits(const std::string& ccode);
    [[nodiscard]] std::shared_ptr<Recordset> findVoucherLine(const std::string& ccode, const std::string& inid);
    [[nodiscard]] bool checkAmount(std::string& text, std::int32_t row, CashFlow& cf);
    [[nodiscard]] bool checkItem(const std::string& text, std::int32_t row, CashFlow& cf);
    [[nodiscard]] bool checkLineNumber(const std::string& text, CashFlow& cf);
    void bookAmount(std::int32_t row, FieldList& line, CashFlow& cf);
    void pickVoucherLine(std::string& text, std::int32_t row);
    void pickItem(std::string& text, std::int32_t row);

    // Commands.
    void cmdTemplate();
    void cmdAutoGetData();
    void cmdAdd();
    void cmdInsert();
    void cmdDel();
    void cmdOk();
    void cmdCancel();
    void takeOverFromAbove(std::int32_t above, CashFlow& cf);
    void standardExit();
    void removePendingRow();
    [[nodiscard]] bool settled();
    [[nodiscard]] bool allLinesValid();
    void closeIfSumsMatch(IGlVoucherProvider& provider);
    void LocateErrorCell(std::string& strInfo);
    void objData_CashFlowTemplateSave(const std::string& message, std::int32_t style, bool& bCancel);

    // Column widths.
    void LoadMyColWidth(SuperGrid& grid, const std::string& name);
    void ReadMyColWidth(const std::string& name, std::int16_t mode, Widths& widths, bool& found);
    void WriteMyColWidth(const std::string& name, std::int16_t mode, const Widths& widths);
    /// The highest index of an array; 0 for an empty one.
    [[nodiscard]] static std::int16_t ArrayUpper(const Widths& widths);
    [[nodiscard]] bool shouldWrite(const std::string& name, std::int16_t mode, const Widths& widths);

    [[nodiscard]] Connection& connection() const;
    [[nodiscard]] CashFlowCollection& collection() const;
    [[nodiscard]] VoucherKey voucherKey() const;

    std::shared_ptr<CashFlowCollection> CashFlowCol_;
    std::shared_ptr<Z7Login> objLogin_;
    std::shared_ptr<Connection> objCon_;
    std::shared_ptr<DataProvider> objData_;
    std::string strOriginalXml_; ///< the rows at the last LoadData; empty for none
    bool ReadOnly_ = false;
    std::int32_t lngFixedColor_ = 0;
    std::shared_ptr<ReferenceProvider> objRefProvider_;
    std::string strLastKey_; ///< key of the row last created by cmdAdd or cmdInsert
    bool blnCheckCF_ = false;
    double dblCashSum_ = 0.0; ///< debit less credit of the voucher's cash accounts at the first LoadData
    bool blnClosing_ = false;
    bool blnCancelled_ = false;
    std::unique_ptr<DialogForm> form_;
};

} // namespace z7::cashflow
