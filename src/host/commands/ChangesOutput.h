#pragma once

#include "host/cli/Output.h"
#include "host/report/ChangesReport.h"
#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/VoucherResult.h"

namespace z7::cashflow::host {

/// Reports what became of several vouchers. In JSON one line for each voucher as it is done; otherwise, at the end,
/// the rows that changed, the refused vouchers with their reasons, and the numbers of rows kept, new, changed and
/// removed.
class ChangesOutput {
public:
    ChangesOutput(Output& output, bool dryRun) : output_(output), dryRun_(dryRun), report_(output.language()) {}

    void add(const workbench::VoucherResult& result);
    /// Completes the output and returns the command's exit code: refused if any voucher was refused.
    [[nodiscard]] int finish(workbench::RunLog& log);

private:
    Output& output_;
    bool dryRun_;
    ChangesReport report_;
    std::vector<std::string> refusals_;
    std::size_t vouchers_ = 0;
    bool changed_ = false;
    bool refused_ = false;
};

/// Adds the row counts of a voucher to its JSON: "kept", "new", "changed", "removed", each if it is not 0; with
/// details the rows, too.
void addChangesJson(nlohmann::ordered_json& json, const workbench::VoucherResult& result, bool details);

} // namespace z7::cashflow::host
