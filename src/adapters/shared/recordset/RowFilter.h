#pragma once

#include "adapters/shared/recordset/RowSet.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace z7::cashflow::shared {

/// One condition of a filter: the column's position and the number that it must equal.
struct FilterCondition {
    int column = 0;
    double number = 0.0;
};

/// Parses a filter "column=number and column=number" into conditions sorted by column. Names are case-insensitive,
/// and blanks are allowed around every part. Error 3001 for any other text, 3265 for a column that does not exist.
[[nodiscard]] std::vector<FilterCondition> parseFilter(std::string_view criteria, const ColumnList& columns);

/// Evaluates filters on one row set. An index is built when a set of columns is first used, so that n filters on n
/// rows take n steps in all. Only a few indexes are kept.
class RowFilter {
public:
    /// The rows that satisfy all conditions, in their order. Null satisfies none. Valid until the next call.
    [[nodiscard]] const std::vector<std::uint32_t>& match(const RowSet& rows,
                                                          const std::vector<FilterCondition>& conditions);
    /// Call this when rows are changed or added.
    void forget() noexcept { indexes_.clear(); }

private:
    struct KeyHash {
        std::size_t operator()(const std::vector<double>& key) const noexcept;
    };
    struct Index {
        std::vector<int> columns;
        std::unordered_map<std::vector<double>, std::vector<std::uint32_t>, KeyHash> rows;
    };

    Index& indexOf(const RowSet& rows, const std::vector<int>& columns);

    std::vector<Index> indexes_;
    std::vector<std::uint32_t> nothing_;
};

} // namespace z7::cashflow::shared
