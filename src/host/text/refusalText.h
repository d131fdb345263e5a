#pragma once

#include "host/text/Language.h"
#include "host/work/Refusal.h"
#include "host/work/Verdict.h"

#include <string>

namespace z7::cashflow::host {

/// Why a voucher was refused and what to do about it, on one line for people. Amounts are written as in tables: 8,800.00.
[[nodiscard]] std::string refusalText(Language language, const Refusal& refusal);

/// A verdict in words.
[[nodiscard]] std::string verdictText(Language language, const Verdict& verdict);

} // namespace z7::cashflow::host
