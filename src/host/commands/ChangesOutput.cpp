#include "host/commands/ChangesOutput.h"

#include "adapters/terminal/printable.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/savedVoucher.h"
#include "host/text/refusalText.h"

#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

using workbench::RowChange;
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
    refused_ += result.refusal ? 1 : 0;
    if (output_.json()) {
        nlohmann::ordered_json json = resultJson(result, kinds_, output_.language());
        addChangesJson(json, result, true);
        if (options_.toFile()) {
            json_ += jsonLine(json);
        } else {
            output_.raw(jsonLine(json));
            output_.flush();
        }
        return;
    }
    report_.add(result.key, result.changes);
    if (result.refusal) {
        refusals_.push_back(kinds_.keyText(result.key) + "  " + std::to_string(result.refusal->error.number()) + "  " +
                            refusalText(output_.language(), *result.refusal));
    }
    if (result.mismatch) {
        refusals_.push_back(
            kinds_.keyText(result.key) + "  " +
            output_.text(HostText::verdictUnmatched, {refusalText(output_.language(), *result.mismatch)}));
    }
}

std::vector<std::string> ChangesOutput::closing(const std::string& last) const {
    std::vector<std::string> sentences = refusals_;
    if (!last.empty()) {
        sentences.push_back(last);
    }
    if (vouchers_ == 0) {
        sentences.push_back(output_.text(HostText::nothingToChange));
    } else if (dryRun_) {
        sentences.push_back(output_.text(HostText::dryRun));
    }
    return sentences;
}

std::string ChangesOutput::textForPeople(const std::string& last) const {
    std::string text;
    for (const std::string& sentence : sentences_) {
        text += terminal::printable(sentence) + "\n";
    }
    if (everyRow_ && !report_.table().empty()) {
        text += options_.text(output_, report_.table());
    }
    for (const std::string& sentence : closing(last)) {
        text += terminal::printable(sentence) + "\n";
    }
    return text;
}

int ChangesOutput::finish(workbench::RunLog& log, const std::string& last) {
    if (output_.json()) {
        if (options_.toFile()) {
            options_.write(output_, json_);
        }
    } else if (options_.csv()) {
        options_.write(output_, report_.table().csv());
        for (const auto& sentences : {sentences_, closing(last)}) {
            for (const std::string& sentence : sentences) {
                output_.remark(sentence);
            }
        }
    } else {
        options_.write(output_, textForPeople(last));
    }
    output_.flush();
    reportRun(output_, log, !dryRun_ && changed_);
    return refused_ > 0 ? exit_code::refused : exit_code::done;
}

} // namespace z7::cashflow::host
