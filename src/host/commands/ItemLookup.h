#pragma once

#include "z7cashflow/ports/Connection.h"

#include <map>
#include <string>

namespace z7::cashflow::host {

/// The cash-flow items of an account, to look up what a person has written.
class ItemLookup {
public:
    /// Reads them. Errors of the database.
    explicit ItemLookup(Connection& connection);

    /// The code of the item that a text names: its code, or its whole name. Empty if there is none, or if several have
    /// that name.
    [[nodiscard]] std::string codeOf(const std::string& text) const;
    /// The name of an item; empty if there is no such code.
    [[nodiscard]] std::string nameOf(const std::string& code) const;
    /// Items that were probably meant by a text that names none, such as "0101 Sales, 0102 Services": those whose code
    /// differs by a slip of the keys, begins with the text, or whose name contains it; at most five. Empty if there are
    /// none.
    [[nodiscard]] std::string nearTo(const std::string& text) const;
    /// The code of the item that a text names. Failure (usage) with the near matches if it names none.
    [[nodiscard]] std::string required(const std::string& text) const;

private:
    std::map<std::string, std::string> items_; ///< names by code
};

} // namespace z7::cashflow::host
