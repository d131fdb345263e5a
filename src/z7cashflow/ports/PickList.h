#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// A column of a pick list: its title and its width in twips. Amounts are right-aligned, texts left-aligned.
struct PickColumn {
    std::string caption;     ///< its title
    std::int32_t width = 0;  ///< in twips
    bool alignRight = false; ///< for amounts
};

/// A modal pop-up that lists rows and lets the user choose one: typing filters the list to the rows that contain
/// the text, the arrow keys move, Enter or a double click chooses, Escape cancels.
class PickList {
public:
    virtual ~PickList() = default;
    /// Shows the rows in their order, each with a text for every column, until the user has chosen or
    /// cancelled. Returns the index from 0 of the chosen row, or empty. The first row is current at first.
    /// Lists may have some thousand rows.
    virtual std::optional<std::size_t> pick(const std::string& title, const std::vector<PickColumn>& columns,
                                            const std::vector<std::vector<std::string>>& rows) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
