#pragma once

#include "host/cli/Output.h"
#include "host/report/ChangesReport.h"
#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/VoucherResult.h"

namespace z7::cashflow::host {

/// Shows what became of several vouchers: for machines a line for each as it is done, for people at the end the rows
/// that changed, the refused vouchers with their reasons, and how many rows were kept, are new, were changed and
/// removed.
class ChangesOutput {
public:
    ChangesOutput(Output& output, bool dryRun) : output_(output), dryRun_(dryRun), report_(output.language()) {}

    void add(const workbench::VoucherResult& result);
    /// Ends the output and returns the command's exit code: refused if a voucher was.
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

/// The counts of a voucher's rows in JSON: "kept", "new", "changed", "removed", each where it is not 0, and with
/// details the rows.
void addChangesJson(nlohmann::ordered_json& json, const workbench::VoucherResult& result, bool details);

} // namespace z7::cashflow::host
