#pragma once

#include "z7cashflow/support/Date.h"

namespace z7::cashflow::host {

/// The local time of this machine, to the second.
[[nodiscard]] Date localTime();

} // namespace z7::cashflow::host
