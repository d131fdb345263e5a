#include "adapters/tsql/literalValue.h"

#include "adapters/shared/recordset/fieldValue.h"
#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <charconv>
#include <cmath>
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
        if (error != std::errc()) { // out of the range of a double
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
    constexpr double dayZero = 2.0; // the server counts days from 1900-01-01
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

bool isWhole(ColumnType type) {
    return type == ColumnType::boolean || type == ColumnType::byte || type == ColumnType::int16 ||
           type == ColumnType::int32;
}

/// A number as its column holds it; one that it cannot hold is an error if it is assigned, and equal to nothing if
/// it is compared.
Variant heldNumber(double number, const shared::Column& column, bool assigned) {
    const bool counts = isWhole(column.type) && column.type != ColumnType::boolean;
    if (!assigned && isWhole(column.type) && number != std::trunc(number)) {
        return Variant(number); // 1.5 equals no whole number
    }
    try {
        return shared::fieldValue(column, Variant(counts ? std::trunc(number) : number));
    } catch (const Error&) {
        if (assigned) {
            raiseOverflow(column);
        }
        return Variant(number);
    }
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
    case ColumnType::boolean:
    case ColumnType::byte:
    case ColumnType::int16:
    case ColumnType::int32:
    case ColumnType::real:
    case ColumnType::money:
        break;
    }
    return heldNumber(numberOf(literal, negative, column), column, assigned);
}

} // namespace z7::cashflow::tsql
