#include "adapters/sqlite/literalValue.h"

#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

namespace z7::cashflow::sqlite {
namespace {

using cursor::ColumnType;

constexpr int textTooLong = 8152;
constexpr double moneyLimit = 922337203685477.5807;

/// "20130105", which needs no signs between its parts, and "2013-01-05T10:30:00" are dates to the server too.
std::optional<Date> readServerDate(std::string text) {
    const bool eightDigits = text.size() == 8 && text.find_first_not_of("0123456789") == std::string::npos;
    if (eightDigits) {
        text.insert(6, "-").insert(4, "-");
    } else if (text.size() > 10 && text[10] == 'T') {
        text[10] = ' ';
    }
    return readDate(text);
}

/// The number of a literal that is one. Error 8115 if no double holds it.
double numberOf(const LiteralBinding& binding, const tsql::Literal& literal) {
    double number = 0.0;
    const auto [end, error] = std::from_chars(literal.body.data(), literal.body.data() + literal.body.size(), number);
    if (error == std::errc::result_out_of_range) {
        tsql::raiseError(tsql::errors::numberTooLarge,
                         "The number " + std::string(literal.body.substr(0, 40)) + " is out of range.", "22003");
    }
    return binding.negative ? -number : number;
}

std::string dateFor(const LiteralBinding& binding, const tsql::Literal& literal) {
    constexpr double dayZero = 2.0; // the server counts its days from 1900-01-01
    if (literal.kind == tsql::Literal::Kind::number) {
        const Date date(dayZero + numberOf(binding, literal));
        if (!isValidDate(date)) {
            tsql::raiseError(tsql::errors::numberTooLarge,
                             "Arithmetic overflow error converting expression to data type datetime.", "22003");
        }
        return storedDate(date);
    }
    const std::string text = literal.value();
    if (text.find_first_not_of(' ') == std::string::npos) {
        return storedDate(Date(dayZero));
    }
    const auto date = readServerDate(text);
    if (!date) {
        tsql::raiseError(tsql::errors::badDate,
                         "Conversion failed when converting date and/or time from character string.", "22007");
    }
    return storedDate(*date);
}

double numberFor(const LiteralBinding& binding, const tsql::Literal& literal) {
    if (literal.kind == tsql::Literal::Kind::number) {
        return numberOf(binding, literal);
    }
    const std::string text = literal.value();
    if (text.find_first_not_of(' ') == std::string::npos) {
        return 0.0;
    }
    if (binding.type == ColumnType::boolean) {
        const std::string lower = asciiLower(text);
        if (lower == "true" || lower == "false") {
            return lower == "true" ? 1.0 : 0.0;
        }
    }
    const bool commas = binding.type != ColumnType::money && text.find(',') != std::string::npos;
    const auto number = commas ? std::nullopt : readNumber(text);
    if (!number) {
        tsql::raiseError(tsql::errors::badNumber,
                         "Error converting data type nvarchar to the number type of column " + binding.column + ".",
                         "22018");
    }
    return *number;
}

[[noreturn]] void raiseOverflow(const LiteralBinding& binding) {
    tsql::raiseError(tsql::errors::numberTooLarge,
                     "Arithmetic overflow error converting a number to the type of column " + binding.column + ".",
                     "22003");
}

void bindWhole(Statement& statement, int position, const LiteralBinding& binding, double number) {
    if (!binding.assigned && number != std::trunc(number)) {
        statement.bind(position, number); // compared, not stored: 1.5 equals no whole number
        return;
    }
    if (binding.type == ColumnType::boolean) {
        statement.bind(position, std::int64_t{number != 0.0 ? 1 : 0});
        return;
    }
    const double least = binding.type == ColumnType::byte    ? 0.0
                         : binding.type == ColumnType::int16 ? -32768.0
                                                             : -2147483648.0;
    const double most = binding.type == ColumnType::byte    ? 255.0
                        : binding.type == ColumnType::int16 ? 32767.0
                                                            : 2147483647.0;
    const double whole = std::trunc(number);
    if (binding.assigned && !(whole >= least && whole <= most)) {
        raiseOverflow(binding);
    }
    if (std::fabs(whole) < 9.0e15) {
        statement.bind(position, static_cast<std::int64_t>(whole));
    } else {
        statement.bind(position, number);
    }
}

void bindMoney(Statement& statement, int position, const LiteralBinding& binding, double number) {
    if (!(std::fabs(number) <= moneyLimit)) {
        if (binding.assigned) {
            raiseOverflow(binding);
        }
        statement.bind(position, number);
        return;
    }
    statement.bind(position, std::round(number * 10000.0) / 10000.0);
}

void bindText(Statement& statement, int position, const LiteralBinding& binding, const tsql::Literal& literal) {
    const std::size_t length = static_cast<std::size_t>(binding.length);
    if (binding.assigned && length > 0 && literal.body.size() > length && characterCount(literal.value()) > length) {
        tsql::raiseError(textTooLong, "String or binary data would be truncated in column " + binding.column + ".",
                         "22001");
    }
    if (literal.doubledQuotes) {
        statement.bind(position, Variant(literal.value()));
    } else if (binding.negative) {
        statement.bind(position, Variant("-" + std::string(literal.body)));
    } else {
        statement.bindBorrowed(position, literal.body);
    }
}

void bindPlain(Statement& statement, int position, const LiteralBinding& binding, const tsql::Literal& literal) {
    if (literal.kind == tsql::Literal::Kind::text) {
        bindText(statement, position, binding, literal);
        return;
    }
    std::int64_t whole = 0;
    const char* end = literal.body.data() + literal.body.size();
    const auto [stop, error] = std::from_chars(literal.body.data(), end, whole);
    if (error == std::errc() && stop == end) {
        statement.bind(position, binding.negative ? -whole : whole);
    } else {
        statement.bind(position, numberFor(binding, literal));
    }
}

} // namespace

void bindLiteral(Statement& statement, int position, const LiteralBinding& binding, const tsql::Literal& literal) {
    switch (binding.type) {
    case ColumnType::any:
        bindPlain(statement, position, binding, literal);
        break;
    case ColumnType::text:
        bindText(statement, position, binding, literal);
        break;
    case ColumnType::date:
        statement.bind(position, Variant(dateFor(binding, literal)));
        break;
    case ColumnType::real:
        statement.bind(position, numberFor(binding, literal));
        break;
    case ColumnType::money:
        bindMoney(statement, position, binding, numberFor(binding, literal));
        break;
    case ColumnType::boolean:
    case ColumnType::byte:
    case ColumnType::int16:
    case ColumnType::int32:
        bindWhole(statement, position, binding, numberFor(binding, literal));
        break;
    }
}

} // namespace z7::cashflow::sqlite
