#pragma once

#include "z7cashflow/ports/Connection.h"

#include <map>
#include <string>

namespace z7::cashflow::host {

/// The cash-flow items of an account, found by what a person has written.
class ItemLookup {
public:
    /// Reads the items. Errors of the database pass through.
    explicit ItemLookup(Connection& connection);

    /// The code of the item that a text names by its code or its full name. Empty if there is none, or if
    /// several items have that name.
    [[nodiscard]] std::string codeOf(const std::string& text) const;
    /// The name of an item; empty if the code is unknown.
    [[nodiscard]] std::string nameOf(const std::string& code) const;
    /// Items that an unknown text probably means, such as "0101 Sales, 0102 Services": those whose code differs
    /// by a typing error or begins with the text, or whose name contains it; at most five. Empty if there are
    /// none.
    [[nodiscard]] std::string nearTo(const std::string& text) const;
    /// The code of the item that a text names. Failure (usage) with similar items if it names none.
    [[nodiscard]] std::string required(const std::string& text) const;

private:
    std::map<std::string, std::string> items_; ///< by code
};

} // namespace z7::cashflow::host
