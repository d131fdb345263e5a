#pragma once

#include "z7cashflow/support/Date.h"

#include <optional>
#include <string>

namespace z7::cashflow {

/// Where the making of rows found the cash-flow item of a row.
struct ItemSource {
    enum class Kind {
        record,       ///< the row's own record: it was stored with the item
        draft,        ///< the user's draft
        line,         ///< the entry line, on which it was entered
        auxiliary,    ///< the entry line's auxiliary item, which is of the class of cash-flow items
        itemTemplate, ///< the template of the line's account and side
        none          ///< nowhere: the row has no item
    };
    Kind kind = Kind::none;
    std::string user;    ///< identifier of the user whose draft it is; else empty
    std::string account; ///< account of the template; else empty
    bool debit = false;  ///< side of the template
    /// Day from which the template is meant to hold; nothing if it has none. Finding a template does not look at it.
    std::optional<Date> start;
};

} // namespace z7::cashflow
