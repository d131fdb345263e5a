#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/commands/ChangesOutput.h"
#include "host/commands/VoucherArgument.h"
#include "host/work/runNote.h"
#include "workbench/vouchers/Allotment.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

using workbench::Allotment;
using workbench::RunLog;

namespace {

/// z7cf clear: removes the rows of a voucher.
class ClearCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("clear", hostText(language, HostText::helpClear));
        voucher_.declare(*command, language);
        command->add_flag("--dry-run", dryRun_, hostText(language, HostText::helpShowChanges));
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesClear));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        report_.requireNewFile();
        const AccountPlace place = voucher_.take(options);
        Session session(place, voucher_.year(), options, console);
        const workbench::VoucherKey key = voucher_.key(session);
        RunLog log(session.connection(), runNote(options, "clear " + voucher_.text));
        Allotment allotment(session.connection(), session.data(), session.provider().gl(), !dryRun_, &log);
        ChangesOutput shown(output, session.kinds(), dryRun_, report_);
        shown.add(allotment.removeRows(key));
        return shown.finish(log);
    }

private:
    VoucherArgument voucher_;
    bool dryRun_ = false;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeClearCommand() { return std::make_unique<ClearCommand>(); }

} // namespace z7::cashflow::host
