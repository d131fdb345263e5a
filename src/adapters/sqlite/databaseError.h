#pragma once

#include "adapters/sqlite/SqliteReason.h"

#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_context;

namespace z7::cashflow::sqlite {

/// The source of the errors that this adapter raises itself or passes on from the database library.
inline constexpr const char* errorSource = "SQLite";

/// Raises the handle's last error with its extended result code, its text and the SQL state that fits it. A remark
/// takes that text as its last place.
[[noreturn]] void raiseDatabaseError(sqlite3* handle, Explanation remark = {});
/// The same for a result code without a handle, or where another text says more.
[[noreturn]] void raiseDatabaseError(int code, Explanation why);
/// The same for a reason with the result code of its own.
[[noreturn]] void raiseDatabaseError(SqliteReason reason, std::vector<std::string> arguments = {});

/// Ends a function that a statement has called. The error of that statement has this explanation.
void failFunction(sqlite3_context* context, Explanation why);

} // namespace z7::cashflow::sqlite
