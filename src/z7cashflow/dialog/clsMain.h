#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

class frmCashFlow;

/// The interface for voucher screens: prepares the cash-flow rows of the voucher on the screen and shows the dialog
/// for them. It does not save; afterwards the host saves CashFlowCol through a provider.
///
/// The host first sets Login, and once per thread the connection factory and the dialog factory of
/// modPublic::Context. The rows in CashFlowCol are kept between calls as long as the voucher's key is the same.
class clsMain final {
public:
    // Properties of the voucher on the screen, stored in the thread's context.
    /// Kept for the host; the library does not use it.
    void SetVouchLockSucc(bool value);
    /// Whether a voucher of another user may be edited.
    void SetVouchEdit(bool value);
    /// The user at the screen, and the user who entered the voucher. If they differ, SetVouchEdit decides.
    void SetCurUserName(const std::string& value);
    /// The user who entered the voucher; see SetCurUserName.
    void SetVouchBillName(const std::string& value);
    /// State of the voucher; if it is 2, no stored rows are read.
    void SetVouchState(std::int16_t value);
    /// Kept for the host; the library does not use it.
    void SetVouchIn(std::int16_t value);
    /// Whether the dialog is read-only.
    [[nodiscard]] bool ReadOnly() const noexcept { return ReadOnly_; }
    /// Makes the dialog read-only, or editable as by default.
    void ReadOnly(bool value) noexcept { ReadOnly_ = value; }
    /// The user's login for this thread; must be set before any other operation. Errors as for
    /// modPublic::SetLogin.
    void Login(const std::shared_ptr<Z7Login>& value);
    /// The rows of the voucher, shared with the host; a null pointer at first.
    [[nodiscard]] const std::shared_ptr<CashFlowCollection>& CashFlowCol() const noexcept { return CashFlowCol_; }
    /// Hands over the rows to begin with; a null pointer lets the dialog read or generate them.
    void CashFlowCol(const std::shared_ptr<CashFlowCollection>& value) { CashFlowCol_ = value; }

    /// Shows the dialog for the rows of a voucher of another subsystem, or a message if the voucher has no line
    /// on a cash-flow account. dbill_date is used only for a collection that is read here. blnCheckCF (default:
    /// true) makes OK compare the sums of an empty collection, too. All errors pass to the host. A collection
    /// that was read here does not name a voucher table, so the dialog's first summary fails with the
    /// database's error.
    void ShowCashFlowOutVoucher(const std::string& strVoucherTable, const std::string& coutNo_id, Date dbill_date,
                                bool blnCreate = true, const bool* blnCheckCF = nullptr);
    /// Shows the dialog for the rows of a ledger voucher in the year iyear (default: 0, the login's year), or a
    /// message if the voucher has no line on a cash-flow account. Rows are read if CashFlowCol has none, and
    /// generated if none are stored and blnCreate is true. With blnCreate and the operator's option
    /// iUpdateCashFlow they are always generated and keep the items that CashFlowCol had. All errors pass to
    /// the host.
    void ShowCashFlow(const std::string& strVoucherTable, std::uint8_t iPeriod, std::int16_t isignseq,
                      std::int32_t iNo_id, Date dbill_date, bool blnCreate = true, const bool* blnCheckCF = nullptr,
                      const std::int16_t* iyear = nullptr);
    /// Prepares CashFlowCol like ShowCashFlow, but without the option iUpdateCashFlow and without a dialog.
    /// Returns false on any failure, and if the voucher has no line on a cash-flow account; no message is
    /// shown. If not even a connection could be opened, closing it raises an error: 3704, or 91 if none was
    /// created.
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
    std::shared_ptr<CashFlowCollection> former_; ///< the rows before the last regeneration
    bool ReadOnly_ = false;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
