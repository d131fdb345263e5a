#pragma once

#include "host/cli/Output.h"
#include "host/report/ChangesReport.h"
#include "host/report/ReportOptions.h"
#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/VoucherResult.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::host {

/// Reports what became of several vouchers. In JSON one line for each voucher as it is done; otherwise, at the end,
/// the rows that changed and the refused vouchers with their reasons. CSV holds the rows alone; what else there is to
/// say are remarks then. With -o everything is written to that file at the end.
class ChangesOutput {
public:
    /// The output and the kinds must outlive it. Without everyRow the rows are shown only in CSV.
    ChangesOutput(Output& output, const workbench::VoucherKinds& kinds, bool dryRun, ReportOptions options = {},
                  bool everyRow = true)
        : output_(output), kinds_(kinds), options_(std::move(options)), dryRun_(dryRun), everyRow_(everyRow),
          report_(kinds, output.language()) {}

    void add(const workbench::VoucherResult& result);
    /// Adds a sentence for people, which is shown before the rows.
    void say(std::string sentence) { sentences_.push_back(std::move(sentence)); }
    [[nodiscard]] std::size_t vouchers() const noexcept { return vouchers_; }
    [[nodiscard]] std::size_t refused() const noexcept { return refused_; }
    /// Completes the output, for people with a last sentence unless it is empty, and returns the command's exit code:
    /// refused if any voucher was refused.
    [[nodiscard]] int finish(workbench::RunLog& log, const std::string& last = {});

private:
    [[nodiscard]] std::string textForPeople(const std::string& last) const;
    [[nodiscard]] std::vector<std::string> closing(const std::string& last) const;

    Output& output_;
    const workbench::VoucherKinds& kinds_;
    ReportOptions options_;
    bool dryRun_;
    bool everyRow_;
    ChangesReport report_;
    std::string json_; ///< the lines of JSON that are to go to a file
    std::vector<std::string> sentences_;
    std::vector<std::string> refusals_;
    std::size_t vouchers_ = 0;
    std::size_t refused_ = 0;
    bool changed_ = false;
};

/// Adds the row counts of a voucher to its JSON: "kept", "new", "changed", "removed", each if it is not 0; with
/// details the rows, too.
void addChangesJson(nlohmann::ordered_json& json, const workbench::VoucherResult& result, bool details);

} // namespace z7::cashflow::host
