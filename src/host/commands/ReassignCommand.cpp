#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/commands/ChangesOutput.h"
#include "host/commands/ItemLookup.h"
#include "host/commands/PeriodArgument.h"
#include "host/work/runNote.h"
#include "workbench/changes/Assignment.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

using workbench::Allotment;
using workbench::Assignment;
using workbench::RunLog;

namespace {

/// z7cf reassign: moves the rows of one item to another.
class ReassignCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("reassign", hostText(language, HostText::helpReassign));
        period_.declare(*command, language);
        command->add_option("--from", from_, hostText(language, HostText::helpReassignFrom))->required();
        command->add_option("--to", to_, hostText(language, HostText::helpReassignTo))->required();
        command->add_option("--account", account_, hostText(language, HostText::helpReassignAccount));
        command->add_flag("--dry-run", dryRun_, hostText(language, HostText::helpShowChanges));
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesReassign));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        report_.requireNewFile();
        const AccountPlace place = period_.database.take(options);
        const std::int16_t year = period_.year();
        const auto periods = period_.periods();
        Session session(place, year, options, console);
        Connection& connection = session.connection();
        const ItemLookup items(connection);
        const std::string to = items.required(to_);
        const std::string from = items.required(from_);
        std::string words = "reassign --from " + from + " --to " + to + " --year " + std::to_string(year);
        words += (period_.periodText.empty() ? "" : " --period " + period_.periodText) +
                 (account_.empty() ? "" : " --account " + account_);
        RunLog log(connection, runNote(options, words));
        Allotment allotment(connection, session.data(), session.provider().gl(), !dryRun_, &log);
        Assignment assignment(connection, session.data(), session.provider().gl(), allotment);
        ChangesOutput shown(output, session.kinds(), dryRun_, report_);
        for (const auto& key : workbench::vouchersWithItem(connection, year, periods, from, account_)) {
            shown.add(assignment.reassign(key, from, to, account_));
        }
        return shown.finish(log);
    }

private:
    PeriodArgument period_;
    std::string from_;
    std::string to_;
    std::string account_;
    bool dryRun_ = false;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeReassignCommand() { return std::make_unique<ReassignCommand>(); }

} // namespace z7::cashflow::host
