#include "host/commands/savedVoucher.h"

#include "adapters/terminal/printable.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/ChangesOutput.h"
#include "host/commands/RowCounts.h"
#include "host/text/refusalText.h"

#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

using workbench::Outcome;
using workbench::OutsideResult;
using workbench::Refusal;
using workbench::VoucherResult;

HostText savedText(Outcome outcome) noexcept {
    return outcome == Outcome::stored   ? HostText::savedRows
           : outcome == Outcome::noCash ? HostText::savedNoCash
                                        : HostText::savedNothing;
}

void failAsRefused(Language language, const Refusal& refusal) {
    throw Failure(exit_code::refused, HostText::voucherFailed,
                  {std::to_string(refusal.error.number()), refusalText(language, refusal)})
        .because(refusal);
}

int reportSaved(Output& output, const VoucherResult& result, const workbench::VoucherKinds& kinds,
                workbench::RunLog& log, const ReportOptions& report) {
    const std::string key = kinds.keyText(result.key);
    std::string text;
    if (output.json()) {
        nlohmann::ordered_json json = resultJson(result, kinds, output.language());
        addChangesJson(json, result, false);
        text = jsonLine(json);
    } else if (result.refusal) {
        failAsRefused(output.language(), *result.refusal);
    } else if (result.outcome == Outcome::nothing && result.removed > 0) {
        text = output.text(HostText::savedRemoved, {key, std::to_string(result.removed)}) + "\n";
    } else {
        text = output.text(savedText(result.outcome), {key, std::to_string(result.rows)}) + "\n";
        RowCounts counts;
        counts.add(result);
        if (!result.changes.empty()) {
            text += counts.text(output.language()) + "\n";
        }
    }
    if (result.mismatch && !output.json()) {
        text += terminal::printable(
                    output.text(HostText::verdictUnmatched, {refusalText(output.language(), *result.mismatch)})) +
                "\n";
    }
    report.write(output, text);
    reportRun(output, log, result.changed());
    return result.refusal ? exit_code::refused : exit_code::done;
}

void reportRun(Output& output, workbench::RunLog& log, bool changed) {
    if (const auto number = log.number()) {
        output.remark(output.text(HostText::runNumber, {std::to_string(*number)}));
    } else if (changed && !log.available()) {
        output.remark(output.text(HostText::noLogNoted));
    }
}

int reportSavedOutside(Output& output, const OutsideResult& result, workbench::RunLog& log) {
    if (output.json()) {
        nlohmann::ordered_json json = {{"table", result.table},
                                       {"key", result.key},
                                       {"outcome", outcomeWord(result.outcome)},
                                       {"rows", result.rows}};
        if (result.refusal) {
            json["error"] = errorJson(*result.refusal, output.language());
        }
        output.raw(jsonLine(json));
    } else if (result.refusal) {
        failAsRefused(output.language(), *result.refusal);
    } else {
        output.line(
            terminal::printable(output.text(savedText(result.outcome), {result.key, std::to_string(result.rows)})));
    }
    output.flush();
    reportRun(output, log, result.changed);
    return result.refusal ? exit_code::refused : exit_code::done;
}

} // namespace z7::cashflow::host
