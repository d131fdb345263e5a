#pragma once

#include "adapters/sqlite/SqliteReason.h"

#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_context;

namespace z7::cashflow::sqlite {

/// The source of errors that this adapter raises or passes on from the database library.
inline constexpr const char* errorSource = "SQLite";

/// Raises the handle's last error with its extended result code, its text and the appropriate SQL state. If there
/// is a remark, its last place is filled with that text.
[[noreturn]] void raiseDatabaseError(sqlite3* handle, Explanation remark = {});
/// The same for a result code without a handle, or with a more informative text.
[[noreturn]] void raiseDatabaseError(int code, Explanation why);
/// The same for a reason with its own result code.
[[noreturn]] void raiseDatabaseError(SqliteReason reason, std::vector<std::string> arguments = {});

/// Makes a function called by a statement fail. The error of the statement has this explanation.
void failFunction(sqlite3_context* context, Explanation why);

} // namespace z7::cashflow::sqlite
