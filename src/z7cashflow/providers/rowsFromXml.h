#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/providers/IGlVoucherProvider.h"
#include "z7cashflow/providers/IOutVoucherProvider.h"
#include "z7cashflow/providers/ProviderSettings.h"
#include "z7cashflow/statements/VoucherKey.h"

#include <memory>
#include <string>
#include <variant>

namespace z7::cashflow {

/// Rows from collection XML for a voucher that is stored: account, amounts and quantities stay as the XML has them,
/// every other field follows the voucher's line where it has a column of that name. The key of an outside voucher is
/// looked up in the ledger; an empty outside key means a voucher without a number. Error 1002 if the XML cannot be
/// parsed, 10011 if there is no such voucher.
[[nodiscard]] std::shared_ptr<CashFlowCollection>
LoadCashFlowColFromXml(const std::string& strCFColxml, Connection& objCon, const std::string& strVoucherTable,
                       const std::variant<VoucherKey, OutsideKey>& voucher);

/// Rows of a voucher that is given as XML: generated ones (blnCreateCF), else the stored ones, which may be nothing.
/// The temporary table that it makes is dropped, unless an error comes out.
[[nodiscard]] std::shared_ptr<CashFlowCollection>
GetCashFlowColFromVoucherXml(Connection& objCon, const std::string& strVoucherXml, bool blnCreateCF,
                             const ProviderSettings& settings, IGlVoucherProvider& gl, IOutVoucherProvider& out);

/// The XML of a collection; of no rows where there is none.
[[nodiscard]] std::string saveOrEmpty(const std::shared_ptr<CashFlowCollection>& collection);

} // namespace z7::cashflow
