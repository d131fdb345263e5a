#include "adapters/sqlite/TempDatabase.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/sqlite/openFile.h"
#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <map>
#include <mutex>
#include <system_error>
#include <utility>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

constexpr const char* folderPrefix = "z7cashflow-tempdb-";
constexpr const char* fileName = "tempdb.db";

/// The folder that contains the folders of all tempdbs; those whose programs have ended are removed.
fs::path clearedParent() {
    std::error_code failure;
    fs::path parent = fs::temp_directory_path(failure);
    if (failure) {
        raiseDatabaseError(SqliteReason::noTemporaryFolder, {failure.message()});
    }
    OwnedFolder::removeAbandoned(parent, folderPrefix);
    return parent;
}

} // namespace

std::shared_ptr<const TempDatabase> TempDatabase::of(const fs::path& account) {
    static std::mutex mutex;
    static std::map<fs::path, std::weak_ptr<const TempDatabase>> known;
    std::error_code failure;
    const fs::path key = fs::canonical(account, failure);
    const std::lock_guard lock(mutex);
    std::erase_if(known, [](const auto& entry) { return entry.second.expired(); });
    if (auto found = known[key].lock(); found != nullptr) {
        return found;
    }
    std::shared_ptr<const TempDatabase> created(new TempDatabase);
    known[key] = created;
    return created;
}

TempDatabase::TempDatabase() : folder_(clearedParent(), folderPrefix) {
    const Handle handle = openHandle(folder_.path() / fileName, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    executeScript(handle.get(), "PRAGMA journal_mode = WAL"); // its readers and its writer do not wait for each other
}

void TempDatabase::attachTo(sqlite3* handle) const {
    attach(handle, folder_.path() / fileName, "tempdb");
    // Its contents need not survive. If a transaction is already open, the setting cannot be changed.
    ignoringErrors([handle] { executeScript(handle, "PRAGMA tempdb.synchronous = OFF"); });
}

} // namespace z7::cashflow::sqlite
