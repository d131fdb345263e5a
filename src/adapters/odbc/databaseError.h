#pragma once

#include "adapters/odbc/nativeCalls.h"
#include "z7cashflow/support/Error.h"

#include <string>
#include <vector>

namespace z7::cashflow::odbc {

/// The source of errors from a driver or from its server.
inline constexpr const char* errorSource = "ODBC";

/// What a driver reports about a failed call.
struct DatabaseError {
    Error error;
    bool connectionLost = false; ///< the connection to the server is lost
};

/// The report on the last call with a handle as one error: the number, state and text of the most informative record,
/// those of the server before those of the driver, followed by the texts of the others, with every secret masked. The
/// vendors' names in brackets before a text are removed.
[[nodiscard]] DatabaseError databaseError(short handleType, Handle handle, const std::vector<std::string>& secrets);

} // namespace z7::cashflow::odbc
