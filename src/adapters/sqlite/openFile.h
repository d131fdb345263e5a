#pragma once

#include "adapters/sqlite/ConnectionOptions.h"

struct sqlite3;

namespace z7::cashflow::sqlite {

/// Opens an account's file with its companions attached, ready for a session, after checking that they are what they should be.
/// The handle is the caller's. An Error names the file and what can be done.
[[nodiscard]] sqlite3* openAccount(const ConnectionOptions& options);

} // namespace z7::cashflow::sqlite
