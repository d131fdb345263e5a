#include "host/commands/ChangesOutput.h"

#include "adapters/terminal/printable.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/savedVoucher.h"
#include "host/text/refusalText.h"

#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

using workbench::RowChange;
using workbench::voucherKeyText;
using workbench::VoucherResult;

void addChangesJson(nlohmann::ordered_json& json, const VoucherResult& result, bool details) {
    using Kind = RowChange::Kind;
    for (const auto& [kind, name] : {std::pair{Kind::kept, "kept"}, std::pair{Kind::added, "new"},
                                     std::pair{Kind::changed, "changed"}, std::pair{Kind::removed, "removed"}}) {
        const std::int32_t count = result.count(kind);
        if (count > 0) {
            json[name] = count;
        }
    }
    if (details) {
        json["changes"] = changesJson(result.changes);
    }
}

void ChangesOutput::add(const VoucherResult& result) {
    ++vouchers_;
    changed_ = changed_ || result.changed();
    refused_ = refused_ || result.refusal.has_value();
    if (output_.json()) {
        nlohmann::ordered_json json = resultJson(result, output_.language());
        addChangesJson(json, result, true);
        output_.line(jsonText(json));
        output_.flush();
        return;
    }
    report_.add(result.key, result.changes);
    if (result.refusal) {
        refusals_.push_back(voucherKeyText(result.key) + "  " + std::to_string(result.refusal->error.number()) + "  " +
                            refusalText(output_.language(), *result.refusal));
    }
    if (result.mismatch) {
        refusals_.push_back(
            voucherKeyText(result.key) + "  " +
            output_.text(HostText::verdictUnmatched, {refusalText(output_.language(), *result.mismatch)}));
    }
}

int ChangesOutput::finish(workbench::RunLog& log) {
    if (!output_.json()) {
        if (!report_.table().empty()) {
            output_.table(report_.table().forTerminal());
        }
        for (const std::string& refusal : refusals_) {
            output_.line(terminal::printable(refusal));
        }
        if (vouchers_ == 0) {
            output_.line(output_.text(HostText::nothingToChange));
        } else if (dryRun_) {
            output_.line(output_.text(HostText::dryRun));
        }
    }
    output_.flush();
    tellRun(output_, log, !dryRun_ && changed_);
    return refused_ ? exitCode::refused : exitCode::done;
}

} // namespace z7::cashflow::host
