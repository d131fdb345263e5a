#include "adapters/sqlite/databaseError.h"

#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

namespace z7::cashflow::sqlite {
namespace {

// The library accepts only a text for a function's failure. The reason is kept here for the error of the statement,
// which is raised on the same thread.
thread_local Explanation functionFailure;

const char* sqlState(int code, std::string_view text) {
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "HYT00";
    case SQLITE_CONSTRAINT:
        return "23000";
    case SQLITE_ERROR:
        break;
    default:
        return "HY000";
    }
    if (text.starts_with("no such table") || text.starts_with("no such view")) {
        return "42S02";
    }
    if (text.starts_with("no such column") || text.find("has no column named") != std::string_view::npos) {
        return "42S22";
    }
    return text.ends_with("already exists") ? "42S01" : "HY000";
}

/// Whether a check of one of a handle's files, by name, finds it undamaged.
bool isWhole(sqlite3* handle, const std::string& name) {
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(handle, ("PRAGMA " + name + ".quick_check(1)").c_str(), -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> check(prepared, sqlite3_finalize);
    if (sqlite3_step(check.get()) != SQLITE_ROW) {
        return false;
    }
    const auto* answer = reinterpret_cast<const char*>(sqlite3_column_text(check.get(), 0));
    return answer != nullptr && std::string_view(answer) == "ok";
}

/// The library's message, with what it does not report: which file is damaged, or why the system refused.
Explanation explained(sqlite3* handle, int code) {
    Explanation why{Reason::verbatim, {sqlite3_errmsg(handle)}};
    const int kind = code & 0xFF;
    if (Explanation failure = std::exchange(functionFailure, {});
        kind == SQLITE_ERROR && englishText(failure) == why.arguments.front()) {
        return failure;
    }
    if (kind == SQLITE_CORRUPT) {
        for (const char* name : {"main", "zqsystem"}) {
            const char* file = sqlite3_db_filename(handle, name);
            if (file != nullptr && !isWhole(handle, name)) {
                why = {SqliteReason::fileDamaged, {file}, {std::move(why)}};
            }
        }
        return why;
    }
    const int cause = kind == SQLITE_IOERR || kind == SQLITE_CANTOPEN ? sqlite3_system_errno(handle) : 0;
    if (cause != 0) {
        return {SqliteReason::systemSays, {std::generic_category().message(cause)}, {std::move(why)}};
    }
    return code == SQLITE_IOERR_WRITE ? Explanation{SqliteReason::writeRefused, {}, {std::move(why)}} : why;
}

} // namespace

void raiseDatabaseError(sqlite3* handle, Explanation remark) {
    const int code = sqlite3_extended_errcode(handle);
    const char* state = sqlState(code, sqlite3_errmsg(handle));
    Explanation why = explained(handle, code);
    if (remark.reason != Reason::none) {
        remark.causes.push_back(std::move(why));
        why = std::move(remark);
    }
    throw Error(code > 0 ? code : SQLITE_INTERNAL, errorSource, std::move(why), state);
}

void raiseDatabaseError(int code, Explanation why) {
    throw Error(code, errorSource, std::move(why), sqlState(code, {}));
}

void raiseDatabaseError(SqliteReason reason, std::vector<std::string> arguments) {
    raiseDatabaseError(entryOf(reason).number, {reason, std::move(arguments)});
}

void failFunction(sqlite3_context* context, Explanation why) {
    sqlite3_result_error(context, englishText(why).c_str(), -1);
    functionFailure = std::move(why);
}

} // namespace z7::cashflow::sqlite
