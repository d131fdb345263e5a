#pragma once

#include <string>

namespace z7::cashflow::host {

/// An amount for people, such as "1,234.50".
[[nodiscard]] std::string amountText(double amount);

} // namespace z7::cashflow::host
