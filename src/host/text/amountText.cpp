#include "host/text/amountText.h"

#include "z7cashflow/support/format.h"

namespace z7::cashflow::host {

std::string amountText(double amount) { return format(amount, "##,##0.00"); }

} // namespace z7::cashflow::host
