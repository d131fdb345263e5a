#pragma once

#include "host/cli/Output.h"
#include "host/work/Session.h"
#include "z7cashflow/model/CashFlowCollection.h"

#include <memory>
#include <string>

namespace z7::cashflow::host {

/// The rows of a collection document in a collection of their own. Error 1002 if it cannot be parsed; an empty text has no rows.
[[nodiscard]] std::shared_ptr<CashFlowCollection> rowsOfDocument(const std::string& document);

/// Writes rows as a table for people or an array for machines; a null pointer stands for no rows.
void showRows(Output& output, Session& session, const CashFlowCollection* rows);

} // namespace z7::cashflow::host
