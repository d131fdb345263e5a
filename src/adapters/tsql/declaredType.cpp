#include "adapters/tsql/declaredType.h"

#include "z7cashflow/support/conversions.h"

#include <charconv>
#include <string>
#include <utility>

namespace z7::cashflow::tsql {

shared::Column declaredColumn(std::string name, std::string_view declaration) {
    using shared::ColumnType;
    static constexpr std::pair<std::string_view, ColumnType> knownTypes[] = {{"bit", ColumnType::boolean},
                                                                             {"tinyint", ColumnType::byte},
                                                                             {"smallint", ColumnType::int16},
                                                                             {"int", ColumnType::int32},
                                                                             {"integer", ColumnType::int32},
                                                                             {"money", ColumnType::money},
                                                                             {"smallmoney", ColumnType::money},
                                                                             {"decimal", ColumnType::real},
                                                                             {"numeric", ColumnType::real},
                                                                             {"float", ColumnType::real},
                                                                             {"real", ColumnType::real},
                                                                             {"double", ColumnType::real},
                                                                             {"date", ColumnType::date},
                                                                             {"datetime", ColumnType::date},
                                                                             {"datetime2", ColumnType::date},
                                                                             {"smalldatetime", ColumnType::date},
                                                                             {"char", ColumnType::text},
                                                                             {"nchar", ColumnType::text},
                                                                             {"varchar", ColumnType::text},
                                                                             {"nvarchar", ColumnType::text},
                                                                             {"text", ColumnType::text},
                                                                             {"ntext", ColumnType::text},
                                                                             {"uniqueidentifier", ColumnType::text}};
    const std::size_t end = declaration.find_first_of(" (");
    const std::string word = asciiLower(declaration.substr(0, end));
    shared::Column column{std::move(name), ColumnType::any, 0};
    for (const auto& [known, type] : knownTypes) {
        if (known == word) {
            column.type = type;
        }
    }
    if (column.type == ColumnType::text && end != std::string_view::npos && declaration[end] == '(') {
        std::from_chars(declaration.data() + end + 1, declaration.data() + declaration.size(), column.length);
    }
    return column;
}

} // namespace z7::cashflow::tsql
