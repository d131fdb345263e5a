#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/DatabaseArgument.h"
#include "host/work/Session.h"
#include "z7cashflow/support/conversions.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

namespace {

/// z7cf widths: the column widths of the dialog, stored for all users of an account.
class WidthsCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("widths", hostText(language, HostText::helpWidths));
        database_.declare(*command, language);
        command->add_flag("--reset", reset_, hostText(language, HostText::helpReset));
        command->footer(hostText(language, HostText::examplesWidths));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        if (!reset_) {
            throw Failure(exit_code::usage, HostText::argumentMissing, {"--reset"});
        }
        const AccountPlace place = database_.take(options);
        Output output(console, options);
        Session session(place, 1, options, console); // column widths do not depend on the year
        const std::string stored = " from GL_myoutput where cauth=N'frmCashFlow' and csqrmode=10";
        const auto counted = session.connection().Execute("select count(*)" + stored);
        const std::int32_t count = toInt32(counted->Fields().Item(0));
        session.connection().Execute("delete" + stored);
        if (output.json()) {
            output.raw(jsonLine({{"widths", count}}));
        } else {
            output.line(output.text(HostText::widthsForgotten, {std::to_string(count)}));
        }
        output.flush();
        return exit_code::done;
    }

private:
    DatabaseArgument database_;
    bool reset_ = false;
};

} // namespace

std::unique_ptr<Command> makeWidthsCommand() { return std::make_unique<WidthsCommand>(); }

} // namespace z7::cashflow::host
