#pragma once

#include <string>

struct sqlite3;

namespace z7::cashflow::sqlite {

/// The source of the errors that this adapter raises itself or passes on from the database library.
inline constexpr const char* errorSource = "SQLite";

/// Raises the handle's last error with its extended result code, its text and the SQL state that fits it. The remark,
/// if there is one, follows the text.
[[noreturn]] void raiseDatabaseError(sqlite3* handle, const std::string& remark = {});
/// The same for a result code when there is no handle, or another text tells more.
[[noreturn]] void raiseDatabaseError(int code, const std::string& text);

} // namespace z7::cashflow::sqlite
