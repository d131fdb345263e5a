#include "adapters/sqlite/integrity.h"

#include "adapters/sqlite/SqliteReason.h"
#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/database.h"
#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/openFile.h"
#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <optional>

namespace z7::cashflow::sqlite {
namespace {

void readThrough(const Handle& handle, const std::filesystem::path& file, std::vector<Damage>& damages) {
    prepareSession(handle.get(), std::nullopt);
    Statement check(handle.get(), "PRAGMA integrity_check(20)");
    while (check.step()) {
        const std::string line = reinterpret_cast<const char*>(sqlite3_column_text(check.get(), 0));
        if (line != "ok") {
            damages.push_back({file, {Reason::verbatim, {line}}});
        }
    }
}

void readThrough(const std::filesystem::path& file, std::vector<Damage>& damages) {
    try {
        readThrough(openToRead(file), file, damages);
    } catch (const Error& error) {
        if (error.why().reason == SqliteReason::logLeftBehind) {
            throw; // the file may be undamaged
        }
        damages.push_back({file, error.asCause()});
    }
}

} // namespace

std::vector<Damage> findDamage(const std::filesystem::path& account) {
    const DatabaseFiles files = databaseFiles(accountFile(account));
    std::vector<Damage> damages;
    for (const auto& file : {files.account, files.system}) {
        readThrough(file, damages);
    }
    return damages;
}

} // namespace z7::cashflow::sqlite
