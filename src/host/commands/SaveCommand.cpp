#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/commands/ChangesOutput.h"
#include "host/commands/GenerationOptions.h"
#include "host/commands/VoucherArgument.h"
#include "host/commands/savedVoucher.h"
#include "host/work/RememberedAnswers.h"
#include "host/work/runNote.h"
#include "workbench/vouchers/Allotment.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

using workbench::Allotment;
using workbench::Assignment;
using workbench::RunLog;

namespace {

/// z7cf save: finds or generates the rows of a voucher and saves them.
class SaveCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("save", hostText(language, HostText::helpSave));
        voucher_.declare(*command, language);
        generation_.declare(*command, language);
        command->add_flag("--dry-run", dryRun_, hostText(language, HostText::helpShowChanges));
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesSave));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        report_.requireNewFile();
        OpenVoucher voucher(voucher_, options, console);
        Session& session = voucher.session();
        const RememberedAnswers remembered(session.connection());
        RunLog log(session.connection(), runNote(options, "save " + voucher_.text + generation_.words()));
        Allotment allotment(session.connection(), session.data(), session.provider().gl(), !dryRun_, &log);
        Assignment assignment(session.connection(), session.data(), session.provider().gl(), allotment);
        const auto result = generation_.save(allotment, assignment, voucher.voucher().key);
        if (dryRun_ || report_.csv()) {
            ChangesOutput shown(output, session.kinds(), dryRun_, report_);
            shown.add(result);
            return shown.finish(log);
        }
        return reportSaved(output, result, session.kinds(), log, report_);
    }

private:
    VoucherArgument voucher_;
    GenerationOptions generation_;
    bool dryRun_ = false;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeSaveCommand() { return std::make_unique<SaveCommand>(); }

} // namespace z7::cashflow::host
