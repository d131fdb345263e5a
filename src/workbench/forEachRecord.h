#pragma once

#include "z7cashflow/ports/Connection.h"

#include <string>

namespace z7::cashflow::workbench {

/// Calls a function with the fields of each record of a query. Errors of the database and of the function pass
/// through.
template <class Action> void forEachRecord(Connection& connection, const std::string& query, Action&& action) {
    const auto records = connection.Execute(query);
    for (; !records->atEnd(); records->MoveNext()) {
        action(records->Fields());
    }
}

} // namespace z7::cashflow::workbench
