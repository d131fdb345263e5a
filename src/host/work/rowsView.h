#pragma once

#include "host/cli/Output.h"
#include "host/report/ReportOptions.h"
#include "host/work/ItemSourceNotes.h"
#include "host/work/Session.h"
#include "z7cashflow/model/CashFlowCollection.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace z7::cashflow::host {

/// Rows as a table or CSV, as the options ask; a null pointer means no rows. With sources, each row shows where its
/// item comes from.
[[nodiscard]] std::string rowsText(const Output& output, Session& session, const CashFlowCollection* rows,
                                   const ReportOptions& report = {}, const ItemSources* sources = nullptr);

/// The same rows as an array in JSON, with or without their identities, see rowsJson.
[[nodiscard]] nlohmann::ordered_json rowsArray(const CashFlowCollection* rows, bool identities,
                                               const ItemSources* sources = nullptr);

/// Writes rows to standard output as a table; with --json as the member "rows" of a record that begins with the given
/// members. A null pointer means no rows.
void showRows(Output& output, Session& session, const CashFlowCollection* rows, nlohmann::ordered_json record,
              bool identities);

} // namespace z7::cashflow::host
