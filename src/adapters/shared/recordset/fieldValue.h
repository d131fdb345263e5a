#pragma once

#include "adapters/shared/recordset/Column.h"
#include "z7cashflow/support/Variant.h"

namespace z7::cashflow::shared {

/// A value as a column takes it: converted to its type, money rounded to four decimals. Null stays null.
/// Error 13, which names the column, if the value does not convert, is out of range, or is too long a text.
[[nodiscard]] Variant fieldValue(const Column& column, const Variant& value);

} // namespace z7::cashflow::shared
