#include "adapters/sqlite/database.h"

#include "adapters/shared/session/ConnectionText.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/NewDatabase.h"
#include "adapters/sqlite/databaseError.h"

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

fs::path companion(const fs::path& account, const std::string& name) {
    fs::path file = account;
    file.replace_extension();
    file += "." + name;
    file += account.extension();
    return file;
}

void requireFree(const std::optional<fs::path>& taken) {
    if (taken) {
        raiseDatabaseError(SqliteReason::fileTaken, {utf8Of(*taken)});
    }
}

} // namespace

DatabaseFiles databaseFiles(const fs::path& account) { return {account, companion(account, "zqsystem")}; }

void createDatabase(const fs::path& account) {
    requireFree(NewDatabase::takenName(account));
    NewDatabase database(account);
    requireFree(database.publish());
}

std::string connectionString(const fs::path& account, std::optional<std::int16_t> year) {
    std::string text = "driver=sqlite;database=" + shared::connectionValue(utf8Of(account));
    return year ? text + ";year=" + std::to_string(*year) : text;
}

} // namespace z7::cashflow::sqlite
