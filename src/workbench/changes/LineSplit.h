#pragma once

#include "workbench/Amount.h"

#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::workbench {

/// A part of an entry line's amount on one cash-flow item.
struct ItemPart {
    std::string item; ///< such as "0101"
    Amount amount;    ///< with the sign of the line: negative on a red one
    friend bool operator==(const ItemPart&, const ItemPart&) = default;
};

/// What a person puts on an item; nothing for all that is left of the line.
struct ItemWish {
    std::string item;
    std::optional<Amount> amount;
};

/// How the parts of a line become others.
struct LineSplit {
    enum class Fault {
        none,
        tooMuch,   ///< the wishes exceed the line, one of them is 0, or it has the other sign
        noItemLeft ///< a rest remains, and there is no item to leave it on
    };
    Fault fault = Fault::none;
    std::vector<ItemPart>
        parts;              ///< the wishes first, in their order, then what the rest stays on; together the whole line
    Amount rest;            ///< what the wishes leave over
    std::size_t wished = 0; ///< the number of parts that were wished
};

/// Splits a line of a total amount as wished. What the wishes leave over stays on the other items that the line had,
/// taken away from the first of them on; else it goes to the proposed item. An item that is wished twice gets both
/// amounts. Only the last wish may be without an amount.
[[nodiscard]] LineSplit splitLine(const std::vector<ItemPart>& former, Amount total,
                                  const std::vector<ItemWish>& wishes, const std::string& proposed);

} // namespace z7::cashflow::workbench
