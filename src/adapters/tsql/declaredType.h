#pragma once

#include "adapters/shared/recordset/Column.h"

#include <string>
#include <string_view>

namespace z7::cashflow::tsql {

/// The column that a declared type such as "nvarchar(40)" or "money real" gives. A type that is not known, and the
/// empty text, mean "any".
[[nodiscard]] shared::Column declaredColumn(std::string name, std::string_view declaration);

} // namespace z7::cashflow::tsql
