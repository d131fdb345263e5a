#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// The type of a column, and of the values returned for it. Money is a double with four decimals. "any" is an
/// expression without a type of its own, whose values are returned unchanged.
enum class ColumnType { any, boolean, byte, int16, int32, real, money, date, text };

/// A column of a result.
struct Column {
    std::string name;                   ///< as the database spells it; empty for an expression without a name
    ColumnType type = ColumnType::text; ///< of its values
    int length = 0;                     ///< the maximum number of characters of a text; 0 for no limit
};

/// The columns of a result, with case-insensitive lookup by name. Immutable, so that all results of one statement
/// can share it.
class ColumnList {
public:
    /// Takes the columns in the order of the result.
    explicit ColumnList(std::vector<Column> columns);

    /// The number of columns.
    [[nodiscard]] int count() const noexcept { return static_cast<int>(columns_.size()); }
    /// The column at a position from 0, which must exist.
    [[nodiscard]] const Column& operator[](int position) const { return columns_[static_cast<std::size_t>(position)]; }
    /// The position of the first column of that name, or -1 if there is none.
    [[nodiscard]] int find(std::string_view name) const;

private:
    std::vector<Column> columns_;
    std::unordered_map<std::string, int> positions_; ///< of the lower-cased names
};

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
