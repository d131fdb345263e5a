#include "adapters/sqlite/databaseError.h"

#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <memory>
#include <string_view>
#include <system_error>

namespace z7::cashflow::sqlite {
namespace {

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

/// Whether a check of a file that a handle knows under a name finds it whole.
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

/// Names the damaged ones of a handle's files, as far as a check finds them.
std::string damagedFiles(sqlite3* handle) {
    std::string text;
    for (const char* name : {"main", "zqsystem"}) {
        const char* file = sqlite3_db_filename(handle, name);
        if (file != nullptr && !isWhole(handle, name)) {
            text += std::string(": ") + file + " is damaged; put it back from a backup";
        }
    }
    return text;
}

/// What of a failure the database library does not say: which file is damaged, or why the system refused.
std::string details(sqlite3* handle, int code) {
    const int kind = code & 0xFF;
    if (kind == SQLITE_CORRUPT) {
        return damagedFiles(handle);
    }
    const int cause = kind == SQLITE_IOERR || kind == SQLITE_CANTOPEN ? sqlite3_system_errno(handle) : 0;
    if (cause != 0) {
        return ": " + std::generic_category().message(cause);
    }
    return code == SQLITE_IOERR_WRITE
               ? ": the system refuses to write; look at the disk and at the limit on the size of files "
                 "(ulimit -f)"
               : std::string();
}

} // namespace

void raiseDatabaseError(sqlite3* handle, const std::string& remark) {
    const int code = sqlite3_extended_errcode(handle);
    std::string text = sqlite3_errmsg(handle);
    const char* state = sqlState(code, text);
    text += details(handle, code);
    if (!remark.empty()) {
        text += ": " + remark;
    }
    throw Error(code > 0 ? code : SQLITE_INTERNAL, errorSource, text, state);
}

void raiseDatabaseError(int code, const std::string& text) {
    throw Error(code, errorSource, text, sqlState(code, text));
}

} // namespace z7::cashflow::sqlite
