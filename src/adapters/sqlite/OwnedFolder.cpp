#include "adapters/sqlite/OwnedFolder.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/sqlite/fileSystem.h"
#include "z7cashflow/support/guid.h"

#include <sqlite3.h>

#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

constexpr const char* lockName = "owner";

/// Locks a folder by a file in it; null if it is already locked, or if the file does not exist and must not be
/// created. The locks of the database library work in the same way on every system and end with the process.
Handle lock(const fs::path& folder, int create) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(utf8Of(folder / lockName).c_str(), &opened,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | create, nullptr);
    Handle handle(opened);
    if (code != SQLITE_OK || sqlite3_exec(handle.get(), "PRAGMA journal_mode = MEMORY; BEGIN EXCLUSIVE", nullptr,
                                          nullptr, nullptr) != SQLITE_OK) {
        return nullptr;
    }
    return handle;
}

/// Removes a folder whose lock is held; the lock goes last. The folder is renamed first, so that a run that has
/// opened its lock file meanwhile, and obtains the lock as soon as it is free, notices that the folder is gone.
void removeLocked(fs::path folder, Handle held) {
    std::error_code ignored; // what cannot be removed now is removed by a later run
    std::error_code notRenamed;
    const fs::path gone = fs::path(folder) += "-removed";
    fs::rename(folder, gone, notRenamed);
    if (!notRenamed) {
        folder = gone;
    }
    for (fs::directory_iterator entry(folder, ignored); entry != fs::directory_iterator(); entry.increment(ignored)) {
        if (entry->path().filename() != lockName) {
            std::error_code alsoIgnored;
            fs::remove_all(entry->path(), alsoIgnored);
        }
    }
    held.reset();
    fs::remove_all(folder, ignored);
}

} // namespace

OwnedFolder::OwnedFolder(const fs::path& parent, const std::string& prefix) {
    constexpr int mostTries = 16; // another run may mistake a folder for abandoned before it is locked
    constexpr std::size_t randomPart = 12;
    std::error_code failure;
    for (int i = 0; i < mostTries && lock_ == nullptr; ++i) {
        path_ = parent / (prefix + guidText(systemGuidSource()).substr(0, randomPart));
        failure = makePrivateFolder(path_);
        if (failure == std::errc::file_exists) {
            continue;
        }
        if (failure) {
            raiseDatabaseError(SqliteReason::folderNotCreated, {utf8Of(parent), failure.message()});
        }
        lock_ = lock(path_, SQLITE_OPEN_CREATE);
        if (lock_ != nullptr && !fs::exists(path_ / lockName, failure)) {
            lock_ = nullptr; // another run mistook the folder for abandoned
        } else if (lock_ == nullptr) {
            std::error_code ignored; // another run may have removed it
            fs::remove_all(path_, ignored);
        }
    }
    if (lock_ == nullptr) {
        raiseDatabaseError(SqliteReason::folderNotLocked, {utf8Of(parent)});
    }
}

OwnedFolder::~OwnedFolder() { removeLocked(path_, std::move(lock_)); }

void OwnedFolder::removeAbandoned(const fs::path& parent, const std::string& prefix,
                                  const std::function<void(const fs::path&)>& before) {
    std::vector<fs::path> found;
    std::error_code ignored; // if the parent cannot be read, nothing can be removed
    for (fs::directory_iterator entry(parent, ignored); entry != fs::directory_iterator(); entry.increment(ignored)) {
        std::error_code gone;
        if (utf8Of(entry->path().filename()).starts_with(prefix) && fs::is_directory(entry->symlink_status(gone)) &&
            isOwn(entry->path())) {
            found.push_back(entry->path());
        }
    }
    for (const fs::path& folder : found) {
        if (Handle held = lock(folder, 0); held != nullptr) {
            if (before) {
                before(folder);
            }
            removeLocked(folder, std::move(held));
        } else {
            fs::remove(folder, ignored); // only if empty: its run ended before it was locked
        }
    }
}

} // namespace z7::cashflow::sqlite
