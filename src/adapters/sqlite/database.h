#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

struct sqlite3;

namespace z7::cashflow::sqlite {

/// The shape of the tables that this version of the product makes and reads. A file of a newer shape is refused.
inline constexpr int schemaVersion = 1;

/// The files that make up one embedded database.
struct DatabaseFiles {
    std::filesystem::path account; ///< such as company.db
    std::filesystem::path system;  ///< the suite's system database zqsystem: company.zqsystem.db
    std::filesystem::path temp;    ///< tempdb: company.tempdb.db
};

/// The files that go with an account's file. Touches no disk.
[[nodiscard]] DatabaseFiles databaseFiles(const std::filesystem::path& account);

/// Makes an empty account at the path, with its system database and its tempdb beside it. An Error names the file that exists
/// already, or the folder that is missing or cannot be written; files that were begun are then removed.
void createDatabase(const std::filesystem::path& account);

/// Removes an account's file and everything beside it that belongs to it, as far as it is there. For a caller who has made a
/// database and cannot fill it.
void removeDatabase(const std::filesystem::path& account);

/// The connection string of an account's file, for Connection::Open. The year is that of the session; see Connection.
[[nodiscard]] std::string connectionString(const std::filesystem::path& account,
                                           std::optional<std::int16_t> year = std::nullopt);

/// Gives a bare session of the database library what the schema needs: the text collation, the functions like and sum, and
/// the function that tells the session's year. The handle stays the caller's. Connection does this by itself; it is here
/// for programs that look at the file without a Connection, such as benchmarks.
void prepareSession(sqlite3* handle, std::optional<std::int16_t> year);

/// Attaches the system database and tempdb of an account's file to a bare session that is open on it. For the same programs.
void attachCompanions(sqlite3* handle, const std::filesystem::path& account);

} // namespace z7::cashflow::sqlite
