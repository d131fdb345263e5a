#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/DatabaseArgument.h"
#include "host/commands/VoucherArgument.h"
#include "host/commands/runArgument.h"
#include "host/commands/savedVoucher.h"
#include "host/report/ChangesReport.h"
#include "host/text/refusalText.h"
#include "host/work/runNote.h"
#include "workbench/changes/undo.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace z7::cashflow::host {

using workbench::RunLog;
using workbench::VoucherKey;
using workbench::voucherKeyText;
using workbench::VoucherResult;

namespace {

/// z7cf undo: restores the rows that vouchers had before a run.
class UndoCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("undo", hostText(language, HostText::helpUndo));
        database_.declare(*command, language);
        command->add_option("RUN", run_, hostText(language, HostText::helpRun));
        command->add_option("VOUCHER", keys_, hostText(language, HostText::helpUndoKeys));
        command->add_flag("--dry-run", dryRun_, hostText(language, HostText::helpUndoDryRun));
        command->footer(hostText(language, HostText::examplesUndo));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        std::vector<std::string> words = keys_;
        if (!run_.empty()) {
            words.insert(words.begin(), run_);
        }
        const AccountPlace place = database_.takeOpen(options, words, looksLikeRun);
        if (words.empty()) {
            throw Failure(exitCode::usage, HostText::argumentMissing, {"RUN"});
        }
        const std::int32_t number = readRun(words.front());
        words.erase(words.begin());
        for (const std::string& word : words) {
            static_cast<void>(writtenKey(word)); // a mistake is reported before anything is opened
        }
        Session session(place, 1, options, console);
        std::vector<VoucherKey> keys;
        keys.reserve(words.size());
        for (const std::string& word : words) {
            keys.push_back(keyOf(word, session));
        }
        return undo(output, session.connection(), number, std::move(keys), options);
    }

private:
    int undo(Output& output, Connection& connection, std::int32_t number, std::vector<VoucherKey> keys,
             const GlobalOptions& options) const {
        static_cast<void>(requiredRun(connection, number));
        const auto changed = workbench::vouchersOfRun(connection, number);
        for (const VoucherKey& key : keys) {
            if (std::find(changed.begin(), changed.end(), key) == changed.end()) {
                throw Failure(exitCode::refused, HostText::runLacksVoucher,
                              {std::to_string(number), voucherKeyText(key)});
            }
        }
        if (keys.empty()) {
            keys = changed;
        }
        RunLog log(connection, runNote(options, "undo " + std::to_string(number), number));
        std::size_t refused = 0;
        ChangesReport report(output.language());
        for (const VoucherKey& key : keys) {
            const VoucherResult result = workbench::undoVoucher(connection, log, number, key, !dryRun_);
            refused += result.refusal ? 1 : 0;
            report.add(key, result.changes);
            tell(output, result);
        }
        if (!output.json()) {
            if (dryRun_) {
                output.table(report.table().forTerminal());
                output.line(output.text(HostText::dryRun));
            }
            output.line(
                output.text(HostText::undoneVouchers,
                            {std::to_string(number), std::to_string(keys.size() - refused), std::to_string(refused)}));
        }
        output.flush();
        tellRun(output, log, !dryRun_ && refused < keys.size());
        return refused > 0 ? exitCode::refused : exitCode::done;
    }

    static void tell(Output& output, const VoucherResult& result) {
        if (output.json()) {
            nlohmann::ordered_json json = resultJson(result, output.language());
            json["changes"] = changesJson(result.changes);
            output.line(jsonText(json));
        } else if (result.refusal) {
            output.line(voucherKeyText(result.key) + "  " + std::to_string(result.refusal->error.number()) + "  " +
                        refusalText(output.language(), *result.refusal));
        }
    }

    DatabaseArgument database_;
    std::string run_;
    std::vector<std::string> keys_;
    bool dryRun_ = false;
};

} // namespace

std::unique_ptr<Command> makeUndoCommand() { return std::make_unique<UndoCommand>(); }

} // namespace z7::cashflow::host
