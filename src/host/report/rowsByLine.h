#pragma once

#include "z7cashflow/model/CashFlowCollection.h"

#include <memory>
#include <vector>

namespace z7::cashflow::host {

/// The rows of a collection, sorted by entry line, since a server returns them in any order. Rows of the same line
/// keep their order; rows without a line number come first.
[[nodiscard]] std::vector<std::shared_ptr<CashFlow>> rowsByLine(const CashFlowCollection& rows);

} // namespace z7::cashflow::host
