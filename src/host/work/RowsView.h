#pragma once

#include "host/cli/Output.h"
#include "host/work/Session.h"
#include "z7cashflow/model/CashFlowCollection.h"

namespace z7::cashflow::host {

/// Writes rows as a table for people or an array for machines; a null pointer stands for no rows.
void showRows(Output& output, Session& session, const CashFlowCollection* rows);

} // namespace z7::cashflow::host
