#pragma once

#include "z7cashflow/providers/IGlVoucherProvider.h"
#include "z7cashflow/providers/ProviderSettings.h"
#include "z7cashflow/statements/VoucherKey.h"

#include <memory>
#include <string>

namespace z7::cashflow {

/// Sets the context's year to that of a date; to 1900 if no accounting period contains the date.
void setYearOf(Connection& objCon, Date date);

/// Reads the account option bCashCode into the context.
void readCashCodeOption(Connection& objCon);

/// Saves the rows of one ledger voucher.
struct GlSave {
    Connection& objCon;
    IGlVoucherProvider& gl;
    const ProviderSettings& settings;
    const std::string& strVoucherTable;
    VoucherKey key;
    Date bill_date; ///< 1900-01-01 if the caller does not know the date

    /// Executes the save. If objCFCol is a null pointer, it is set to the rows that were found or generated.
    /// All errors are raised with the source "CashFlow".
    bool SaveCashFlowColCore(std::shared_ptr<CashFlowCollection>& objCFCol, bool blnCheckCF) const;

private:
    bool save(std::shared_ptr<CashFlowCollection>& objCFCol, bool blnCheckCF) const;
    void findRows(std::shared_ptr<CashFlowCollection>& objCFCol, const std::string& table) const;
    [[nodiscard]] Date dateOfVoucher() const;
    void check(const std::shared_ptr<CashFlowCollection>& objCFCol, const std::string& table, bool blnCheckCF) const;
    void removeReplacedRows(const CashFlowCollection& collection) const;
    void removeLeftBehind(const CashFlowCollection* collection) const;
    void takeCurrencyName() const;
};

} // namespace z7::cashflow
