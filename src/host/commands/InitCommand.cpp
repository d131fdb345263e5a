#include "adapters/terminal/printable.h"
#include "host/AccountMaker.h"
#include "host/Command.h"
#include "host/ExitCode.h"
#include "host/Failure.h"
#include "host/Output.h"
#include "host/StopSignals.h"
#include "host/commands/arguments.h"
#include "host/jsonText.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

namespace {

/// z7cf init: makes an account's database.
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
        const auto file = place.file();
        if (!file) {
            throw Failure(exitCode::usage, HostText::connectNoInit);
        }
        const auto accountOptions = readAccountOptions(settings_);
        std::vector<TableFile> files;
        if (sample_) {
            files = tableFilesOfSample();
        } else if (!folder_.empty()) {
            files = tableFilesOfFolder(folder_);
        }
        StopSignals signals;
        LoadedTables loaded;
        try {
            loaded =
                makeAccount(*file, files, accountOptions, options.language, [&signals] { return signals.requested(); });
        } catch (const Interrupted&) {
            output.remark(output.text(HostText::initInterrupted));
            return exitCode::signalBase + signals.received();
        }
        if (output.json()) {
            output.line(jsonText({{"file", file->string()}, {"tables", loaded.tables}, {"records", loaded.records}}));
        } else {
            output.line(
                output.text(HostText::databaseMade, {terminal::printable(file->string()), std::to_string(loaded.tables),
                                                     std::to_string(loaded.records)}));
        }
        output.flush();
        return exitCode::done;
    }

private:
    DatabaseArgument database_;
    bool sample_ = false;
    std::string folder_;
    std::vector<std::string> settings_;
};

} // namespace

std::unique_ptr<Command> makeInitCommand() { return std::make_unique<InitCommand>(); }

} // namespace z7::cashflow::host
