#pragma once

#include "workbench/vouchers/Refusal.h"
#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/model/CashFlowCollection.h"

#include <memory>
#include <optional>
#include <string>

namespace z7::cashflow::workbench {

/// The rows of a collection document in a collection of their own. Error 1002 if it cannot be parsed; an empty text has
/// no rows.
[[nodiscard]] std::shared_ptr<CashFlowCollection> rowsOfDocument(const std::string& document);

/// Why a document that was parsed must not be stored under a voucher: it is not a document of cash-flow rows (root
/// "root" with an element "rows"), or, unless forced, the voucher that its root or one of its rows names is another.
/// What it does not name is not compared.
[[nodiscard]] std::optional<Refusal> foreignRows(const std::string& document, const VoucherKey& key, bool force);

} // namespace z7::cashflow::workbench
