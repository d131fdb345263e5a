#include "adapters/tsql/declaredType.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>
#include <utility>

namespace z7::cashflow::tsql {
namespace {

using shared::ColumnType;

struct ServerType {
    std::string_view name;
    ColumnType type;
    bool castable = false;
};

constexpr ServerType serverTypes[] = {
    {"bit", ColumnType::boolean, true},
    {"tinyint", ColumnType::byte, true},
    {"smallint", ColumnType::int16, true},
    {"int", ColumnType::int32, true},
    {"integer", ColumnType::int32},
    {"bigint", ColumnType::any, true},
    {"money", ColumnType::money, true},
    {"smallmoney", ColumnType::money},
    {"decimal", ColumnType::real, true},
    {"numeric", ColumnType::real, true},
    {"float", ColumnType::real, true},
    {"real", ColumnType::real, true},
    {"double", ColumnType::real},
    {"date", ColumnType::date, true},
    {"datetime", ColumnType::date, true},
    {"datetime2", ColumnType::date},
    {"smalldatetime", ColumnType::date, true},
    {"char", ColumnType::text},
    {"nchar", ColumnType::text},
    {"varchar", ColumnType::text, true},
    {"nvarchar", ColumnType::text, true},
    {"text", ColumnType::text},
    {"ntext", ColumnType::text},
    {"uniqueidentifier", ColumnType::text},
};

const ServerType* findType(std::string_view name) noexcept {
    const auto* const found = std::find_if(std::begin(serverTypes), std::end(serverTypes),
                                           [name](const ServerType& type) { return type.name == name; });
    return found == std::end(serverTypes) ? nullptr : found;
}

} // namespace

shared::Column declaredColumn(std::string name, std::string_view declaration) {
    const std::size_t end = declaration.find_first_of(" (");
    const ServerType* type = findType(asciiLower(declaration.substr(0, end)));
    shared::Column column{std::move(name), type == nullptr ? ColumnType::any : type->type, 0};
    if (column.type == ColumnType::text && end != std::string_view::npos && declaration[end] == '(') {
        std::from_chars(declaration.data() + end + 1, declaration.data() + declaration.size(), column.length);
    }
    return column;
}

bool isCastType(std::string_view name) noexcept {
    const ServerType* type = findType(name);
    return type != nullptr && type->castable;
}

} // namespace z7::cashflow::tsql
