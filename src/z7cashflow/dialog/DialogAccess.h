#pragma once

#include "z7cashflow/model/CashFlowCollection.h"

namespace z7::cashflow {

/// Write access to a collection's Changed, for the dialog only.
class DialogAccess {
public:
    static void Changed(CashFlowCollection& collection, bool value) noexcept { collection.Changed_ = value; }
};

} // namespace z7::cashflow
