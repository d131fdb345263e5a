#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow {

/// A column of a pick list: its title and its width in twips. Amounts align to the right, texts to the left.
struct PickColumn {
    std::string caption;
    std::int32_t width = 0;
    bool alignRight = false;
};

/// A modal pop-up that lists rows and lets the user pick one: typing narrows the list to the rows that contain what was
/// typed, the arrow keys move, Enter or a double click picks, Escape leaves.
class PickList {
public:
    virtual ~PickList() = default;
    /// Shows the rows, each with a text for every column, in their order, until the user has picked or left. Returns
    /// the position from 0 of the picked row in rows, or nothing. Nothing is picked beforehand but the first row is
    /// current. Some thousand rows are usual.
    virtual std::optional<std::size_t> pick(const std::string& title, const std::vector<PickColumn>& columns,
                                            const std::vector<std::vector<std::string>>& rows) = 0;
};

} // namespace z7::cashflow
