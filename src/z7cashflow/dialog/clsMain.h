#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/support/Date.h"

#include <cstdint>
#include <memory>
#include <string>

namespace z7::cashflow {

class frmCashFlow;

/// What a voucher screen talks to: prepares the cash-flow rows of the voucher on the screen and shows the dialog on
/// them. It saves nothing; the host saves CashFlowCol through a provider afterwards.
///
/// The host sets Login first, and once for the thread the connection factory and the dialog factory of
/// modPublic::Context. Rows in CashFlowCol are kept from call to call as long as the voucher's key stays.
class clsMain final {
public:
    // The surroundings of the voucher on the screen, kept in the thread's context.
    void SetVouchLockSucc(bool value);
    /// Whether a voucher that another user made may be edited.
    void SetVouchEdit(bool value);
    /// The user at the screen, and the one who made the voucher: where they differ, SetVouchEdit decides.
    void SetCurUserName(const std::string& value);
    void SetVouchBillName(const std::string& value);
    /// State of the voucher; with 2 no stored rows are read.
    void SetVouchState(std::int16_t value);
    void SetVouchIn(std::int16_t value);
    /// Whether the dialog may change nothing.
    [[nodiscard]] bool ReadOnly() const noexcept { return ReadOnly_; }
    void ReadOnly(bool value) noexcept { ReadOnly_ = value; }
    /// The user's login, for this thread; to be set before any other operation. Error as modPublic::SetLogin.
    void Login(const std::shared_ptr<Z7Login>& value);
    /// The rows of the voucher, shared with the host; nothing at first.
    [[nodiscard]] const std::shared_ptr<CashFlowCollection>& CashFlowCol() const noexcept { return CashFlowCol_; }
    void CashFlowCol(const std::shared_ptr<CashFlowCollection>& value) { CashFlowCol_ = value; }

    /// Shows the dialog on the rows of a voucher of another subsystem. A message in its place where the voucher touches
    /// no cash-flow account. dbill_date reaches only a collection that is read here. blnCheckCF (left out: true) lets
    /// OK compare the sums of an empty collection too. Every error reaches the host; a collection that was read here
    /// names no voucher table, so that the dialog's first summary fails with the database's error.
    void ShowCashFlowOutVoucher(const std::string& strVoucherTable, const std::string& coutNo_id, Date dbill_date,
                                bool blnCreate = true, const bool* blnCheckCF = nullptr);
    /// Shows the dialog on the rows of a ledger voucher in the year iyear (left out: 0, the login's). A message in its
    /// place where the voucher has no line on a cash-flow account. Rows are read where CashFlowCol has none, and
    /// generated where none are stored and blnCreate says so; with blnCreate and the operator's option iUpdateCashFlow
    /// they are generated in any case and keep the items that CashFlowCol had. Every error reaches the host.
    void ShowCashFlow(const std::string& strVoucherTable, std::uint8_t iPeriod, std::int16_t isignseq,
                      std::int32_t iNo_id, Date dbill_date, bool blnCreate = true, const bool* blnCheckCF = nullptr,
                      const std::int16_t* iyear = nullptr);
    /// Prepares CashFlowCol as ShowCashFlow does, without the option iUpdateCashFlow and without a dialog. False on any
    /// failure, and where the voucher has no line on a cash-flow account; nothing is shown. A connection that could not
    /// even be opened is an error of its closing: 3704, or 91 where none was made.
    bool InitCashFlow(const std::string& strVoucherTable, std::uint8_t iPeriod, std::int16_t isignseq,
                      std::int32_t iNo_id, Date dbill_date, bool blnCreate = true, const bool* blnCheckCF = nullptr);

private:
    struct Voucher;

    static void readOptions(Connection& objCon);
    void takeRowsOf(Connection& objCon, const Voucher& voucher);
    void regenerate(Connection& objCon, const Voucher& voucher);
    void finishCollection(const Voucher& voucher);
    void takeOutsideRows(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
                         Date dbill_date, bool blnCreate);
    void removeAllRows();
    void showDialog(frmCashFlow& dialog, bool blnCheckCF);

    std::shared_ptr<CashFlowCollection> CashFlowCol_;
    std::shared_ptr<CashFlowCollection> former_; ///< the rows as they were before the last regeneration
    bool ReadOnly_ = false;
};

} // namespace z7::cashflow
