#pragma once

#include "adapters/cursor/Column.h"

#include <string_view>

namespace z7::cashflow::sqlite {

/// What a declared type such as "nvarchar(40)" or "money real" means.
struct DeclaredType {
    cursor::ColumnType type = cursor::ColumnType::any;
    int length = 0; ///< of a text; 0 if there is no bound
};

/// A type that is not known, and the empty text, mean "any".
[[nodiscard]] DeclaredType declaredType(std::string_view declaration);

} // namespace z7::cashflow::sqlite
