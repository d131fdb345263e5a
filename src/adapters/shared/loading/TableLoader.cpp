#include "adapters/shared/loading/TableLoader.h"

#include "adapters/shared/recordset/fieldValue.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <utility>

namespace z7::cashflow::shared {
namespace {

/// What a text that is not a value of its column should have been.
struct Wanted {
    DatabaseReason reason;
    std::vector<std::string> arguments{}; ///< those after the text itself
};

constexpr std::string_view blanks = " \t";

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::size_t digitsAt(std::string_view text, std::size_t from) {
    const std::size_t end = text.find_first_not_of("0123456789", from);
    return (end == std::string_view::npos ? text.size() : end) - from;
}

/// The parts of a decimal number as written, such as -1234.50e2.
struct Numeral {
    std::string_view fraction; ///< digits after the point, without trailing zeros
    std::int64_t exponent = 0; ///< limited to a million, beyond which it makes no difference
};

/// The parts of a decimal number; empty for any other text.
std::optional<Numeral> readNumeral(std::string_view text) {
    std::size_t at = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const std::size_t whole = digitsAt(text, at);
    at += whole;
    Numeral numeral;
    if (at < text.size() && text[at] == '.') {
        numeral.fraction = text.substr(at + 1, digitsAt(text, at + 1));
        at += 1 + numeral.fraction.size();
    }
    if (whole + numeral.fraction.size() == 0) {
        return std::nullopt;
    }
    numeral.fraction = numeral.fraction.substr(0, numeral.fraction.find_last_not_of('0') + 1);
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        const bool negative = at + 1 < text.size() && text[at + 1] == '-';
        at += negative || (at + 1 < text.size() && text[at + 1] == '+') ? 2 : 1;
        const std::size_t digits = digitsAt(text, at);
        if (digits == 0) {
            return std::nullopt;
        }
        for (const char digit : text.substr(at, digits)) {
            numeral.exponent = std::min<std::int64_t>(numeral.exponent * 10 + (digit - '0'), 1'000'000);
        }
        numeral.exponent = negative ? -numeral.exponent : numeral.exponent;
        at += digits;
    }
    return at == text.size() ? std::optional(numeral) : std::nullopt;
}

constexpr std::int64_t moneyDecimals = 4;

/// Whether storing an amount would round it.
bool isTooPrecise(std::string_view text) {
    const auto numeral = readNumeral(text);
    const bool zero = text.substr(0, text.find_first_of("eE")).find_first_of("123456789") == std::string_view::npos;
    if (!numeral || zero) {
        return false;
    }
    if (!numeral->fraction.empty()) {
        return static_cast<std::int64_t>(numeral->fraction.size()) - numeral->exponent > moneyDecimals;
    }
    // 1200e-6 is 0.0012: trailing zeros of the whole part compensate for a negative exponent.
    const std::string_view whole = text.substr(0, text.find_first_of(".eE"));
    const auto zeros = static_cast<std::int64_t>(whole.size() - 1 - whole.find_last_not_of('0'));
    return -numeral->exponent - zeros > moneyDecimals;
}

Wanted wantedNumber(const TableColumn& column, std::string_view text) {
    if (!readNumeral(text)) {
        return {DatabaseReason::notANumber};
    }
    if (column.type == ColumnType::money && isTooPrecise(text)) {
        return {DatabaseReason::amountTooFine};
    }
    return {DatabaseReason::numberTooLarge,
            {column.type == ColumnType::money ? "922337203685477.5807" : "1.7976931348623157e308"}};
}

Wanted wanted(const TableColumn& column, std::string_view text) {
    switch (column.type) {
    case ColumnType::boolean:
        return {DatabaseReason::notATruth};
    case ColumnType::byte:
        return {DatabaseReason::notAWholeNumber, {"0", "255"}};
    case ColumnType::int16:
        return {DatabaseReason::notAWholeNumber, {"-32768", "32767"}};
    case ColumnType::int32:
        return {DatabaseReason::notAWholeNumber, {"-2147483648", "2147483647"}};
    case ColumnType::real:
    case ColumnType::money:
        return wantedNumber(column, text);
    case ColumnType::date:
        return {DatabaseReason::notADate};
    case ColumnType::text:
    case ColumnType::any:
        break;
    }
    return {DatabaseReason::textTooLong, {std::to_string(column.length)}};
}

bool isWhole(ColumnType type) {
    return type == ColumnType::byte || type == ColumnType::int16 || type == ColumnType::int32 ||
           type == ColumnType::boolean;
}

/// Whether a text has the form that its column requires, before it is converted.
bool isWellWritten(const TableColumn& column, std::string_view text) {
    if (column.type == ColumnType::text || column.type == ColumnType::any) {
        return true;
    }
    if (column.type == ColumnType::date) {
        return readDate(text).has_value();
    }
    if (column.type == ColumnType::boolean) {
        const std::string lower = asciiLower(text);
        if (lower == "true" || lower == "false") {
            return true;
        }
    }
    const auto number = text.find(',') == std::string_view::npos ? readNumber(text) : std::nullopt;
    const bool whole =
        number && *number == static_cast<double>(static_cast<std::int64_t>(std::clamp(*number, -9.0e15, 9.0e15)));
    const bool bit = column.type != ColumnType::boolean || (number && (*number == 0.0 || *number == 1.0));
    const bool exact = column.type != ColumnType::money || !isTooPrecise(text);
    return number && bit && exact && (whole || !isWhole(column.type));
}

/// The text as a value of the column; empty if it is not one.
std::optional<Variant> columnValue(const TableColumn& column, std::string_view text) {
    if (isWellWritten(column, text)) {
        try {
            return fieldValue({column.name, column.type, column.length}, Variant(text));
        } catch (const Error&) { // out of the column's range, or too long
        }
    }
    return std::nullopt;
}

} // namespace

LoadError::LoadError(std::string source, const std::string& table, std::vector<std::string> columns, Explanation fault)
    : Error(std::move(source),
            columns.size() == 1 && fault.reason != DatabaseReason::keyTaken
                ? Explanation{DatabaseReason::rowsOfColumn, {table, columns.front()}, {std::move(fault)}}
                : Explanation{DatabaseReason::rowsOfTable, {table}, {std::move(fault)}},
            "22018"),
      columns_(std::move(columns)) {}

TableLoader::TableLoader(std::string source, std::string table, const std::vector<TableColumn>& known,
                         const std::vector<std::string>& columns)
    : source_(std::move(source)), table_(std::move(table)) {
    std::vector<bool> named(known.size(), false);
    for (const std::string& name : columns) {
        const auto found = std::find_if(known.begin(), known.end(), [&name](const TableColumn& column) {
            return asciiLower(column.name) == asciiLower(name);
        });
        if (found == known.end()) {
            refuse(DatabaseReason::columnUnknown, name, {table_});
        }
        const auto position = static_cast<std::size_t>(found - known.begin());
        if (named[position]) {
            refuse(DatabaseReason::columnTwice, name);
        }
        named[position] = true;
        columns_.push_back(*found);
    }
    for (std::size_t i = 0; i < named.size(); ++i) {
        if (!named[i] && !known[i].nullable && !known[i].hasDefault) {
            refuse(DatabaseReason::columnMissing, known[i].name);
        }
    }
    values_.resize(columns_.size());
}

void TableLoader::add(const std::vector<std::optional<std::string_view>>& values) {
    if (values.size() != columns_.size()) {
        refuse(DatabaseReason::valueCountWrong, {}, {std::to_string(values.size()), std::to_string(columns_.size())});
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const TableColumn& column = columns_[i];
        const bool text = column.type == ColumnType::text || column.type == ColumnType::any;
        const std::string_view given = !values[i] ? std::string_view() : text ? *values[i] : withoutBlanks(*values[i]);
        if (!values[i] || (given.empty() && !values[i]->empty())) {
            if (!column.nullable) {
                refuse(DatabaseReason::columnWithoutValue, column.name);
            }
            values_[i] = Variant();
            continue;
        }
        auto value = columnValue(column, given);
        if (!value) {
            Wanted fault = wanted(column, given);
            fault.arguments.insert(fault.arguments.begin(), shortened(given));
            refuse(fault.reason, column.name, std::move(fault.arguments));
        }
        values_[i] = std::move(*value);
    }
    insert(values_);
    ++count_;
}

void TableLoader::refuse(DatabaseReason reason, const std::string& column, std::vector<std::string> arguments) const {
    const std::vector<std::string> columns(column.empty() ? 0 : 1, column);
    throw LoadError(source_, table_, columns, {reason, std::move(arguments)});
}

void TableLoader::refuseRow(const Error& reason) const {
    throw LoadError(source_, table_, {}, {DatabaseReason::rowRefused, {}, {reason.asCause()}});
}

void TableLoader::refuseDoubleKey(std::vector<std::string> keyColumns) const {
    std::string key;
    for (const std::string& column : keyColumns) {
        key += (key.empty() ? "" : ", ") + column;
    }
    throw LoadError(source_, table_, std::move(keyColumns), {DatabaseReason::keyTaken, {std::move(key)}});
}

} // namespace z7::cashflow::shared
