#include "adapters/odbc/Parameters.h"

#include "z7cashflow/support/conversions.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace z7::cashflow::odbc {

/// One value in the form required by ODBC.
struct Parameters::Cell {
    SQLSMALLINT cType = SQL_C_CHAR;
    SQLSMALLINT sqlType = SQL_VARCHAR;
    SQLULEN size = 1;
    SQLSMALLINT digits = 0;
    SQLPOINTER data = nullptr;
    SQLLEN length = 0;

    std::optional<ParameterText> text;
    SQLINTEGER whole = 0;
    double real = 0.0;
    unsigned char truth = 0;
    SQL_TIMESTAMP_STRUCT time{};

    void take(Null) { length = SQL_NULL_DATA; }
    void take(const std::string& value) {
        constexpr std::size_t longestShortText = 4000; // beyond it the server requires its type for long texts
        text.emplace(value);
        cType = ParameterText::cType();
        sqlType = text->length() > longestShortText ? SQL_WLONGVARCHAR : SQL_WVARCHAR;
        size = std::max<SQLULEN>(text->length(), 1);
        data = text->data();
        length = static_cast<SQLLEN>(text->byteCount());
    }
    void takeWhole(SQLINTEGER value) {
        whole = value;
        cType = SQL_C_SLONG;
        sqlType = SQL_INTEGER;
        size = 10;
        data = &whole;
    }
    void take(std::uint8_t value) { takeWhole(value); }
    void take(std::int16_t value) { takeWhole(value); }
    void take(std::int32_t value) { takeWhole(value); }
    void take(double value) {
        real = value;
        cType = SQL_C_DOUBLE;
        sqlType = SQL_DOUBLE;
        size = 53;
        data = &real;
    }
    void take(bool value) {
        truth = value ? 1 : 0;
        cType = SQL_C_BIT;
        sqlType = SQL_BIT;
        data = &truth;
    }
    void take(Date value) {
        // The server stores fractions of a second to about three milliseconds, and finds no record by a time
        // without them.
        constexpr std::int64_t dayLength = 86400000;
        double day = 0.0;
        const double partOfDay = std::fabs(std::modf(value.dayNumber(), &day));
        const std::int64_t milliseconds = std::llround(partOfDay * static_cast<double>(dayLength));
        const CivilTime civil = toCivil(Date(milliseconds == dayLength ? day + 1 : day));
        const auto part = [&](std::int64_t unit, std::int64_t count) {
            return static_cast<SQLUSMALLINT>(milliseconds / unit % count);
        };
        time.year = static_cast<SQLSMALLINT>(civil.year);
        time.month = static_cast<SQLUSMALLINT>(civil.month);
        time.day = static_cast<SQLUSMALLINT>(civil.day);
        time.hour = part(3600000, 24);
        time.minute = part(60000, 60);
        time.second = part(1000, 60);
        time.fraction = static_cast<SQLUINTEGER>(milliseconds % 1000) * 1000000U; // in billionths
        cType = SQL_C_TYPE_TIMESTAMP;
        sqlType = SQL_TYPE_TIMESTAMP;
        size = 23;
        digits = 3;
        data = &time;
    }
};

Parameters::Parameters(const std::vector<Variant>& values)
    : count_(values.size()), cells_(values.empty() ? nullptr : std::make_unique<Cell[]>(values.size())) {
    for (std::size_t i = 0; i < count_; ++i) {
        values[i].visit([&cell = cells_[i]](const auto& held) { cell.take(held); });
    }
}

Parameters::~Parameters() = default;

bool Parameters::bind(Handle statement) {
    for (std::size_t i = 0; i < count_; ++i) {
        Cell& cell = cells_[i];
        const SQLRETURN answer =
            SQLBindParameter(statement, static_cast<SQLUSMALLINT>(i + 1), SQL_PARAM_INPUT, cell.cType, cell.sqlType,
                             cell.size, cell.digits, cell.data, cell.length, &cell.length);
        if (!SQL_SUCCEEDED(answer)) {
            return false;
        }
    }
    return true;
}

} // namespace z7::cashflow::odbc
