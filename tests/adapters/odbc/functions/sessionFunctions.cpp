// A loadable extension of the embedded database's library. SQLite's ODBC driver loads it into each session (LoadExt=FILE), so
// that the tables, views and triggers of an account work through ODBC as they do in the embedded adapter.

#include "adapters/sqlite/database.h"

#include <sqlite3.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>

namespace {

using Year = std::optional<std::int16_t>;

Year& yearOf(sqlite3_context* context) { return *static_cast<Year*>(sqlite3_user_data(context)); }

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

void dropYear(void* year) { const std::unique_ptr<Year> owned(static_cast<Year*>(year)); }

} // namespace

extern "C" __attribute__((visibility("default"))) int sqlite3_extension_init(sqlite3* handle, char** message,
                                                                             const void*) {
    try {
        const char* file = sqlite3_db_filename(handle, "main");
        z7::cashflow::sqlite::prepareSession(handle, std::nullopt);
        z7::cashflow::sqlite::attachCompanions(handle, reinterpret_cast<const char8_t*>(file));
    } catch (const std::exception& error) { // no exception may pass through the database library
        *message = sqlite3_mprintf("%s", error.what());
        return SQLITE_ERROR;
    }
    // A name in double quotes that is no column must be an error, not a text.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    auto year = std::make_unique<Year>();
    constexpr int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS;
    sqlite3_create_function_v2(handle, "z7_year", 0, flags, year.get(), sessionYear, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "z7_required_year", 0, flags, year.get(), requiredYear, nullptr, nullptr,
                               nullptr);
    return sqlite3_create_function_v2(handle, "z7_use_year", 1, flags, year.release(), useYear, nullptr, nullptr,
                                      dropYear);
}
