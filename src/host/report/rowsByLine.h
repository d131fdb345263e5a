#pragma once

#include "z7cashflow/model/CashFlowCollection.h"

#include <memory>
#include <vector>

namespace z7::cashflow::host {

/// The rows of a collection by the numbers of their entry lines, for people and machines that compare two lists: a
/// server returns rows in any order. Rows of one line stay in the order that they have; a row without a line number
/// comes first.
[[nodiscard]] std::vector<std::shared_ptr<CashFlow>> rowsByLine(const CashFlowCollection& rows);

} // namespace z7::cashflow::host
