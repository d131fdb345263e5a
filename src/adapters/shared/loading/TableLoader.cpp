#include "adapters/shared/loading/TableLoader.h"

#include "adapters/shared/recordset/fieldValue.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <utility>

namespace z7::cashflow::shared {
namespace {

constexpr int badRow = 8114;

/// The reason in English.
std::string sentence(LoadError::Kind kind, const std::vector<std::string>& arguments) {
    using Kind = LoadError::Kind;
    switch (kind) {
    case Kind::unknownColumn:
        return "the table has no such column";
    case Kind::columnTwice:
        return "the column is named twice";
    case Kind::columnMissing:
        return "the column must have a value and is not there";
    case Kind::wrongCount:
        return "the row has " + arguments.at(0) + " values for " + arguments.at(1) + " columns";
    case Kind::noValue:
        return "the column must have a value";
    case Kind::noTruth:
        return "\"" + arguments.at(0) + "\" is not 0, 1, true or false";
    case Kind::noWhole:
        return "\"" + arguments.at(0) + "\" is not a whole number from " + arguments.at(1) + " to " + arguments.at(2);
    case Kind::noNumber:
        return "\"" + arguments.at(0) + "\" is not a number (thousands commas are not allowed)";
    case Kind::noDate:
        return "\"" + arguments.at(0) + "\" is not a date, written year first";
    case Kind::tooLong:
        return "\"" + arguments.at(0) + "\" is not a text of at most " + arguments.at(1) + " characters";
    case Kind::refused:
        break;
    }
    return arguments.at(0);
}

/// What a text that is no value of a column should have been.
struct Wanted {
    LoadError::Kind kind;
    std::vector<std::string> arguments{}; ///< those behind the text itself
};

Wanted wanted(const TableColumn& column) {
    using Kind = LoadError::Kind;
    switch (column.type) {
    case ColumnType::boolean:
        return {Kind::noTruth};
    case ColumnType::byte:
        return {Kind::noWhole, {"0", "255"}};
    case ColumnType::int16:
        return {Kind::noWhole, {"-32768", "32767"}};
    case ColumnType::int32:
        return {Kind::noWhole, {"-2147483648", "2147483647"}};
    case ColumnType::real:
    case ColumnType::money:
        return {Kind::noNumber};
    case ColumnType::date:
        return {Kind::noDate};
    case ColumnType::text:
    case ColumnType::any:
        break;
    }
    return {Kind::tooLong, {std::to_string(column.length)}};
}

bool isWhole(ColumnType type) {
    return type == ColumnType::byte || type == ColumnType::int16 || type == ColumnType::int32 ||
           type == ColumnType::boolean;
}

/// Whether a text is written as its column wants it, before it is converted.
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
    return number && bit && (whole || !isWhole(column.type));
}

/// The text as a value of the column; nothing if it is none.
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

LoadError::LoadError(std::string source, const std::string& table, std::string column, Kind kind,
                     std::vector<std::string> arguments)
    : Error(badRow, std::move(source), table + (column.empty() ? "" : "." + column) + ": " + sentence(kind, arguments),
            "22018"),
      column_(std::move(column)), kind_(kind), arguments_(std::move(arguments)) {}

TableLoader::TableLoader(std::string source, std::string table, const std::vector<TableColumn>& known,
                         const std::vector<std::string>& columns)
    : source_(std::move(source)), table_(std::move(table)) {
    std::vector<bool> named(known.size(), false);
    for (const std::string& name : columns) {
        const auto found = std::find_if(known.begin(), known.end(), [&name](const TableColumn& column) {
            return asciiLower(column.name) == asciiLower(name);
        });
        if (found == known.end()) {
            refuse(LoadError::Kind::unknownColumn, name, {table_});
        }
        const auto position = static_cast<std::size_t>(found - known.begin());
        if (named[position]) {
            refuse(LoadError::Kind::columnTwice, name);
        }
        named[position] = true;
        columns_.push_back(*found);
    }
    for (std::size_t i = 0; i < named.size(); ++i) {
        if (!named[i] && !known[i].nullable && !known[i].hasDefault) {
            refuse(LoadError::Kind::columnMissing, known[i].name);
        }
    }
    values_.resize(columns_.size());
}

void TableLoader::add(const std::vector<std::optional<std::string_view>>& values) {
    if (values.size() != columns_.size()) {
        refuse(LoadError::Kind::wrongCount, {}, {std::to_string(values.size()), std::to_string(columns_.size())});
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const TableColumn& column = columns_[i];
        if (!values[i]) {
            if (!column.nullable) {
                refuse(LoadError::Kind::noValue, column.name);
            }
            values_[i] = Variant();
            continue;
        }
        auto value = columnValue(column, *values[i]);
        if (!value) {
            Wanted reason = wanted(column);
            reason.arguments.insert(reason.arguments.begin(), shortened(*values[i]));
            refuse(reason.kind, column.name, std::move(reason.arguments));
        }
        values_[i] = std::move(*value);
    }
    insert(values_);
    ++count_;
}

void TableLoader::refuse(LoadError::Kind kind, const std::string& column, std::vector<std::string> arguments) const {
    throw LoadError(source_, table_, column, kind, std::move(arguments));
}

void TableLoader::refuseRow(const std::string& reason) const { refuse(LoadError::Kind::refused, {}, {reason}); }

} // namespace z7::cashflow::shared
