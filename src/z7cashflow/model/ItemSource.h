#pragma once

#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <optional>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Where the cash-flow item of a row was found when the row was created.
struct ItemSource {
    /// The place where it was found, in the order in which places are tried.
    enum class Kind {
        record,       ///< the row's own record: it was stored with the item
        draft,        ///< the user's draft
        line,         ///< the entry line, on which it was entered
        auxiliary,    ///< the entry line's auxiliary item, of the class of cash-flow items
        itemTemplate, ///< the template of the line's account and side
        none          ///< the row has no item
    };
    Kind kind = Kind::none; ///< the place
    std::string user;       ///< identifier of the user who owns the draft; otherwise empty
    std::string account;    ///< account of the template; otherwise empty
    bool debit = false;     ///< side of the template
    /// The day from which the template applies; empty if it has none. It is ignored when a template is looked
    /// up.
    std::optional<Date> start;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
