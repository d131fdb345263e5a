#pragma once

#include "host/text/Language.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/LoadableTables.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// A CSV file with records of one table: UTF-8, the first line holds the column names, an empty field is null.
struct TableFile {
    std::string table;     ///< the table's name, in any letter case
    std::string shownName; ///< the file's name in messages
    /// Opens the file for reading; returns a null pointer if that fails.
    std::function<std::unique_ptr<std::istream>()> open;
    std::string definition{}; ///< statement that creates the table; empty for a table of the schema
};

/// What was loaded into the database.
struct LoadedTables {
    std::int64_t tables = 0;
    std::int64_t records = 0;
};

/// The CSV files of a folder, sorted by name; other files and folders are ignored. Failure (usage) if the folder
/// does not exist or contains no CSV file.
[[nodiscard]] std::vector<TableFile> tableFilesOfFolder(const std::filesystem::path& folder);

/// The CSV files of the built-in sample company.
[[nodiscard]] std::vector<TableFile> tableFilesOfSample();

/// Loads the records of the files into the tables of the same names, in the caller's transaction. "tables" are
/// those of the connection's session. Failure (usage), with file, line, column and reason of each fault, up to 50;
/// Interrupted once stopRequested returns true. The caller rolls back in both cases.
LoadedTables loadTableFiles(Connection& connection, LoadableTables& tables, const std::vector<TableFile>& files,
                            Language language, const std::function<bool()>& stopRequested);

} // namespace z7::cashflow::host
