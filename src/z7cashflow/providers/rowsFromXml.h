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

/// Rows from collection XML for a stored voucher: account, amounts and quantities are those of the XML, every other
/// field is that of the voucher's line if it has a column with that name. The key of an outside voucher is looked
/// up in the ledger; an empty outside key means a voucher without a number. Error 1002 if the XML cannot be parsed,
/// 10011 if the voucher does not exist.
[[nodiscard]] std::shared_ptr<CashFlowCollection>
LoadCashFlowColFromXml(const std::string& strCFColxml, Connection& objCon, const std::string& strVoucherTable,
                       const std::variant<VoucherKey, OutsideKey>& voucher);

/// Rows of a voucher given as XML: generated ones (blnCreateCF), otherwise the stored ones, possibly a null
/// pointer. The temporary table that it creates is dropped, unless an error is raised.
[[nodiscard]] std::shared_ptr<CashFlowCollection>
GetCashFlowColFromVoucherXml(Connection& objCon, const std::string& strVoucherXml, bool blnCreateCF,
                             const ProviderSettings& settings, IGlVoucherProvider& gl, IOutVoucherProvider& out);

/// The XML of a collection; that of a collection without rows for a null pointer.
[[nodiscard]] std::string saveOrEmpty(const std::shared_ptr<CashFlowCollection>& collection);

} // namespace z7::cashflow
