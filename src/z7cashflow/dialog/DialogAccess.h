#pragma once

#include "z7cashflow/model/CashFlowCollection.h"

namespace z7::cashflow {

/// The write side of a collection's Changed, which is open to the dialog alone.
class DialogAccess {
public:
    static void Changed(CashFlowCollection& collection, bool value) noexcept { collection.Changed_ = value; }
};

} // namespace z7::cashflow
