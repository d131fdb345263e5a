#pragma once

#include "workbench/Amount.h"
#include "z7cashflow/support/visibility.h"

#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The part of an entry line's amount that belongs to one cash-flow item.
struct ItemPart {
    std::string item; ///< such as "0101"
    Amount amount;    ///< with the sign of the line: negative on a red line
    /// Equal if item and amount are equal.
    friend bool operator==(const ItemPart&, const ItemPart&) = default;
};

/// What a person assigns to an item; no amount means the rest of the line.
struct ItemWish {
    std::string item;             ///< code of the cash-flow item
    std::optional<Amount> amount; ///< with the sign of the line; empty: the rest of the line
};

/// The new parts of a line.
struct LineSplit {
    /// Why a line cannot be split as wished.
    enum class Fault {
        none,
        tooMuch,   ///< the wishes exceed the line, or one is 0 or has the opposite sign
        noItemLeft ///< part of the line remains, and no item is known for it
    };
    Fault fault = Fault::none;   ///< if it is not none, there are no parts
    std::vector<ItemPart> parts; ///< the wishes in their order, then the items of the rest; together the whole line
    Amount rest;                 ///< what the wishes leave of the line
    std::size_t wished = 0;      ///< number of parts that were wished for
};

/// Splits a line's total as wished. The rest stays on the other items that the line had, reducing them from the
/// first one on; if there are none, it goes to the proposed item. An item that is wished for twice gets both
/// amounts. Only the last wish may lack an amount.
[[nodiscard]] LineSplit splitLine(const std::vector<ItemPart>& former, Amount total,
                                  const std::vector<ItemWish>& wishes, const std::string& proposed);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
