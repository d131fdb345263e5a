#include "adapters/sqlite/database.h"

#include "adapters/shared/session/ConnectionText.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/sqlite/fileMarks.h"
#include "adapters/sqlite/scripts.h"
#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <memory>
#include <string>
#include <system_error>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

struct Closer {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
};

/// Makes one file in write-ahead mode and runs the scripts on it, all in one transaction that ends with the marks.
void createFile(const fs::path& file, std::int64_t mark, const std::string& scripts) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(
        utf8Of(file).c_str(), &opened,
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    const std::unique_ptr<sqlite3, Closer> handle(opened);
    if (code != SQLITE_OK) {
        raiseDatabaseError(code, utf8Of(file) + " cannot be made: " + sqlite3_errstr(code));
    }
    constexpr int patience = 5000;
    sqlite3_busy_timeout(handle.get(), patience);
    prepareSession(handle.get(), std::nullopt);
    try {
        executeScript(handle.get(), "PRAGMA journal_mode = WAL");
        executeScript(handle.get(), "BEGIN IMMEDIATE;\n" + scripts +
                                        "\nPRAGMA application_id = " + std::to_string(mark) +
                                        ";\nPRAGMA user_version = " + std::to_string(schemaVersion) + ";\nCOMMIT;");
    } catch (const Error& error) {
        throw Error(error.number(), errorSource, utf8Of(file) + " cannot be made: " + error.description(),
                    error.sqlState());
    }
}

fs::path withSuffix(const fs::path& file, const char* suffix) {
    fs::path path = file;
    path += suffix;
    return path;
}

fs::path companion(const fs::path& account, const std::string& name) {
    fs::path file = account;
    file.replace_extension();
    file += "." + name;
    file += account.extension();
    return file;
}

} // namespace

DatabaseFiles databaseFiles(const fs::path& account) {
    return {account, companion(account, "zqsystem"), companion(account, "tempdb")};
}

void createTemporaryDatabase(const fs::path& file) { createFile(file, temporaryMark, {}); }

void createDatabase(const fs::path& account) {
    const DatabaseFiles files = databaseFiles(account);
    std::error_code error;
    for (const fs::path& file : {files.account, files.system, files.temp}) {
        if (fs::exists(file, error)) {
            raiseDatabaseError(SQLITE_CANTOPEN, utf8Of(file) + " exists already; choose another name or remove it.");
        }
    }
    const fs::path folder = fs::absolute(account, error).parent_path();
    if (!fs::is_directory(folder, error)) {
        raiseDatabaseError(SQLITE_CANTOPEN, "There is no folder " + utf8Of(folder) + " to make the account in.");
    }
    try { // the account comes last, so that a file that opens as an account is whole
        createFile(files.temp, temporaryMark, {});
        createFile(files.system, systemMark, scripts::system_tables);
        createFile(files.account, accountMark, std::string(scripts::account_tables) + scripts::account_views);
    } catch (const Error&) {
        removeDatabase(account);
        throw;
    }
}

void removeDatabase(const fs::path& account) {
    const DatabaseFiles files = databaseFiles(account);
    for (const fs::path& file : {files.account, files.system, files.temp}) {
        for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
            std::error_code ignored; // what cannot be removed stays; the caller has an error of its own to tell
            fs::remove(withSuffix(file, suffix), ignored);
        }
    }
}

std::string connectionString(const fs::path& account, std::optional<std::int16_t> year) {
    std::string text = "driver=sqlite;database=" + shared::connectionValue(utf8Of(account));
    return year ? text + ";year=" + std::to_string(*year) : text;
}

} // namespace z7::cashflow::sqlite
