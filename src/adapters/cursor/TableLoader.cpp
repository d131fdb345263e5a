#include "adapters/cursor/TableLoader.h"

#include "adapters/cursor/fieldValue.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <utility>

namespace z7::cashflow::cursor {
namespace {

constexpr int badRow = 8114;

std::string describe(const TableColumn& column) {
    switch (column.type) {
    case ColumnType::boolean:
        return "0, 1, true or false";
    case ColumnType::byte:
        return "a whole number from 0 to 255";
    case ColumnType::int16:
        return "a whole number from -32768 to 32767";
    case ColumnType::int32:
        return "a whole number from -2147483648 to 2147483647";
    case ColumnType::real:
    case ColumnType::money:
        return "a number, written without thousands commas";
    case ColumnType::date:
        return "a date, written year first";
    case ColumnType::text:
    case ColumnType::any:
        break;
    }
    return "a text of at most " + std::to_string(column.length) + " characters";
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

LoadError::LoadError(std::string source, const std::string& table, std::string column, std::string reason)
    : Error(badRow, std::move(source), table + (column.empty() ? "" : "." + column) + ": " + reason, "22018"),
      column_(std::move(column)), reason_(std::move(reason)) {}

TableLoader::TableLoader(std::string source, std::string table, const std::vector<TableColumn>& known,
                         const std::vector<std::string>& columns)
    : source_(std::move(source)), table_(std::move(table)) {
    std::vector<bool> named(known.size(), false);
    for (const std::string& name : columns) {
        const auto found = std::find_if(known.begin(), known.end(), [&name](const TableColumn& column) {
            return asciiLower(column.name) == asciiLower(name);
        });
        if (found == known.end()) {
            refuse(name, "the table has no such column");
        }
        const auto position = static_cast<std::size_t>(found - known.begin());
        if (named[position]) {
            refuse(name, "the column is named twice");
        }
        named[position] = true;
        columns_.push_back(*found);
    }
    for (std::size_t i = 0; i < named.size(); ++i) {
        if (!named[i] && !known[i].nullable && !known[i].hasDefault) {
            refuse(known[i].name, "the column must have a value and is not there");
        }
    }
    values_.resize(columns_.size());
}

void TableLoader::add(const std::vector<std::optional<std::string_view>>& values) {
    if (values.size() != columns_.size()) {
        refuse({}, "the row has " + std::to_string(values.size()) + " values for " + std::to_string(columns_.size()) +
                       " columns");
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const TableColumn& column = columns_[i];
        if (!values[i]) {
            if (!column.nullable) {
                refuse(column.name, "the column must have a value");
            }
            values_[i] = Variant();
            continue;
        }
        auto value = columnValue(column, *values[i]);
        if (!value) {
            refuse(column.name, "\"" + std::string(leftCharacters(*values[i], 60)) + "\" is not " + describe(column));
        }
        values_[i] = std::move(*value);
    }
    insert(values_);
    ++count_;
}

void TableLoader::refuse(std::string column, std::string reason) const {
    throw LoadError(source_, table_, std::move(column), std::move(reason));
}

} // namespace z7::cashflow::cursor
