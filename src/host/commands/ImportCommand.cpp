#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/cli/inputText.h"
#include "host/commands/VoucherArgument.h"
#include "host/commands/savedVoucher.h"
#include "host/work/runNote.h"
#include "workbench/vouchers/Allotment.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

using workbench::Allotment;
using workbench::RunLog;

namespace {

/// z7cf import: replaces the rows of a voucher by those of an XML document.
class ImportCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("import", hostText(language, HostText::helpImport));
        voucher_.declare(*command, language);
        command->add_option("XML", file_, hostText(language, HostText::helpRowsXml));
        command->add_flag("--force", force_, hostText(language, HostText::helpForce));
        command->footer(hostText(language, HostText::examplesImport));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        OpenVoucher voucher(voucher_, options, console, {{"XML", &file_}});
        const std::string document = inputText(file_, console);
        Session& session = voucher.session();
        RunLog log(session.connection(), runNote(options, "import " + voucher_.text));
        Allotment allotment(session.connection(), session.data(), session.provider().gl(), true, &log);
        const workbench::VoucherKinds& kinds = session.kinds();
        return reportSaved(output, allotment.take(voucher.voucher().key, document, force_), kinds, log);
    }

private:
    VoucherArgument voucher_;
    std::string file_;
    bool force_ = false;
};

} // namespace

std::unique_ptr<Command> makeImportCommand() { return std::make_unique<ImportCommand>(); }

} // namespace z7::cashflow::host
