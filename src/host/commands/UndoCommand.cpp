#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/commands/ChangesOutput.h"
#include "host/commands/DatabaseArgument.h"
#include "host/commands/VoucherArgument.h"
#include "host/commands/runArgument.h"
#include "host/work/runNote.h"
#include "workbench/changes/undo.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace z7::cashflow::host {

using workbench::RunLog;
using workbench::VoucherKey;
using workbench::VoucherKinds;

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
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesUndo));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        report_.requireNewFile();
        std::vector<std::string> words = keys_;
        if (!run_.empty()) {
            words.insert(words.begin(), run_);
        }
        const AccountPlace place = database_.takeOpen(options, words, looksLikeRun);
        if (words.empty()) {
            throw Failure(exit_code::usage, HostText::argumentMissing, {"RUN"});
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
        return undo(output, session, number, std::move(keys), options);
    }

private:
    int undo(Output& output, Session& session, std::int32_t number, std::vector<VoucherKey> keys,
             const GlobalOptions& options) const {
        Connection& connection = session.connection();
        const VoucherKinds& kinds = session.kinds();
        static_cast<void>(requiredRun(connection, number));
        const auto changed = workbench::vouchersOfRun(connection, number);
        for (const VoucherKey& key : keys) {
            if (std::find(changed.begin(), changed.end(), key) == changed.end()) {
                throw Failure(exit_code::refused, HostText::runLacksVoucher,
                              {std::to_string(number), kinds.keyText(key)});
            }
        }
        if (keys.empty()) {
            keys = changed;
        }
        RunLog log(connection, runNote(options, "undo " + std::to_string(number), number));
        ChangesOutput shown(output, kinds, dryRun_, report_, dryRun_);
        for (const VoucherKey& key : keys) {
            shown.add(workbench::undoVoucher(connection, log, number, key, !dryRun_));
        }
        return shown.finish(log,
                            output.text(HostText::undoneVouchers,
                                        {std::to_string(number), std::to_string(shown.vouchers() - shown.refused()),
                                         std::to_string(shown.refused())}));
    }

    DatabaseArgument database_;
    std::string run_;
    std::vector<std::string> keys_;
    bool dryRun_ = false;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeUndoCommand() { return std::make_unique<UndoCommand>(); }

} // namespace z7::cashflow::host
