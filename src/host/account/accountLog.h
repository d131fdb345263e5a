#pragma once

#include "z7cashflow/ports/Connection.h"

namespace z7::cashflow::host {

/// Adds the log of changes to an account that was made without it, in a transaction of its own. Returns false if the
/// account has it. Failure (refused) if the schema of a server's account has another version than the program works
/// with. Errors of the database, such as a lack of rights; then nothing has been added.
[[nodiscard]] bool startLog(Connection& connection);

} // namespace z7::cashflow::host
