#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/statements/VoucherKey.h"
#include "z7cashflow/support/Date.h"

#include <memory>

namespace z7::cashflow {

/// Debit less credit over a voucher's lines on cash-flow accounts, from the current record to the end. A voucher of
/// which it is exactly 0 needs no rows. Error 94 if such a line lacks an amount.
[[nodiscard]] double cashSum(Recordset& lines);

/// Makes rows of the records of stored rows or of voucher lines, from the current record to the end, and closes the
/// recordset. Nothing comes back for an empty one. Lines give rows on the side of the voucher that the context's
/// bCashCode names; a row that finds no item is kept only where bAutoDisplay is set. Rows get the date dbill_date; the
/// collection gets outside key unless it is empty, and the key of the first record if it has one.
[[nodiscard]] std::shared_ptr<CashFlowCollection> GetCashFlowColFromRs(Connection& objCon, Recordset& records,
                                                                       Date dbill_date, const OutsideKey& outsideKey,
                                                                       bool bFromDraft);

/// Copies the voucher's present descriptive fields to rows that are older than the voucher, without touching what was
/// allocated: RowGuid, item, account and the two amounts stay. The voucher is the one that the collection names.
void RefreshColFromVoucher(Connection& objCon, CashFlowCollection& collection);

/// Shows of a voucher's lines only the one that a row belongs to. Error 3001 if the row has no line number.
void filterToLineOf(const CashFlow& row, Recordset& lines, const CashFlowCollection& collection, bool keyed);

/// Whether two account codes are known and the same, letter case included.
[[nodiscard]] bool sameAccount(const Variant& a, const Variant& b);

} // namespace z7::cashflow
