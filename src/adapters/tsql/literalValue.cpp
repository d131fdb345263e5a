#include "adapters/tsql/literalValue.h"

#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/conversions.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

namespace z7::cashflow::tsql {
namespace {

using shared::ColumnType;

[[noreturn]] void raiseOverflow(const shared::Column& column) {
    raiseError(TsqlReason::overflow, {column.name}, "22003");
}

double numberOf(const Literal& literal, bool negative, const shared::Column& column) {
    if (literal.kind == Literal::Kind::number) {
        double number = 0.0;
        const auto [end, error] =
            std::from_chars(literal.body.data(), literal.body.data() + literal.body.size(), number);
        if (error != std::errc()) { // no double holds it
            raiseOverflow(column);
        }
        return negative ? -number : number;
    }
    const std::string text = literal.value();
    if (text.find_first_not_of(' ') == std::string::npos) {
        return 0.0;
    }
    const std::string lower = asciiLower(text);
    if (column.type == ColumnType::boolean && (lower == "true" || lower == "false")) {
        return lower == "true" ? 1.0 : 0.0;
    }
    const bool commas = column.type != ColumnType::money && text.find(',') != std::string::npos;
    const auto number = commas ? std::nullopt : readNumber(text);
    if (!number) {
        raiseError(TsqlReason::notANumber, {column.name}, "22018");
    }
    return *number;
}

Variant dateOf(const Literal& literal, bool negative, const shared::Column& column) {
    constexpr double dayZero = 2.0; // the server counts its days from 1900-01-01
    if (literal.kind == Literal::Kind::number) {
        const Date date(dayZero + numberOf(literal, negative, column));
        if (!isValidDate(date)) {
            raiseOverflow(column);
        }
        return Variant(date);
    }
    std::string text = literal.value();
    if (text.find_first_not_of(' ') == std::string::npos) {
        return Variant(Date(dayZero));
    }
    if (text.size() == 8 && text.find_first_not_of("0123456789") == std::string::npos) {
        text.insert(6, "-").insert(4, "-"); // 20130105 needs no signs between its parts
    } else if (text.size() > 10 && text[10] == 'T') {
        text[10] = ' ';
    }
    const auto date = readDate(text);
    if (!date) {
        raiseError(TsqlReason::notADate, {}, "22007");
    }
    return Variant(*date);
}

Variant wholeOf(double number, const shared::Column& column, bool assigned) {
    if (!assigned && number != std::trunc(number)) {
        return Variant(number); // compared, not stored: 1.5 equals no whole number
    }
    if (column.type == ColumnType::boolean) {
        return Variant(std::int32_t{number != 0.0 ? 1 : 0});
    }
    const double least = column.type == ColumnType::byte    ? 0.0
                         : column.type == ColumnType::int16 ? -32768.0
                                                            : -2147483648.0;
    const double most = column.type == ColumnType::byte    ? 255.0
                        : column.type == ColumnType::int16 ? 32767.0
                                                           : 2147483647.0;
    const double whole = std::trunc(number);
    if (assigned && !(whole >= least && whole <= most)) {
        raiseOverflow(column);
    }
    const bool fits = std::fabs(whole) <= std::numeric_limits<std::int32_t>::max();
    return fits ? Variant(static_cast<std::int32_t>(whole)) : Variant(number);
}

Variant moneyOf(double number, const shared::Column& column, bool assigned) {
    constexpr double limit = 922337203685477.5807;
    if (std::fabs(number) <= limit) {
        return Variant(std::round(number * 10000.0) / 10000.0);
    }
    if (assigned) {
        raiseOverflow(column);
    }
    return Variant(number);
}

Variant textOf(const Literal& literal, bool negative, const shared::Column& column, bool assigned) {
    std::string text = (negative ? "-" : "") + literal.value();
    if (assigned) {
        requireLength(text, column);
    }
    return Variant(std::move(text));
}

Variant plainValue(const Literal& literal, bool negative) {
    if (literal.kind == Literal::Kind::text) {
        return Variant(literal.value());
    }
    std::int32_t whole = 0;
    const char* end = literal.body.data() + literal.body.size();
    const auto [stop, error] = std::from_chars(literal.body.data(), end, whole);
    if (error == std::errc() && stop == end) {
        return Variant(negative ? -whole : whole);
    }
    return Variant(numberOf(literal, negative, {"of the expression", ColumnType::any, 0}));
}

} // namespace

void requireLength(std::string_view text, const shared::Column& column) {
    const auto most = static_cast<std::size_t>(column.length);
    if (most > 0 && text.size() > most && characterCount(text) > most) {
        raiseError(TsqlReason::textTooLong, {column.name}, "22001");
    }
}

Variant literalValue(const Literal& literal, bool negative, const shared::Column& column, bool assigned) {
    switch (column.type) {
    case ColumnType::any:
        return plainValue(literal, negative);
    case ColumnType::text:
        return textOf(literal, negative, column, assigned);
    case ColumnType::date:
        return dateOf(literal, negative, column);
    case ColumnType::real:
        return Variant(numberOf(literal, negative, column));
    case ColumnType::money:
        return moneyOf(numberOf(literal, negative, column), column, assigned);
    case ColumnType::boolean:
    case ColumnType::byte:
    case ColumnType::int16:
    case ColumnType::int32:
        break;
    }
    return wholeOf(numberOf(literal, negative, column), column, assigned);
}

} // namespace z7::cashflow::tsql
