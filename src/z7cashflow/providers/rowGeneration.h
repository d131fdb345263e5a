#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/statements/VoucherKey.h"
#include "z7cashflow/support/Date.h"

#include <memory>

namespace z7::cashflow {

/// Debit less credit of a voucher's lines on cash-flow accounts, from the current record to the end. If it is
/// exactly 0, the voucher needs no rows. Error 94 if an amount of such a line is missing.
[[nodiscard]] double cashSum(Recordset& lines);

/// Creates rows from the records of stored rows or of voucher lines, from the current record to the end, and closes
/// the recordset. Returns a null pointer if it is empty. Rows are created for the lines on the side of the voucher
/// given by the context's bCashCode; a row without an item is kept only if bAutoDisplay is set. Rows get the date
/// dbill_date; the collection gets the outside key unless it is empty, and the key of the first record if it has
/// one.
[[nodiscard]] std::shared_ptr<CashFlowCollection> GetCashFlowColFromRs(Connection& objCon, Recordset& records,
                                                                       Date dbill_date, const OutsideKey& outsideKey,
                                                                       bool bFromDraft);

/// Updates the descriptive fields of rows from the voucher, without changing the allocation: RowGuid, item, account
/// and the two amounts are kept. The voucher is the one named by the collection.
void RefreshColFromVoucher(Connection& objCon, CashFlowCollection& collection);

/// Filters a voucher's lines to the one to which a row belongs. Error 3001 if the row has no line number.
void filterToLineOf(const CashFlow& row, Recordset& lines, const CashFlowCollection& collection, bool keyed);

/// Whether two account codes are known and equal, including letter case.
[[nodiscard]] bool sameAccount(const Variant& a, const Variant& b);

} // namespace z7::cashflow
