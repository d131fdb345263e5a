#include "adapters/sqlite/declaredType.h"

#include "z7cashflow/support/conversions.h"

#include <charconv>
#include <string>
#include <utility>

namespace z7::cashflow::sqlite {

DeclaredType declaredType(std::string_view declaration) {
    using cursor::ColumnType;
    static constexpr std::pair<std::string_view, ColumnType> known[] = {{"bit", ColumnType::boolean},
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
    DeclaredType declared;
    for (const auto& [name, type] : known) {
        if (name == word) {
            declared.type = type;
        }
    }
    if (declared.type == ColumnType::text && end != std::string_view::npos && declaration[end] == '(') {
        std::from_chars(declaration.data() + end + 1, declaration.data() + declaration.size(), declared.length);
    }
    return declared;
}

} // namespace z7::cashflow::sqlite
