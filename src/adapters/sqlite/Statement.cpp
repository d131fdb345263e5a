#include "adapters/sqlite/Statement.h"

#include "adapters/sqlite/databaseError.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <sqlite3.h>

#include <limits>

namespace z7::cashflow::sqlite {

Statement::Statement(sqlite3* handle, std::string_view sql) {
    if (sql.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        raiseDatabaseError(SqliteReason::statementTooLong);
    }
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v3(handle, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                        &prepared, nullptr);
    statement_.reset(prepared);
    if (code != SQLITE_OK) {
        raiseDatabaseError(handle);
    }
}

sqlite3* Statement::handle() const noexcept { return sqlite3_db_handle(get()); }

void Statement::bind(int position, const Variant& value) {
    if (const auto* text = value.get<std::string>()) {
        check(sqlite3_bind_text64(get(), position, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    } else if (const auto* date = value.get<Date>()) {
        const std::string text = dateText(*date);
        check(sqlite3_bind_text64(get(), position, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    } else if (const auto* real = value.get<double>()) {
        bind(position, *real);
    } else if (const auto* truth = value.get<bool>()) {
        bind(position, std::int64_t{*truth ? 1 : 0});
    } else if (value.isNull()) {
        check(sqlite3_bind_null(get(), position));
    } else {
        bind(position, std::int64_t{toInt32(value)});
    }
}

void Statement::bindBorrowed(int position, std::string_view text) {
    const char* data = text.data() == nullptr ? "" : text.data(); // a null pointer would be the null value
    check(sqlite3_bind_text64(get(), position, data, text.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::bind(int position, std::int64_t value) { check(sqlite3_bind_int64(get(), position, value)); }

void Statement::bind(int position, double value) { check(sqlite3_bind_double(get(), position, value)); }

bool Statement::step(const Explanation& remarkWhenLocked) {
    const int code = sqlite3_step(get());
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        const int primary = code & 0xFF;
        raiseDatabaseError(handle(),
                           primary == SQLITE_BUSY || primary == SQLITE_LOCKED ? remarkWhenLocked : Explanation{});
    }
    return false;
}

void Statement::reset() noexcept { sqlite3_reset(get()); }

std::string Statement::expanded() const {
    const std::unique_ptr<char, decltype(&sqlite3_free)> text(sqlite3_expanded_sql(get()), &sqlite3_free);
    return text == nullptr ? std::string() : std::string(text.get());
}

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }

void Statement::check(int code) const {
    if (code != SQLITE_OK) {
        raiseDatabaseError(handle());
    }
}

void executeScript(sqlite3* handle, const std::string& sql, const Explanation& remarkWhenLocked) {
    const int code = sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        raiseDatabaseError(handle, (code & 0xFF) == SQLITE_BUSY ? remarkWhenLocked : Explanation{});
    }
}

std::int64_t queryInteger(sqlite3* handle, const std::string& sql) {
    Statement statement(handle, sql);
    return statement.step() ? sqlite3_column_int64(statement.get(), 0) : 0;
}

} // namespace z7::cashflow::sqlite
