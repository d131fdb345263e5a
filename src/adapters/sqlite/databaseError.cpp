#include "adapters/sqlite/databaseError.h"

#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <string_view>

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

} // namespace

void raiseDatabaseError(sqlite3* handle, const std::string& remark) {
    const int code = sqlite3_extended_errcode(handle);
    std::string text = sqlite3_errmsg(handle);
    const char* state = sqlState(code, text);
    if (!remark.empty()) {
        text += ": " + remark;
    }
    throw Error(code > 0 ? code : SQLITE_INTERNAL, errorSource, text, state);
}

void raiseDatabaseError(int code, const std::string& text) {
    throw Error(code, errorSource, text, sqlState(code, text));
}

} // namespace z7::cashflow::sqlite
