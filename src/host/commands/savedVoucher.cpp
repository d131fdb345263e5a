#include "host/commands/savedVoucher.h"

#include "adapters/terminal/printable.h"
#include "host/cli/ExitCode.h"
#include "host/cli/Failure.h"
#include "host/cli/jsonText.h"
#include "host/text/reasonText.h"
#include "host/work/Verdict.h"

#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

int tellSaved(Output& output, const VoucherResult& result) {
    if (output.json()) {
        output.line(jsonText(resultJson(result)));
    } else if (result.refusal) {
        throw Failure(exitCode::refused, HostText::voucherFailed,
                      {std::to_string(result.refusal->number()), reasonText(output.language(), *result.refusal)});
    } else {
        output.line(output.text(savedText(result.outcome), {voucherKeyText(result.key), std::to_string(result.rows)}));
    }
    output.flush();
    return result.refusal ? exitCode::refused : exitCode::done;
}

int tellSavedOutside(Output& output, const OutsideResult& result) {
    if (output.json()) {
        nlohmann::ordered_json json = {{"table", result.table},
                                       {"key", result.key},
                                       {"outcome", outcomeWord(result.outcome)},
                                       {"rows", result.rows}};
        if (result.refusal) {
            json["error"] = errorJson(*result.refusal);
        }
        output.line(jsonText(json));
    } else if (result.refusal) {
        throw Failure(exitCode::refused, HostText::voucherFailed,
                      {std::to_string(result.refusal->number()), reasonText(output.language(), *result.refusal)});
    } else {
        output.line(
            terminal::printable(output.text(savedText(result.outcome), {result.key, std::to_string(result.rows)})));
    }
    output.flush();
    return result.refusal ? exitCode::refused : exitCode::done;
}

} // namespace z7::cashflow::host
