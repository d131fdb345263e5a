#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace z7::cashflow::sqlite {

/// The shape of the tables that this version of the product creates and reads. A file of a newer shape is refused.
inline constexpr int schemaVersion = 1;

/// The files that make up one embedded database.
struct DatabaseFiles {
    std::filesystem::path account; ///< such as company.db
    std::filesystem::path system;  ///< the suite's system database zqsystem: company.zqsystem.db
};

/// The files that belong to an account's file. Touches no disk.
[[nodiscard]] DatabaseFiles databaseFiles(const std::filesystem::path& account);

/// Creates an empty account at the path, with its system database beside it, as NewDatabase does. An Error names the
/// file that exists already, or the folder that is missing or cannot be written; nothing is left then.
void createDatabase(const std::filesystem::path& account);

/// The connection string of an account's file, for Connection::Open. The year is that of the session; see Connection.
[[nodiscard]] std::string connectionString(const std::filesystem::path& account,
                                           std::optional<std::int16_t> year = std::nullopt);

} // namespace z7::cashflow::sqlite
