#pragma once

#include "host/text/Language.h"
#include "workbench/vouchers/Refusal.h"
#include "workbench/vouchers/Verdict.h"

#include <string>

namespace z7::cashflow::host {

/// Why a voucher was refused and the remedy, on one line for people. Amounts look as in tables: 8,800.00.
[[nodiscard]] std::string refusalText(Language language, const workbench::Refusal& refusal);

/// A verdict in words.
[[nodiscard]] std::string verdictText(Language language, const workbench::Verdict& verdict);

} // namespace z7::cashflow::host
