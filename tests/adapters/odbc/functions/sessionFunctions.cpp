// A loadable extension of the embedded database's library. SQLite's ODBC driver loads it into each session
// (LoadExt=FILE), so that the tables, views and triggers of an account work through ODBC as they do in the embedded
// adapter.

#include "adapters/sqlite/TempDatabase.h"
#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/openFile.h"

#include <sqlite3.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>

namespace {

/// What belongs to a session: its year, and the shared tempdb.
struct Belongings {
    std::optional<std::int16_t> year;
    std::shared_ptr<const z7::cashflow::sqlite::TempDatabase> temp;
};

std::optional<std::int16_t>& yearOf(sqlite3_context* context) {
    return static_cast<Belongings*>(sqlite3_user_data(context))->year;
}

void sessionYear(sqlite3_context* context, int, sqlite3_value**) {
    if (yearOf(context)) {
        sqlite3_result_int(context, *yearOf(context));
    }
}

void requiredYear(sqlite3_context* context, int, sqlite3_value**) {
    if (yearOf(context)) {
        sqlite3_result_int(context, *yearOf(context));
    } else {
        sqlite3_result_error(context, "the session has no accounting year, which the row needs", -1);
    }
}

void useYear(sqlite3_context* context, int, sqlite3_value** arguments) {
    yearOf(context) = static_cast<std::int16_t>(sqlite3_value_int(arguments[0]));
}

void drop(void* belongings) { const std::unique_ptr<Belongings> owned(static_cast<Belongings*>(belongings)); }

} // namespace

extern "C" __attribute__((visibility("default"))) int sqlite3_extension_init(sqlite3* handle, char** message,
                                                                             const void*) {
    auto belongings = std::make_unique<Belongings>();
    try {
        const char* file = sqlite3_db_filename(handle, "main");
        z7::cashflow::sqlite::prepareSession(handle, std::nullopt);
        belongings->temp = z7::cashflow::sqlite::attachCompanions(handle, reinterpret_cast<const char8_t*>(file));
    } catch (const std::exception& error) { // no exception may pass through the database library
        *message = sqlite3_mprintf("%s", error.what());
        return SQLITE_ERROR;
    }
    // A name in double quotes that is not a column must be an error, not a text.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    constexpr int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS;
    sqlite3_create_function_v2(handle, "z7_year", 0, flags, belongings.get(), sessionYear, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "z7_required_year", 0, flags, belongings.get(), requiredYear, nullptr, nullptr,
                               nullptr);
    return sqlite3_create_function_v2(handle, "z7_use_year", 1, flags, belongings.release(), useYear, nullptr, nullptr,
                                      drop);
}
