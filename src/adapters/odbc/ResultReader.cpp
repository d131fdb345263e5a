#include "adapters/odbc/ResultReader.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <sql.h>
#include <sqlext.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <string>
#include <system_error>

namespace z7::cashflow::odbc {
namespace {

template <class T> bool getValue(Handle statement, int position, SQLSMALLINT type, T& value, bool& isNull) {
    SQLLEN length = 0;
    const SQLRETURN answer =
        SQLGetData(statement, static_cast<SQLUSMALLINT>(position), type, &value, sizeof(value), &length);
    isNull = length == SQL_NULL_DATA;
    return SQL_SUCCEEDED(answer);
}

/// The text of a date outside this program's calendar, such as in the year 50.
std::string timeText(const SQL_TIMESTAMP_STRUCT& time) {
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02u:%02u:%02u", time.year, time.month,
                                     time.day, time.hour, time.minute, time.second);
    return std::string(text.data(), static_cast<std::size_t>(length));
}

} // namespace

std::optional<int> ResultReader::columnCount(Handle statement) {
    SQLSMALLINT count = 0;
    return SQL_SUCCEEDED(SQLNumResultCols(statement, &count)) ? std::optional<int>(count) : std::nullopt;
}

std::unique_ptr<shared::RowSet> ResultReader::read(Handle statement, const ResultShape& shape) {
    auto rows = std::make_unique<shared::RowSet>(shape.list);
    while (true) {
        const SQLRETURN answer = SQLFetch(statement);
        if (answer == SQL_NO_DATA) {
            return rows;
        }
        if (!SQL_SUCCEEDED(answer)) {
            return nullptr;
        }
        int position = 0;
        for (const FetchAs fetchAs : shape.fetchAs) {
            if (!readValue(statement, ++position, fetchAs, *rows)) {
                return nullptr;
            }
        }
    }
}

bool ResultReader::readValue(Handle statement, int position, FetchAs fetchAs, shared::RowSet& rows) {
    bool isNull = false;
    switch (fetchAs) {
    case FetchAs::whole: {
        SQLBIGINT value = 0;
        if (!getValue(statement, position, SQL_C_SBIGINT, value, isNull)) {
            return false;
        }
        isNull ? rows.addNull() : rows.addInteger(value);
        return true;
    }
    case FetchAs::real: {
        double value = 0.0;
        if (!getValue(statement, position, SQL_C_DOUBLE, value, isNull)) {
            return false;
        }
        isNull ? rows.addNull() : rows.addReal(value);
        return true;
    }
    case FetchAs::date:
        return readDate(statement, position, rows);
    case FetchAs::text:
    case FetchAs::numberOrText:
        break;
    }
    return readText(statement, position, fetchAs == FetchAs::numberOrText, rows);
}

bool ResultReader::readDate(Handle statement, int position, shared::RowSet& rows) const {
    SQL_TIMESTAMP_STRUCT time{};
    bool isNull = false;
    if (!getValue(statement, position, SQL_C_TYPE_TIMESTAMP, time, isNull)) {
        return false;
    }
    if (isNull) {
        rows.addNull();
        return true;
    }
    constexpr int firstYear = 100;
    if (time.year < firstYear) {
        rows.addText(timeText(time));
        return true;
    }
    constexpr double fractionsPerDay = 86400e9; // ODBC counts fractions of a second in billionths
    const Date date = Date::fromCivil(time.year, time.month, time.day, time.hour, time.minute, time.second);
    // The fraction is the time of day, also for days before the first one.
    const double fraction = time.fraction / fractionsPerDay;
    rows.addDate(Date(date.dayNumber() + (date.dayNumber() < 0 ? -fraction : fraction)));
    return true;
}

bool ResultReader::readText(Handle statement, int position, bool maybeNumber, shared::RowSet& rows) {
    switch (text_.read(statement, position)) {
    case TextReader::Outcome::failed:
        return false;
    case TextReader::Outcome::null:
        rows.addNull();
        return true;
    case TextReader::Outcome::value:
        break;
    }
    const std::string_view text = text_.text();
    const char* end = text.data() + text.size();
    if (maybeNumber) {
        std::int64_t whole = 0;
        if (const auto [stop, error] = std::from_chars(text.data(), end, whole); error == std::errc() && stop == end) {
            rows.addInteger(whole);
            return true;
        }
        double real = 0.0;
        if (const auto [stop, error] = std::from_chars(text.data(), end, real); error == std::errc() && stop == end) {
            rows.addReal(real);
            return true;
        }
    }
    rows.addText(text);
    return true;
}

} // namespace z7::cashflow::odbc
