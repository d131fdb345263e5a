#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::odbc {

/// The name of the suite's system database, which all accounts of a server share.
inline constexpr const char* systemDatabase = "zqsystem";

/// The version of the schema that makeAccountSchema creates; the account's view z7_schema_version returns it in its
/// column "version".
inline constexpr int accountSchemaVersion = 1;

/// The batches of a script, which are separated by lines that consist of "go" in any letter case, except within a
/// text, a quoted name or a comment. Batches without a statement are left out. Error 105 or 113 for an unclosed
/// quote or comment.
[[nodiscard]] std::vector<std::string> scriptBatches(std::string_view script);

/// The names of the tables and views in an account's own database.
[[nodiscard]] std::vector<std::string> accountNames();
/// The names of the tables in the suite's system database.
[[nodiscard]] std::vector<std::string> systemNames();

// The following functions use an open session on a server that speaks Transact-SQL. Errors are those of the server.

/// The session's current database.
[[nodiscard]] std::string currentDatabase(Connection& connection);
/// Switches the session to another database.
void workIn(Connection& connection, const std::string& database);
/// Whether the server has a database of that name.
[[nodiscard]] bool databaseExists(Connection& connection, const std::string& database);
/// Creates an empty database, with the collation of the session's database unless that is case-sensitive. Not
/// within a transaction.
void makeDatabase(Connection& connection, const std::string& database);
/// Not within a transaction.
void dropDatabase(Connection& connection, const std::string& database);

/// Whether the session's database compares texts without regard to letter case, as the suite's statements require.
[[nodiscard]] bool ignoresLetterCase(Connection& connection);
/// Those of the given tables and views that already exist in the session's database.
[[nodiscard]] std::vector<std::string> namesThere(Connection& connection, const std::vector<std::string>& names);

/// Creates the account's tables and views in the session's database, and missing tables in the system database.
/// Afterwards the session uses its own database again. Everything belongs to the caller's transaction.
void makeAccountSchema(Connection& connection);
/// Adds the tables of the log of changes to an account that was made without them. They belong to the caller's
/// transaction.
void addLogTables(Connection& connection);

} // namespace z7::cashflow::odbc

Z7_PUBLIC_END
