#pragma once

#include "adapters/sqlite/Connection.h"

namespace z7::cashflow::sqlite {

/// Adds the tables of the log of changes to an account that was made without them. They belong to the caller's
/// transaction. Error of the database if one of them is there.
void addLogTables(Connection& connection);

} // namespace z7::cashflow::sqlite
