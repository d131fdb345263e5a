#pragma once

#include "host/cli/Output.h"
#include "host/work/Allotment.h"

namespace z7::cashflow::host {

/// Tells what became of one saved voucher and gives the command's exit code. Failure (refused) with the reason if it was
/// refused and people read the output; machines read the reason in the result.
[[nodiscard]] int tellSaved(Output& output, const VoucherResult& result);

} // namespace z7::cashflow::host
