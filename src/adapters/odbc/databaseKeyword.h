#pragma once

#include <optional>
#include <string>

namespace z7::cashflow::odbc {

/// The database that a connection string names by the driver's keyword Database; empty if the data source or the
/// login decides. Error 5 for a string that cannot be parsed.
[[nodiscard]] std::optional<std::string> databaseNamed(const std::string& connectionString);

/// The string for another database on the same server, without a year. Error 5 as above.
[[nodiscard]] std::string withDatabase(const std::string& connectionString, const std::string& database);

} // namespace z7::cashflow::odbc
