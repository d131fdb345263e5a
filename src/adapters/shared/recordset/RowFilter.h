#pragma once

#include "adapters/shared/recordset/RowSet.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace z7::cashflow::shared {

/// One condition of a filter: the column's position and the number that it has to equal.
struct FilterCondition {
    int column = 0;
    double number = 0.0;
};

/// The conditions of a text "column=number and column=number", ordered by column. Names are looked up without regard to
/// letter case, blanks may stand around every part. Error 3001 for any other text, 3265 for a column that is not there.
[[nodiscard]] std::vector<FilterCondition> parseFilter(std::string_view criteria, const ColumnList& columns);

/// Answers filters over one row set. For each set of columns it makes an index at its first use, so that n filters over
/// n rows cost n steps in all. At most a handful of indexes are kept.
class RowFilter {
public:
    /// The rows that meet all conditions, in their order. Null meets none. Valid until the next call.
    [[nodiscard]] const std::vector<std::uint32_t>& match(const RowSet& rows,
                                                          const std::vector<FilterCondition>& conditions);
    /// To be called when rows change or come.
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
