#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/ports/Connection.h"

#include <string>

namespace z7::cashflow {

/// Whether each row has its line in the voucher that the collection names, is on the same account and is complete. If
/// not, strInfo becomes the reason of the first row that fails; if so, strInfo stays.
[[nodiscard]] bool CheckColAgainstVoucher(Connection& objCon, const CashFlowCollection& collection,
                                          std::string& strInfo);

/// As CheckColAgainstVoucher, and whether the rows' sum matches the voucher's cash sum to less than 0.001. Rows on
/// accounts that are not cash-flow accounts count with the opposite sign, since they are on the other side of the
/// voucher.
[[nodiscard]] bool CheckColSum(Connection& objCon, const CashFlowCollection& collection, double voucherSum,
                               std::string& strInfo);

} // namespace z7::cashflow
