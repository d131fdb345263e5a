#include "adapters/sqlite/NewDatabase.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/database.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/sqlite/fileMarks.h"
#include "adapters/sqlite/fileSystem.h"
#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/openFile.h"
#include "adapters/sqlite/scripts.h"
#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <array>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

fs::path folderOf(const fs::path& account) {
    const fs::path parent = account.parent_path();
    return parent.empty() ? fs::path(".") : parent;
}

std::string workPrefix(const fs::path& account) { return "." + utf8Of(account.filename()) + ".new-"; }

fs::path requiredFolder(const fs::path& account) {
    fs::path folder = folderOf(account);
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        raiseDatabaseError(SqliteReason::folderMissing, {utf8Of(folder)});
    }
    return folder;
}

bool isTaken(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

/// Runs an action on a file and adds the file's name to its Error.
template <class Action> void naming(const fs::path& file, Action&& action) {
    try {
        action();
    } catch (const Error& error) {
        throw Error(error.number(), errorSource,
                    {SqliteReason::cannotCreate, {utf8Of(file.filename())}, {error.asCause()}}, error.sqlState());
    }
}

/// Creates one file in write-ahead mode and runs the scripts on it, in one transaction that ends with the marks.
void createFile(const fs::path& file, std::int64_t mark, const std::string& scripts) {
    naming(file, [&] {
        const Handle handle = openHandle(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        prepareSession(handle.get(), std::nullopt);
        // The file is written to the disk once, when it is finished.
        executeScript(handle.get(), "PRAGMA journal_mode = WAL; PRAGMA synchronous = OFF");
        executeScript(handle.get(), "BEGIN IMMEDIATE;\n" + scripts +
                                        "\nPRAGMA application_id = " + std::to_string(mark) +
                                        ";\nPRAGMA user_version = " + std::to_string(schemaVersion) + ";\nCOMMIT;");
    });
}

/// Transfers the log of a file into the file. Closing a file does this too, but does not report a failure.
void emptyLog(const fs::path& file) {
    const Handle handle = openHandle(file, SQLITE_OPEN_READWRITE);
    if (queryInteger(handle.get(), "PRAGMA wal_checkpoint(TRUNCATE)") != 0) {
        raiseDatabaseError(SqliteReason::openElsewhere);
    }
}

/// Reads every page of a file by itself, without a log.
void checkFile(const fs::path& file) {
    const Handle handle = openUnlocked(file);
    prepareSession(handle.get(), std::nullopt);
    Statement check(handle.get(), "PRAGMA integrity_check(1)");
    const bool answered = check.step();
    const auto* answer = answered ? reinterpret_cast<const char*>(sqlite3_column_text(check.get(), 0)) : nullptr;
    if (answer == nullptr) {
        raiseDatabaseError(SqliteReason::cannotCheck);
    }
    if (std::string_view(answer) != "ok") {
        raiseDatabaseError(SQLITE_CORRUPT, {Reason::verbatim, {answer}});
    }
}

void require(const std::error_code& failure, const fs::path& path) {
    if (failure) {
        raiseDatabaseError(SqliteReason::cannotWrite, {utf8Of(path), failure.message()});
    }
}

void finishFile(const fs::path& file) {
    naming(file, [&] {
        emptyLog(file);
        checkFile(file);
        require(syncFile(file), file);
    });
}

/// Opens the finished account like any program, and reads from each of its files.
void openOnce(const fs::path& account) {
    ConnectionOptions options;
    options.database = account;
    const OpenAccount opened = openAccount(options);
    for (const char* table : {"main.accinformation", "main.gl_accvouch", "zqsystem.ua_period"}) {
        static_cast<void>(queryInteger(opened.handle.get(), std::string("SELECT count(*) FROM ") + table));
    }
}

/// Removes a system database published by an ended run whose account was never published, if it is the very file of
/// the run's folder.
void removeLoneCompanion(const fs::path& folder, const fs::path& account) {
    const DatabaseFiles files = databaseFiles(account);
    std::error_code error;
    const bool own = fs::equivalent(folder / files.system.filename(), files.system, error);
    if (own && !error && !isTaken(files.account)) {
        fs::remove(files.system, error);
    }
}

} // namespace

std::optional<fs::path> NewDatabase::takenName(const fs::path& account) {
    OwnedFolder::removeAbandoned(folderOf(account), workPrefix(account),
                                 [&account](const fs::path& folder) { removeLoneCompanion(folder, account); });
    const DatabaseFiles files = databaseFiles(account);
    for (const fs::path& path : {files.account, files.system}) {
        if (isTaken(path)) {
            return path;
        }
    }
    return std::nullopt;
}

NewDatabase::NewDatabase(fs::path account)
    : account_(std::move(account)), folder_(requiredFolder(account_), workPrefix(account_)),
      file_(folder_.path() / account_.filename()) {
    const DatabaseFiles files = databaseFiles(file_);
    createFile(files.system, systemMark, scripts::systemTables);
    createFile(files.account, accountMark,
               std::string(scripts::accountTables) + scripts::accountViews + scripts::logTables);
}

std::optional<fs::path> NewDatabase::publish(const std::function<void()>& beforeStep) {
    const DatabaseFiles sources = databaseFiles(file_);
    const DatabaseFiles targets = databaseFiles(account_);
    finishFile(sources.system);
    finishFile(sources.account);
    const auto step = [&beforeStep] {
        if (beforeStep) {
            beforeStep();
        }
    };
    std::vector<fs::path> published;
    const auto takeBack = [&published, &step] {
        while (!published.empty()) { // the account first, because it was published last
            step();
            std::error_code ignored; // the original failure is the one to report
            fs::remove(published.back(), ignored);
            published.pop_back();
        }
    };
    // The account's own file is published last: if it exists, everything does.
    const std::array<std::pair<fs::path, fs::path>, 2> moves{std::pair{sources.system, targets.system},
                                                             std::pair{sources.account, targets.account}};
    try {
        for (const auto& [source, target] : moves) {
            step();
            const std::error_code failure = publishFile(source, target);
            if (failure == std::errc::file_exists) {
                takeBack();
                return target;
            }
            require(failure, target);
            published.push_back(target);
        }
        step();
        require(syncFolder(folderOf(account_)), folderOf(account_));
        openOnce(account_);
    } catch (const Error&) {
        takeBack();
        throw;
    }
    return std::nullopt;
}

} // namespace z7::cashflow::sqlite
