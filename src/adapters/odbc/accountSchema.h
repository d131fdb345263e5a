#pragma once

#include "z7cashflow/ports/Connection.h"

#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::odbc {

/// The name of the suite's system database, which all accounts of a server share.
inline constexpr const char* systemDatabase = "zqsystem";

/// The version of the schema that makeAccountSchema makes; the account's view z7_schema_version says it in its column
/// "version".
inline constexpr int accountSchemaVersion = 1;

/// The batches of a script, which lines end that say "go" and nothing else, in any letter case. Such a line within a
/// text, a quoted name or a comment ends none. Batches without a statement are left out. Error 105 or 113 for a quote
/// or a comment that is not closed.
[[nodiscard]] std::vector<std::string> scriptBatches(std::string_view script);

/// The names of the tables and views that an account has in its own database.
[[nodiscard]] std::vector<std::string> accountNames();
/// The names of the tables that the suite's system database has.
[[nodiscard]] std::vector<std::string> systemNames();

// What follows works on an open session of a server that speaks Transact-SQL. Errors are the server's.

/// The database that the session works in.
[[nodiscard]] std::string currentDatabase(Connection& connection);
/// Leads the session to another database.
void workIn(Connection& connection, const std::string& database);
[[nodiscard]] bool databaseExists(Connection& connection, const std::string& database);
/// Makes an empty database, with the collation of the session's own unless that tells upper from lower case. Not within
/// a transaction.
void makeDatabase(Connection& connection, const std::string& database);
/// Not within a transaction.
void dropDatabase(Connection& connection, const std::string& database);

/// Whether the session's database compares texts without regard to letter case, as the suite's statements need.
[[nodiscard]] bool ignoresLetterCase(Connection& connection);
/// Those of some tables and views that the session's database has already.
[[nodiscard]] std::vector<std::string> namesThere(Connection& connection, const std::vector<std::string>& names);

/// Makes the account's tables and views in the session's database, and in the system database what is missing there.
/// The session works in its own database afterwards. All of it belongs to the caller's transaction.
void makeAccountSchema(Connection& connection);

} // namespace z7::cashflow::odbc
