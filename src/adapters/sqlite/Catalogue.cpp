#include "adapters/sqlite/Catalogue.h"

#include "adapters/sqlite/Statement.h"
#include "adapters/tsql/declaredType.h"
#include "z7cashflow/support/conversions.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace z7::cashflow::sqlite {
namespace {

constexpr std::size_t mostTables = 256;

std::string textAt(const Statement& statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column));
    return text == nullptr ? std::string() : std::string(text);
}

} // namespace

int TableShape::find(std::string_view name) const {
    const std::string lower = asciiLower(name);
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const TableColumn& column) { return asciiLower(column.name) == lower; });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

std::shared_ptr<const TableShape> Catalogue::table(const tsql::TableName& name) {
    if (name.place == tsql::TableName::Place::temp) {
        return std::make_shared<const TableShape>(read(name));
    }
    const std::string key = std::string(tsql::placeName(name.place)) + '.' + asciiLower(name.name);
    if (const auto known = tables_.find(key); known != tables_.end()) {
        return known->second;
    }
    auto shape = std::make_shared<const TableShape>(read(name));
    if (!shape->columns.empty() && tables_.size() < mostTables) {
        tables_.emplace(key, shape);
    }
    return shape;
}

const TableColumn* Catalogue::column(const tsql::ColumnUse& use, std::shared_ptr<const TableShape>& holder) {
    for (const tsql::TableName& name : use.tables) {
        holder = table(name);
        const int position = use.column.empty() ? use.position : holder->find(use.column);
        if (position >= 0 && position < static_cast<int>(holder->columns.size())) {
            return &holder->columns[static_cast<std::size_t>(position)];
        }
    }
    return nullptr;
}

TableShape Catalogue::read(const tsql::TableName& name) const {
    TableShape shape;
    Statement statement(handle_, "SELECT name, type, \"notnull\", dflt_value, pk FROM pragma_table_info(?1, ?2)");
    statement.bindBorrowed(1, name.name);
    statement.bindBorrowed(2, tsql::placeName(name.place));
    std::vector<std::pair<int, std::string>> key;
    while (statement.step()) {
        TableColumn column;
        column.name = textAt(statement, 0);
        column.declaredType = textAt(statement, 1);
        const shared::Column declared = tsql::declaredColumn({}, column.declaredType);
        const int keyPosition = sqlite3_column_int(statement.get(), 4);
        const bool rowNumber = keyPosition > 0 && asciiLower(column.declaredType) == "integer";
        column.type = declared.type;
        column.length = declared.length;
        column.nullable = sqlite3_column_int(statement.get(), 2) == 0 && keyPosition == 0;
        column.hasDefault = sqlite3_column_type(statement.get(), 3) != SQLITE_NULL || rowNumber;
        if (keyPosition > 0) {
            key.emplace_back(keyPosition, column.name);
        }
        shape.columns.push_back(std::move(column));
    }
    std::sort(key.begin(), key.end());
    for (auto& [position, column] : key) {
        shape.key.push_back(std::move(column));
    }
    return shape;
}

} // namespace z7::cashflow::sqlite
