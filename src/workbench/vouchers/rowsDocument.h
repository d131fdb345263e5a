#pragma once

#include "workbench/vouchers/Refusal.h"
#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <optional>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// Parses the rows of a collection document into a new collection. Error 1002 if it cannot be parsed; an empty text
/// has no rows.
[[nodiscard]] std::shared_ptr<CashFlowCollection> rowsOfDocument(const std::string& document);

/// Why a parsed document must not be stored for a voucher: it does not contain cash-flow rows (root "root" with an
/// element "rows"), or, unless force is set, its root or one of its rows names another voucher. Parts of the key
/// that are not named are not compared.
[[nodiscard]] std::optional<Refusal> foreignRows(const std::string& document, const VoucherKey& key, bool force);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
