#pragma once

#include "adapters/shared/recordset/Column.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// Converts a value for storing in a column: to the column's type, money rounded to four decimals. Null stays null.
/// Error 13, which names the column, if the value cannot be converted, is out of range, or is a text that is too
/// long.
[[nodiscard]] Variant fieldValue(const Column& column, const Variant& value);

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
