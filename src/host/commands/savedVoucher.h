#pragma once

#include "host/cli/Output.h"
#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/OutsideAllotment.h"
#include "workbench/vouchers/VoucherResult.h"

namespace z7::cashflow::host {

/// What is written of a save that came to an outcome, with places for the voucher and the number of rows.
[[nodiscard]] HostText savedText(workbench::Outcome outcome) noexcept;

/// Ends a command with a refusal's number and reason. Failure (refused).
[[noreturn]] void failAsRefused(Language language, const workbench::Refusal& refusal);

/// Writes what became of one saved voucher and returns the command's exit code. Failure (refused) with the reason if it
/// was refused and people read the output; machines read the reason in the result. A remark names the run in the log.
[[nodiscard]] int tellSaved(Output& output, const workbench::VoucherResult& result, workbench::RunLog& log);

/// Says under which number the log holds a run that changed something, or that the account has no log.
void tellRun(Output& output, workbench::RunLog& log, bool changed);

/// As tellSaved.
[[nodiscard]] int tellSavedOutside(Output& output, const workbench::OutsideResult& result, workbench::RunLog& log);

} // namespace z7::cashflow::host
