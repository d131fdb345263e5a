#include "adapters/sqlite/openFile.h"

#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/database.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/sqlite/fileMarks.h"
#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <memory>
#include <system_error>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

struct Closer {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
};
using Handle = std::unique_ptr<sqlite3, Closer>;

void requireFile(const fs::path& file, const std::string& remedy) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (fs::is_directory(status)) {
        raiseDatabaseError(SQLITE_CANTOPEN, utf8Of(file) + " is a folder, not an account's file.");
    }
    if (!fs::exists(status)) {
        raiseDatabaseError(SQLITE_CANTOPEN, "There is no file " + utf8Of(file) + ". " + remedy);
    }
}

Handle openHandle(const fs::path& file, int flags) {
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(utf8Of(file).c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    Handle handle(opened);
    if (code != SQLITE_OK) {
        raiseDatabaseError(code, utf8Of(file) + " cannot be opened: " + sqlite3_errstr(code));
    }
    return handle;
}

/// Checks that a file that is open under the name is the one of this product that it should be.
void checkMarks(sqlite3* handle, const std::string& name, const fs::path& file, std::int64_t mark) {
    std::int64_t found = 0;
    std::int64_t version = 0;
    try {
        found = queryInteger(handle, "PRAGMA " + name + ".application_id");
        version = queryInteger(handle, "PRAGMA " + name + ".user_version");
    } catch (const Error& error) {
        throw Error(error.number(), errorSource, utf8Of(file) + " cannot be read as a database: " + error.description(),
                    error.sqlState());
    }
    if (found != mark) {
        raiseDatabaseError(SQLITE_NOTADB, utf8Of(file) + " is a database, but not one that z7cf init has made as the " +
                                              (name == "main" ? "account" : name) + ".");
    }
    if (version != schemaVersion) {
        raiseDatabaseError(SQLITE_MISMATCH, utf8Of(file) + " has the schema version " + std::to_string(version) +
                                                ", and this program knows the version " +
                                                std::to_string(schemaVersion) +
                                                (version > schemaVersion ? ": use a newer program." : "."));
    }
    if (sqlite3_db_readonly(handle, name.c_str()) != 0) {
        raiseDatabaseError(SQLITE_READONLY,
                           utf8Of(file) + " can only be read: allow writing to the file and to its folder.");
    }
}

void attach(sqlite3* handle, const fs::path& file, const char* name) {
    Statement statement(handle, "ATTACH ?1 AS ?2");
    statement.bind(1, Variant(utf8Of(file)));
    statement.bind(2, Variant(name));
    try {
        statement.step();
    } catch (const Error& error) {
        throw Error(error.number(), errorSource, utf8Of(file) + " cannot be opened: " + error.description(),
                    error.sqlState());
    }
}

} // namespace

void attachCompanions(sqlite3* handle, const fs::path& account) {
    const DatabaseFiles files = databaseFiles(account);
    requireFile(files.system, "It holds the account's periods and belongs beside " + utf8Of(files.account) +
                                  ": put it back from the same backup.");
    attach(handle, files.system, "zqsystem");
    attach(handle, files.temp, "tempdb");
}

sqlite3* openAccount(const ConnectionOptions& options) {
    requireFile(options.database, "Make it with: z7cf init " + utf8Of(options.database));
    Handle handle = openHandle(options.database, SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(handle.get(), options.timeout);
    sqlite3_db_config(handle.get(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr); // a mistyped column is no text
    sqlite3_db_config(handle.get(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    prepareSession(handle.get(), options.year);
    checkMarks(handle.get(), "main", options.database, accountMark);

    const DatabaseFiles files = databaseFiles(options.database);
    std::error_code error;
    if (!fs::exists(files.temp, error)) {
        createTemporaryDatabase(files.temp); // it holds nothing that lasts
    }
    attachCompanions(handle.get(), options.database);
    checkMarks(handle.get(), "zqsystem", files.system, systemMark);
    checkMarks(handle.get(), "tempdb", files.temp, temporaryMark);
    // A voucher once reported as stored stays stored, also when the power goes. What lies in tempdb may go.
    executeScript(handle.get(),
                  "PRAGMA main.synchronous = FULL; PRAGMA zqsystem.synchronous = FULL; "
                  "PRAGMA tempdb.synchronous = OFF; PRAGMA foreign_keys = ON; PRAGMA trusted_schema = OFF; "
                  "PRAGMA temp_store = MEMORY");
    if (options.maxPages) {
        executeScript(handle.get(), "PRAGMA main.max_page_count = " + std::to_string(*options.maxPages));
    }
    return handle.release();
}

} // namespace z7::cashflow::sqlite
