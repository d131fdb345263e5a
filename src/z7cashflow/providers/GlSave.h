#pragma once

#include "z7cashflow/providers/IGlVoucherProvider.h"
#include "z7cashflow/providers/ProviderSettings.h"
#include "z7cashflow/statements/VoucherKey.h"

#include <memory>
#include <string>

namespace z7::cashflow {

/// Makes the year of a date the context's year; 1900 where the date lies in no accounting period.
void setYearOf(Connection& objCon, Date date);

/// Reads the account option bCashCode into the context.
void readCashCodeOption(Connection& objCon);

/// One save of the rows of one ledger voucher.
struct GlSave {
    Connection& objCon;
    IGlVoucherProvider& gl;
    const ProviderSettings& settings;
    const std::string& strVoucherTable;
    VoucherKey key;
    Date bill_date; ///< 1900-01-01 where the caller knows no date

    /// Runs the save. objCFCol may come in as nothing and then goes out as the rows that were found or made. Every
    /// error comes out with the source "CashFlow".
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
