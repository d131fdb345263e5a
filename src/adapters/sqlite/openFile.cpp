#include "adapters/sqlite/openFile.h"

#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/TempDatabase.h"
#include "adapters/sqlite/database.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/sqlite/fileMarks.h"
#include "adapters/sqlite/functions.h"
#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <string_view>
#include <system_error>
#include <utility>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

void requireFile(const fs::path& file, SqliteReason whenMissing, std::vector<std::string> arguments) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (fs::is_directory(status)) {
        raiseDatabaseError(SqliteReason::folderNotFile, {utf8Of(file)});
    }
    if (!fs::exists(status)) {
        raiseDatabaseError(whenMissing, std::move(arguments));
    }
}

/// A name that the database library can only interpret as a file: not a URI, and not a special name such as
/// ":memory:".
std::string plainName(const fs::path& file) {
    std::error_code error;
    const fs::path absolute = fs::absolute(file, error);
    return utf8Of(error ? file : absolute);
}

/// The URI that opens a file without locks and without files beside it.
std::string unlockedUri(const fs::path& file) {
    std::string uri = "file:";
    const std::string name = plainName(file);
    uri += name.starts_with('/') ? "" : "/";
    for (const char c : name) {
        if (c == '%' || c == '?' || c == '#') {
            constexpr std::string_view digits = "0123456789ABCDEF";
            const auto byte = static_cast<unsigned char>(c);
            uri += '%';
            uri += digits[byte / 16];
            uri += digits[byte % 16];
        } else {
            uri += c == '\\' ? '/' : c;
        }
    }
    return uri + "?immutable=1";
}

Handle openNamed(const std::string& name, const fs::path& file, int flags) {
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(name.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    Handle handle(opened);
    if (code != SQLITE_OK) {
        raiseDatabaseError(code,
                           {SqliteReason::cannotOpen, {utf8Of(file)}, {{Reason::verbatim, {sqlite3_errstr(code)}}}});
    }
    return handle;
}

void attachNamed(sqlite3* handle, const std::string& uri, const fs::path& file, const char* name) {
    Statement statement(handle, "ATTACH ?1 AS ?2");
    statement.bind(1, Variant(uri));
    statement.bind(2, Variant(name));
    try {
        statement.step();
    } catch (const Error& error) {
        throw Error(error.number(), errorSource, {SqliteReason::cannotOpen, {utf8Of(file)}, {error.asCause()}},
                    error.sqlState());
    }
}

bool existsBeside(const fs::path& file, const char* suffix) {
    fs::path path = file;
    path += suffix;
    std::error_code error;
    return fs::exists(path, error);
}

/// An open file, and whether it must be read without locks. The database library keeps a log and its index beside a
/// file, also for readers. If these cannot be written and there is no log, nobody is using the file, and it can be
/// read as it is. If there is a log, it must be read as well, and so the file must be locked.
struct Probe {
    Handle handle;
    bool readOnly = false;
    bool unlocked = false;
};

Probe probe(const fs::path& file) {
    Probe found;
    found.handle = openNamed(plainName(file), file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI); // URI: for attached files
    found.readOnly = sqlite3_db_readonly(found.handle.get(), "main") != 0;
    const bool log = existsBeside(file, "-wal") || existsBeside(file, "-journal");
    if (found.readOnly && !log) {
        found.unlocked = true; // before reading: a log created by a user who may not write would lock out those who may
        return found;
    }
    try {
        static_cast<void>(queryInteger(found.handle.get(), "PRAGMA application_id"));
    } catch (const Error& error) {
        const int kind = error.number() & 0xFF;
        const bool needsRights = kind == SQLITE_CANTOPEN || kind == SQLITE_READONLY;
        if (needsRights && log) {
            raiseDatabaseError(error.number(), {SqliteReason::logLeftBehind, {utf8Of(file)}});
        }
        found.unlocked = found.readOnly = needsRights; // other faults are reported when the file is opened
    }
    return found;
}

/// Checks that the file opened under a name is the expected one of this product.
void checkMarks(sqlite3* handle, const std::string& name, const fs::path& file, std::int64_t mark) {
    std::int64_t found = 0;
    std::int64_t version = 0;
    try {
        found = queryInteger(handle, "PRAGMA " + name + ".application_id");
        version = queryInteger(handle, "PRAGMA " + name + ".user_version");
        static_cast<void>(queryInteger(handle, "SELECT count(*) FROM " + name + ".sqlite_schema"));
    } catch (const Error& error) {
        throw Error(error.number(), errorSource, {SqliteReason::notADatabase, {utf8Of(file)}, {error.asCause()}},
                    error.sqlState());
    }
    if (found != mark) {
        raiseDatabaseError(name == "main" ? SqliteReason::notAnAccount : SqliteReason::notThePeriods,
                           {utf8Of(file), name});
    }
    if (version != schemaVersion) {
        raiseDatabaseError(version > schemaVersion ? SqliteReason::versionNewer : SqliteReason::versionOlder,
                           {utf8Of(file), std::to_string(version), std::to_string(schemaVersion)});
    }
}

void requireSystemFile(const DatabaseFiles& files) {
    requireFile(files.system, SqliteReason::periodsMissing, {utf8Of(files.system), utf8Of(files.account)});
}

void attachSystem(OpenAccount& account) {
    const DatabaseFiles files = databaseFiles(account.file);
    requireSystemFile(files);
    const Probe system = probe(files.system);
    if (system.unlocked) {
        account.unlocked.emplace_back(files.system);
        attachNamed(account.handle.get(), unlockedUri(files.system), files.system, "zqsystem");
    } else {
        attach(account.handle.get(), files.system, "zqsystem");
    }
    account.readOnly = account.readOnly || system.readOnly;
    checkMarks(account.handle.get(), "zqsystem", files.system, systemMark);
}

} // namespace

Handle openHandle(const fs::path& file, int flags) { return openNamed(plainName(file), file, flags); }

Handle openUnlocked(const fs::path& file) {
    return openNamed(unlockedUri(file), file, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
}

Handle openToRead(const fs::path& file) {
    return probe(file).unlocked ? openUnlocked(file) : openHandle(file, SQLITE_OPEN_READONLY);
}

void attach(sqlite3* handle, const fs::path& file, const char* name) {
    attachNamed(handle, plainName(file), file, name);
}

fs::path accountFile(const fs::path& path) {
    std::error_code error;
    if (!fs::is_symlink(path, error)) {
        return path; // unchanged, for messages
    }
    const fs::path target = fs::canonical(path, error);
    return error ? path : target;
}

UnlockedFile::UnlockedFile(fs::path file) : file_(std::move(file)) {
    std::error_code error;
    size_ = fs::file_size(file_, error);
    written_ = fs::last_write_time(file_, error);
}

bool UnlockedFile::isUnchanged() const {
    std::error_code error;
    return !existsBeside(file_, "-wal") && fs::file_size(file_, error) == size_ &&
           fs::last_write_time(file_, error) == written_;
}

std::shared_ptr<const TempDatabase> attachCompanions(sqlite3* handle, const fs::path& account) {
    const DatabaseFiles files = databaseFiles(accountFile(account));
    requireSystemFile(files);
    attach(handle, files.system, "zqsystem");
    auto temp = TempDatabase::of(files.account);
    temp->attachTo(handle);
    return temp;
}

OpenAccount openAccount(const ConnectionOptions& options) {
    requireFile(options.database, SqliteReason::accountMissing, {utf8Of(options.database)});
    OpenAccount account;
    account.file = accountFile(options.database);
    Probe main = probe(account.file);
    account.readOnly = main.readOnly;
    if (main.unlocked) {
        account.unlocked.emplace_back(account.file);
        main.handle = openUnlocked(account.file);
    }
    account.handle = std::move(main.handle);
    sqlite3* const handle = account.handle.get();
    sqlite3_busy_timeout(handle, options.timeout);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr); // a mistyped column must not become a text
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    prepareSession(handle, options.year);
    checkMarks(handle, "main", options.database, accountMark);
    attachSystem(account);
    // A voucher that was reported as stored stays stored, even after a power failure.
    executeScript(handle, "PRAGMA main.synchronous = FULL; PRAGMA zqsystem.synchronous = FULL; "
                          "PRAGMA foreign_keys = ON; PRAGMA trusted_schema = OFF; PRAGMA temp_store = MEMORY");
    if (options.maxPages) {
        executeScript(handle, "PRAGMA main.max_page_count = " + std::to_string(*options.maxPages));
    }
    return account;
}

} // namespace z7::cashflow::sqlite
