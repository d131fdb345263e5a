#include "adapters/tsql/Rewriting.h"

#include "adapters/tsql/Parser.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace z7::cashflow::tsql {

Rewriting rewrite(std::string_view statement) { return Parser(statement).parse(); }

std::string_view placeName(TableName::Place place) noexcept {
    switch (place) {
    case TableName::Place::system:
        return "zqsystem";
    case TableName::Place::temp:
        return "tempdb";
    case TableName::Place::account:
        break;
    }
    return "main";
}

std::string quotedName(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) {
        quoted += c;
        if (c == '"') {
            quoted += c;
        }
    }
    return quoted + '"';
}

std::string qualifiedName(const TableName& table) {
    return std::string(placeName(table.place)) + '.' + quotedName(table.name);
}

TableName insertionTarget(const TableName& table) {
    if (table.place == TableName::Place::account) {
        const std::string lower = asciiLower(table.name);
        for (const auto& [view, base] : {std::pair<std::string_view, const char*>{"gl_v_cashtable", "gl_cashtable"},
                                         {"gl_v_cashitemdatasource", "GL_CashItemDataSource"}}) {
            if (lower == view) {
                return {table.place, base};
            }
        }
    }
    return table;
}

const ResultItem* itemOf(const std::vector<ResultItem>& items, std::size_t column, std::size_t columns) {
    const auto isStar = [](const ResultItem& item) { return item.star; };
    const auto star = static_cast<std::size_t>(std::find_if(items.begin(), items.end(), isStar) - items.begin());
    if (column < star || star == items.size()) {
        return column < items.size() ? &items[column] : nullptr;
    }
    const std::size_t fromEnd = columns - column;
    if (fromEnd >= items.size() - star) {
        return nullptr;
    }
    const std::size_t item = items.size() - fromEnd;
    const bool starBehind = std::any_of(items.begin() + static_cast<std::ptrdiff_t>(item), items.end(), isStar);
    return starBehind ? nullptr : &items[item];
}

} // namespace z7::cashflow::tsql
