#pragma once

#include "host/cli/Output.h"
#include "host/report/ReportOptions.h"
#include "host/work/ItemSourceNotes.h"
#include "host/work/Session.h"
#include "z7cashflow/model/CashFlowCollection.h"

#include <string>

namespace z7::cashflow::host {

/// Rows as a table or CSV, as the options ask, or as an array in JSON; a null pointer means no rows. With sources,
/// each row shows where its item comes from.
[[nodiscard]] std::string rowsText(const Output& output, Session& session, const CashFlowCollection* rows,
                                   const ReportOptions& report = {}, const ItemSources* sources = nullptr);

/// Writes rows to standard output as a table, or as an array in JSON; a null pointer means no rows.
void showRows(Output& output, Session& session, const CashFlowCollection* rows);

} // namespace z7::cashflow::host
