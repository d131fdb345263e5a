#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::sqlite {

/// The version of the schema that this version of the product creates and reads. A file with a newer schema is
/// refused.
inline constexpr int schemaVersion = 1;

/// The files of one embedded database.
struct DatabaseFiles {
    std::filesystem::path account; ///< such as company.db
    std::filesystem::path system;  ///< the suite's system database zqsystem: company.zqsystem.db
};

/// The files that belong to an account's file. Does not access the disk.
[[nodiscard]] DatabaseFiles databaseFiles(const std::filesystem::path& account);

/// Creates an empty account at the path, with its system database beside it, as by NewDatabase. An Error names the
/// file that already exists, or the folder that does not exist or cannot be written; nothing is left then.
void createDatabase(const std::filesystem::path& account);

/// The connection string of an account's file, for Connection::Open. The year is that of the session; see
/// Connection.
[[nodiscard]] std::string connectionString(const std::filesystem::path& account,
                                           std::optional<std::int16_t> year = std::nullopt);

} // namespace z7::cashflow::sqlite

Z7_PUBLIC_END
