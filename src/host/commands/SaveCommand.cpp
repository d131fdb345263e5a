#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/commands/arguments.h"
#include "host/commands/savedVoucher.h"
#include "host/work/runNote.h"
#include "workbench/vouchers/Allotment.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

using workbench::Allotment;
using workbench::RunLog;

namespace {

/// z7cf save: finds or generates the rows of a voucher and saves them.
class SaveCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("save", hostText(language, HostText::helpSave));
        voucher_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesSave));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        OpenVoucher voucher(voucher_, options, console);
        Session& session = voucher.session();
        RunLog log(session.connection(), runNote(options, "save"));
        Allotment allotment(session.connection(), session.data(), session.provider().Gl(), true, &log);
        return tellSaved(output, allotment.allot(voucher.voucher().key), log);
    }

private:
    VoucherArgument voucher_;
};

} // namespace

std::unique_ptr<Command> makeSaveCommand() { return std::make_unique<SaveCommand>(); }

} // namespace z7::cashflow::host
