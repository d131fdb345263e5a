#include "host/account/accountLog.h"
#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/DatabaseArgument.h"
#include "host/commands/runArgument.h"
#include "host/report/ChangesReport.h"
#include "host/report/ReportOptions.h"
#include "host/work/Session.h"
#include "z7cashflow/support/Date.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <map>

namespace z7::cashflow::host {

using workbench::LoggedRun;
using workbench::LoggedVoucher;

namespace {

using nlohmann::ordered_json;

ordered_json numberOrNull(const std::optional<std::int32_t>& number) {
    return number ? ordered_json(*number) : ordered_json();
}

/// z7cf log: lists the runs that changed rows, or shows the changes of one run.
class LogCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("log", hostText(language, HostText::helpLog));
        database_.declare(*command, language);
        CLI::Option* run = command->add_option("RUN", run_, hostText(language, HostText::helpRun));
        command->add_flag("--start", start_, hostText(language, HostText::helpLogStart))->excludes(run);
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesLog));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        std::vector<std::string> words;
        if (!run_.empty()) {
            words.push_back(run_);
        }
        const AccountPlace place = database_.takeOpen(options, words, looksLikeRun);
        if (words.size() > 1) {
            throw Failure(exit_code::usage, HostText::argumentTooMany, {words.back()});
        }
        const std::optional<std::int32_t> number = words.empty() ? std::nullopt : std::optional(readRun(words.front()));
        report_.requireNewFile();
        Session session(place, 1, options, console);
        Connection& connection = session.connection();
        if (start_) {
            addLog(output, connection);
        } else if (number) {
            showRun(output, session, requiredRun(connection, *number).number);
        } else {
            requireLog(connection);
            showRuns(output, workbench::readRuns(connection));
        }
        return exit_code::done;
    }

private:
    static void addLog(Output& output, Connection& connection) {
        const bool added = startLog(connection);
        if (output.json()) {
            output.raw(jsonLine({{"log", added ? "added" : "present"}}));
        } else {
            output.line(output.text(added ? HostText::logAdded : HostText::logPresent));
        }
        output.flush();
    }

    void showRuns(Output& output, const std::vector<LoggedRun>& runs) const {
        std::map<std::int32_t, std::int32_t> undoneBy;
        for (const LoggedRun& run : runs) {
            if (run.undoes) {
                undoneBy.emplace(*run.undoes, run.number); // the latest undo, since the newest runs come first
            }
        }
        const auto undone = [&undoneBy](const LoggedRun& run) {
            const auto found = undoneBy.find(run.number);
            return found == undoneBy.end() ? std::nullopt : std::optional(found->second);
        };
        if (output.json()) {
            std::string text;
            for (const LoggedRun& run : runs) {
                text += jsonLine({{"run", run.number},
                                  {"time", dateText(run.time)},
                                  {"user", run.user},
                                  {"command", run.command},
                                  {"vouchers", run.vouchers},
                                  {"undoes", numberOrNull(run.undoes)},
                                  {"undoneBy", numberOrNull(undone(run))}});
            }
            report_.write(output, text);
            return;
        }
        const auto cell = [](const std::optional<std::int32_t>& number) {
            return number ? std::to_string(*number) : std::string();
        };
        ReportTable table({{output.text(HostText::run)},
                           {output.text(HostText::time)},
                           {output.text(HostText::user)},
                           {output.text(HostText::command), false, true},
                           {output.text(HostText::vouchers)},
                           {output.text(HostText::undoes)},
                           {output.text(HostText::undoneBy)}});
        for (const LoggedRun& run : runs) {
            table.add({std::to_string(run.number), dateText(run.time), run.user, run.command,
                       std::to_string(run.vouchers), cell(run.undoes), cell(undone(run))});
        }
        show(output, table);
    }

    void showRun(Output& output, Session& session, std::int32_t run) const {
        Connection& connection = session.connection();
        const workbench::VoucherKinds& kinds = session.kinds();
        ChangesReport report(kinds, output.language());
        std::string lines;
        for (const auto& key : workbench::vouchersOfRun(connection, run)) {
            const LoggedVoucher logged = workbench::readLogged(connection, run, key);
            const auto changes = workbench::compareRows(logged.before, logged.after);
            if (output.json()) {
                ordered_json json = keyJson(key, kinds);
                json["rows"] = changesJson(changes);
                lines += jsonLine(json);
            } else {
                report.add(key, changes);
            }
        }
        if (output.json()) {
            report_.write(output, lines);
        } else {
            show(output, report.table());
        }
    }

    void show(Output& output, const ReportTable& table) const {
        if (table.empty() && !report_.csv()) {
            output.remark(output.text(HostText::noRuns));
        } else {
            report_.write(output, report_.text(output, table));
        }
    }

    DatabaseArgument database_;
    std::string run_;
    bool start_ = false;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeLogCommand() { return std::make_unique<LogCommand>(); }

} // namespace z7::cashflow::host
