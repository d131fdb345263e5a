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

/// One CSV file with records of one table: UTF-8, the first line names columns, an empty field is null.
struct TableFile {
    std::string table;     ///< name of the table, in any letter case
    std::string shownName; ///< how messages name the file
    /// Opens the file for reading; a null pointer if that fails.
    std::function<std::unique_ptr<std::istream>()> open;
    std::string definition{}; ///< the statement that makes the table; empty for a table that every account has
};

/// What a loading has put into the database.
struct LoadedTables {
    std::int64_t tables = 0;
    std::int64_t records = 0;
};

/// The CSV files of a folder in the order of their names; other files and folders do not count. Failure (usage) if
/// there is no such folder or no CSV file in it.
[[nodiscard]] std::vector<TableFile> tableFilesOfFolder(const std::filesystem::path& folder);

/// The CSV files of the sample company that comes with the program.
[[nodiscard]] std::vector<TableFile> tableFilesOfSample();

/// Puts the records of the files into the tables of their names, inside the caller's transaction. "tables" are those of
/// the connection's session. Failure (usage) that names file, line, column and reason for everything that cannot be
/// taken, up to 50 faults, Interrupted once stopRequested answers true; the caller rolls back then.
LoadedTables loadTableFiles(Connection& connection, LoadableTables& tables, const std::vector<TableFile>& files,
                            Language language, const std::function<bool()>& stopRequested);

} // namespace z7::cashflow::host
