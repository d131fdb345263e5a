#pragma once

#include "host/cli/Output.h"
#include "host/report/ReportOptions.h"
#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/OutsideAllotment.h"
#include "workbench/vouchers/VoucherKinds.h"
#include "workbench/vouchers/VoucherResult.h"

namespace z7::cashflow::host {

/// The message for the outcome of a save, with places for the voucher and the number of rows.
[[nodiscard]] HostText savedText(workbench::Outcome outcome) noexcept;

/// Throws Failure (refused) with the number and the reason of a refusal.
[[noreturn]] void failAsRefused(Language language, const workbench::Refusal& refusal);

/// Reports the result of one saved voucher and returns the command's exit code. If it was refused: Failure
/// (refused) with the reason, but in JSON the reason is part of the result. A remark gives the number of the run in
/// the log. The report goes where the options say; CSV is left to ChangesOutput.
[[nodiscard]] int reportSaved(Output& output, const workbench::VoucherResult& result,
                              const workbench::VoucherKinds& kinds, workbench::RunLog& log,
                              const ReportOptions& report = {});

/// If rows changed, reports the number of the run in the log, or that the account has no log.
void reportRun(Output& output, workbench::RunLog& log, bool changed);

/// As reportSaved, for an outside voucher.
[[nodiscard]] int reportSavedOutside(Output& output, const workbench::OutsideResult& result, workbench::RunLog& log);

} // namespace z7::cashflow::host
