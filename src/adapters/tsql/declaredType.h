#pragma once

#include "adapters/shared/recordset/Column.h"

#include <string>
#include <string_view>

namespace z7::cashflow::tsql {

/// The column that a declared type such as "nvarchar(40)" or "money real" makes. A type that is not known, and the
/// empty text, mean "any".
[[nodiscard]] shared::Column declaredColumn(std::string name, std::string_view declaration);

/// Whether a cast may lead to the type of this lower-case name. Types that pad a text are not among them.
[[nodiscard]] bool isCastType(std::string_view name) noexcept;

} // namespace z7::cashflow::tsql
