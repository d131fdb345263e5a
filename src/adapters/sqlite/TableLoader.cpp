#include "adapters/sqlite/TableLoader.h"

#include "adapters/cursor/fieldValue.h"
#include "adapters/sqlite/Catalogue.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/Session.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/conversions.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace z7::cashflow::sqlite {
namespace {

constexpr int badRow = 8114;

/// The places where a table may lie, in the order in which they are tried, and its plain name.
std::vector<tsql::TableName> placesOf(const std::string& table) {
    using Place = tsql::TableName::Place;
    const std::string lower = asciiLower(table);
    for (const auto& [prefix, place] : {std::pair<std::string_view, Place>{"tempdb..", Place::temp},
                                        std::pair<std::string_view, Place>{"zqsystem..", Place::system}}) {
        if (lower.starts_with(prefix)) {
            return {{place, table.substr(prefix.size())}};
        }
    }
    return {{Place::account, table}, {Place::system, table}};
}

struct FoundTable {
    tsql::TableName name;
    std::shared_ptr<const TableShape> shape;
};

FoundTable findTable(Session& session, const std::string& table) {
    for (const tsql::TableName& name : placesOf(table)) {
        auto shape = session.catalogue().table(name);
        if (!shape->columns.empty()) {
            return {name, std::move(shape)};
        }
    }
    tsql::raiseError(tsql::errors::unknownObject, "Invalid object name '" + table + "'.", "42S02");
}

std::string describe(const TableColumn& column) {
    using cursor::ColumnType;
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

bool isWhole(cursor::ColumnType type) {
    using cursor::ColumnType;
    return type == ColumnType::byte || type == ColumnType::int16 || type == ColumnType::int32 ||
           type == ColumnType::boolean;
}

/// Whether a text is written as its column wants it, before it is converted.
bool isWellWritten(const TableColumn& column, std::string_view text) {
    using cursor::ColumnType;
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

} // namespace

struct TableLoader::Statement {
    std::shared_ptr<Session> session;
    std::string sql;
    std::vector<Variant> values;
};

std::vector<std::string> tableNames(Connection& connection) {
    std::vector<std::string> names;
    for (const char* place : {"main", "zqsystem"}) {
        sqlite::Statement statement(connection.session().nativeHandle(),
                                    "SELECT name FROM " + std::string(place) +
                                        ".sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite[_]%'");
        while (statement.step()) {
            names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
        }
    }
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return asciiLower(a) < asciiLower(b); });
    return names;
}

std::vector<TableColumn> tableColumns(Connection& connection, const std::string& table) {
    return findTable(connection.session(), table).shape->columns;
}

LoadError::LoadError(const std::string& table, std::string column, std::string reason)
    : Error(badRow, errorSource, table + (column.empty() ? "" : "." + column) + ": " + reason, "22018"),
      column_(std::move(column)), reason_(std::move(reason)) {}

TableLoader::TableLoader(Connection& connection, const std::string& table, const std::vector<std::string>& columns)
    : statement_(std::make_unique<Statement>()) {
    statement_->session = connection.session().shared_from_this();
    const FoundTable found = findTable(*statement_->session, table);
    table_ = found.name.name;
    std::vector<bool> named(found.shape->columns.size(), false);
    std::string list;
    std::string places;
    for (const std::string& name : columns) {
        const int position = found.shape->find(name);
        if (position < 0) {
            throw LoadError(table_, name, "the table has no such column");
        }
        if (named[static_cast<std::size_t>(position)]) {
            throw LoadError(table_, name, "the column is named twice");
        }
        named[static_cast<std::size_t>(position)] = true;
        columns_.push_back(found.shape->columns[static_cast<std::size_t>(position)]);
        list += (list.empty() ? "" : ", ") + tsql::quotedName(columns_.back().name);
        places += places.empty() ? "?" : ", ?";
    }
    for (std::size_t i = 0; i < named.size(); ++i) {
        const TableColumn& column = found.shape->columns[i];
        if (!named[i] && !column.nullable && !column.hasDefault) {
            throw LoadError(table_, column.name, "the column must have a value and is not there");
        }
    }
    statement_->sql = "INSERT INTO " + tsql::qualifiedName(found.name) + " (" + list + ") VALUES (" + places + ")";
    statement_->values.resize(columns_.size());
}

TableLoader::~TableLoader() = default;

void TableLoader::add(const std::vector<std::optional<std::string_view>>& values) {
    if (values.size() != columns_.size()) {
        throw LoadError(table_, {},
                        "the row has " + std::to_string(values.size()) + " values for " +
                            std::to_string(columns_.size()) + " columns");
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const TableColumn& column = columns_[i];
        if (!values[i]) {
            if (!column.nullable) {
                throw LoadError(table_, column.name, "the column must have a value");
            }
            statement_->values[i] = Variant();
            continue;
        }
        bool fits = isWellWritten(column, *values[i]);
        if (fits) {
            try {
                statement_->values[i] =
                    cursor::fieldValue({column.name, column.type, column.length}, Variant(*values[i]));
            } catch (const Error&) {
                fits = false;
            }
        }
        if (!fits) {
            throw LoadError(table_, column.name,
                            "\"" + std::string(leftCharacters(*values[i], 60)) + "\" is not " + describe(column));
        }
    }
    try {
        statement_->session->runOwn(statement_->sql, statement_->values);
    } catch (const Error& error) {
        if ((error.number() & 0xFF) != SQLITE_CONSTRAINT) {
            throw;
        }
        throw LoadError(table_, {}, error.description());
    }
    ++count_;
}

} // namespace z7::cashflow::sqlite
