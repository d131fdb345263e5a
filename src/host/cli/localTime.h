#pragma once

#include "z7cashflow/support/Date.h"

namespace z7::cashflow::host {

/// The time of this machine in its time zone, to the second.
[[nodiscard]] Date localTime();

} // namespace z7::cashflow::host
