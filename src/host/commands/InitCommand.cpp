#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/terminal/printable.h"
#include "host/account/accountCheck.h"
#include "host/account/accountMaker.h"
#include "host/account/serverAccountMaker.h"
#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/DatabaseArgument.h"
#include "host/terminal/StopSignals.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

namespace {

/// z7cf init: creates an account's database.
class InitCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("init", hostText(language, HostText::helpInit));
        database_.declare(*command, language);
        CLI::Option* sample = command->add_flag("--sample", sample_, hostText(language, HostText::helpSample));
        command->add_option("--from", folder_, hostText(language, HostText::helpFrom))->excludes(sample);
        command->add_option("--set", settings_, hostText(language, HostText::helpSet))
            ->expected(1)
            ->take_all()
            ->allow_extra_args(false);
        command->footer(hostText(language, HostText::examplesInit));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const AccountPlace place = database_.take(options);
        const auto accountOptions = readAccountOptions(settings_);
        std::vector<TableFile> files;
        if (sample_) {
            files = tableFilesOfSample();
        } else if (!folder_.empty()) {
            files = tableFilesOfFolder(sqlite::pathOf(folder_));
        }
        StopSignals signals;
        Made made;
        try {
            made = make(place, files, accountOptions, options.language, [&signals] { return signals.requested(); });
        } catch (const Interrupted&) {
            output.remark(output.text(HostText::initInterrupted));
            return exit_code::signalBase + signals.received();
        }
        if (output.json()) {
            output.raw(
                jsonLine({{made.kind, made.name}, {"tables", made.loaded.tables}, {"records", made.loaded.records}}));
        } else {
            output.line(
                output.text(HostText::databaseMade, {terminal::printable(made.name), std::to_string(made.loaded.tables),
                                                     std::to_string(made.loaded.records)}));
        }
        output.flush();
        if (!folder_.empty()) {
            remarkFindings(output, place, options);
        }
        return exit_code::done;
    }

private:
    /// Reports inconsistencies of the loaded tables as remarks; the account is created all the same.
    static void remarkFindings(Output& output, const AccountPlace& place, const GlobalOptions& options) {
        const auto findings = checkAccount(place, options).findings;
        for (const AccountFinding& finding : findings) {
            output.remark(output.text(finding.text, finding.arguments));
        }
        if (!findings.empty()) {
            output.remark(output.text(HostText::verifyRemarks, {std::to_string(findings.size())}));
        }
    }

    /// What was created, for the report.
    struct Made {
        const char* kind = "file"; ///< the JSON member that holds its name
        std::string name;
        LoadedTables loaded;
    };

    static Made make(const AccountPlace& place, const std::vector<TableFile>& files,
                     const std::vector<AccountOption>& accountOptions, Language language,
                     const std::function<bool()>& stopRequested) {
        if (const auto file = place.file()) {
            return {"file", sqlite::utf8Of(*file), makeAccount(*file, files, accountOptions, language, stopRequested)};
        }
        ServerAccount account = makeServerAccount(
            place.givenString(), [&place] { return place.makeConnection(); }, files, accountOptions, language,
            stopRequested);
        return {"database", std::move(account.database), account.loaded};
    }

    DatabaseArgument database_;
    bool sample_ = false;
    std::string folder_;
    std::vector<std::string> settings_;
};

} // namespace

std::unique_ptr<Command> makeInitCommand() { return std::make_unique<InitCommand>(); }

} // namespace z7::cashflow::host
