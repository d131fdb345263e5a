#pragma once

#include "adapters/shared/recordset/Column.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::tsql {

/// The column for a declared type such as "nvarchar(40)" or "money real". An unknown type, or an empty text, means
/// "any".
[[nodiscard]] shared::Column declaredColumn(std::string name, std::string_view declaration);

/// Whether casts to the type with this lower-case name are supported. Types that pad texts are not.
[[nodiscard]] bool isCastType(std::string_view name) noexcept;

} // namespace z7::cashflow::tsql

Z7_PUBLIC_END
