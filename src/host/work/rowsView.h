#pragma once

#include "host/cli/Output.h"
#include "host/work/ItemSourceNotes.h"
#include "host/work/Session.h"
#include "z7cashflow/model/CashFlowCollection.h"

namespace z7::cashflow::host {

/// Writes rows as a table, or as an array in JSON; a null pointer means no rows. With sources, each row shows where
/// its item comes from.
void showRows(Output& output, Session& session, const CashFlowCollection* rows, const ItemSources* sources = nullptr);

} // namespace z7::cashflow::host
