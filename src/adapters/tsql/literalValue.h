#pragma once

#include "adapters/shared/recordset/Column.h"
#include "adapters/tsql/Shape.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::tsql {

/// Error 8152 if a text has more characters than its column allows.
void requireLength(std::string_view text, const shared::Column& column);

/// A literal as a value of the column with which it is compared or, if assigned is true, in which it is stored: a
/// text for a date column as a date in any form that begins with the year, a text for a number column as its
/// number, a number for a text column as written. The empty text is 0, or 1900-01-01. Error 241 for a text that is
/// not a date, 8114 for one that is not a number, 8115 for a number out of the column's range, 8152 for a text that
/// is too long for its column.
[[nodiscard]] Variant literalValue(const Literal& literal, bool negative, const shared::Column& column, bool assigned);

} // namespace z7::cashflow::tsql

Z7_PUBLIC_END
