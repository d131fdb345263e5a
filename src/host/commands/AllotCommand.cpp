#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/AllotRun.h"
#include "host/commands/ChangesOutput.h"
#include "host/commands/GenerationOptions.h"
#include "host/commands/PeriodArgument.h"
#include "host/commands/RowCounts.h"
#include "host/commands/savedVoucher.h"
#include "host/report/openReport.h"
#include "host/terminal/ProgressBar.h"
#include "host/terminal/StopSignals.h"
#include "host/text/refusalText.h"
#include "host/work/runNote.h"
#include "z7cashflow/support/Error.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <exception>
#include <string>
#include <system_error>

namespace z7::cashflow::host {

using workbench::Outcome;
using workbench::RunLog;
using workbench::VoucherResult;

namespace {

constexpr std::size_t refusalsShown = 20;

constexpr std::array outcomeTexts{HostText::outcomeStored, HostText::outcomeNoCash, HostText::outcomeNothing,
                                  HostText::outcomeRefused}; ///< by Outcome

constexpr std::size_t indexOf(Outcome outcome) { return static_cast<std::size_t>(outcome); }

/// The number of vouchers per outcome, and the refused ones.
struct Totals {
    struct Count {
        std::size_t vouchers = 0;
        std::int64_t rows = 0;
    };
    std::array<Count, outcomeTexts.size()> counts; ///< by Outcome
    std::vector<VoucherResult> refusals;           ///< only those that are shown
    std::size_t refusalsKept = refusalsShown;
    RowCounts kinds;                ///< kept, new, changed and removed rows
    bool changed = false;           ///< the stored rows of a voucher changed
    workbench::OpenSummary lacking; ///< what the refused vouchers lack

    void add(const VoucherResult& result) {
        Count& count = counts.at(indexOf(result.outcome));
        ++count.vouchers;
        count.rows += result.rows;
        changed = changed || result.changed();
        kinds.add(result);
        if (result.refusal) {
            lacking.add(result.key, *result.refusal);
        }
        if (result.refusal && refusals.size() < refusalsKept) {
            refusals.push_back(result);
        }
    }

    [[nodiscard]] std::size_t refused() const { return counts.at(indexOf(Outcome::refused)).vouchers; }
};

/// z7cf allot: allocates every voucher of a year or period.
class AllotCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("allot", hostText(language, HostText::helpAllot));
        period_.declare(*command, language);
        command->add_flag("--dry-run", dryRun_, hostText(language, HostText::helpDryRun));
        generation_.declare(*command, language);
        command->add_flag("--all", all_, hostText(language, HostText::helpAll));
        command->add_option("--jobs", jobsText_, hostText(language, HostText::helpJobs))->type_name("INT");
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesAllot));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const AccountPlace place = period_.database.take(options);
        const std::int16_t year = period_.year();
        static_cast<void>(period_.periods()); // a mistake is reported before anything is opened
        const std::size_t jobs = jobCount(place);
        report_.requireNewFile();
        Session session(place, year, options, console);
        const auto vouchers = period_.list(session);
        const workbench::VoucherKinds& kinds = session.kinds();
        if (vouchers.empty()) {
            output.remark(output.text(HostText::noVouchers));
        }
        RunLog log(session.connection(), runNote(options, commandText()));
        StopSignals signals;
        Progress progress(kinds, output);
        progress.totals.refusalsKept = all_ ? vouchers.size() : refusalsShown;
        const AllotRun::Plan plan{place, options, generation_, !dryRun_};
        AllotRun allot(plan, session, log, signals);
        std::exception_ptr failure;
        try {
            ProgressBar bar(console.err, output.text(HostText::progress), vouchers.size(),
                            console.errorsOnTerminal && !options.quiet && !options.json, console.errorColumns);
            bar.update(0);
            allot.save(vouchers, jobs, [&](const VoucherResult& result) {
                take(result, progress, kinds, output);
                bar.update(++progress.done);
            });
        } catch (const Error&) { // the database failed; vouchers committed so far stay and are reported
            failure = std::current_exception();
        } catch (const Failure&) {
            if (!console.out) {
                throw; // nothing more can be written
            }
            failure = std::current_exception(); // another session cannot be opened
        }
        writeReport(output, progress, kinds);
        if (allot.unconfirmed() > 0) {
            output.remark(output.text(HostText::notOnDisk, {std::to_string(allot.unconfirmed())}));
        } else {
            reportRun(output, log, !dryRun_ && progress.totals.changed);
        }
        if (failure != nullptr) {
            if (allot.unconfirmed() == 0 && allot.stoppedAt() < vouchers.size()) {
                output.remark(
                    output.text(HostText::stopped, {kinds.keyText(vouchers.at(allot.stoppedAt()).key),
                                                    std::to_string(vouchers.size()), std::to_string(progress.done)}));
            }
            std::rethrow_exception(failure);
        }
        if (signals.received() != 0 && progress.done < vouchers.size()) {
            output.remark(
                output.text(HostText::interrupted, {std::to_string(progress.done), std::to_string(vouchers.size())}));
            return exit_code::signalBase + signals.received();
        }
        return progress.totals.refused() > 0 ? exit_code::refused : exit_code::done;
    }

private:
    /// The results so far.
    struct Progress {
        Progress(const workbench::VoucherKinds& kinds, const Output& output)
            : report(kinds, output.language()), outcomes({{output.text(HostText::voucher)},
                                                          {output.text(HostText::outcome)},
                                                          {output.text(HostText::rowsOf), true},
                                                          {output.text(HostText::rowKept), true},
                                                          {output.text(HostText::rowNew), true},
                                                          {output.text(HostText::rowChanged), true},
                                                          {output.text(HostText::rowRemoved), true},
                                                          {output.text(HostText::error), true},
                                                          {output.text(HostText::message)}}) {}

        ChangesReport report; ///< the rows that a dry run would change, for people
        ReportTable outcomes; ///< a record for each voucher, for CSV
        std::string json;     ///< the lines of JSON that are to go to a file
        Totals totals;
        std::size_t done = 0;
    };

    /// How many sessions work side by side. Failure (usage) if the option is not such a number.
    [[nodiscard]] std::size_t jobCount(const AccountPlace& place) const {
        constexpr std::size_t onServer = 4;
        if (jobsText_.empty()) {
            return place.file() ? 1 : onServer;
        }
        std::size_t jobs = 0;
        const char* const textEnd = jobsText_.data() + jobsText_.size();
        const auto [end, failure] = std::from_chars(jobsText_.data(), textEnd, jobs);
        if (failure != std::errc() || end != textEnd || jobs < 1 || jobs > AllotRun::mostJobs) {
            throw Failure(exit_code::usage, HostText::badJobs, {std::to_string(AllotRun::mostJobs), jobsText_});
        }
        return jobs;
    }

    /// Counts a voucher's result; in JSON it is written at once.
    void take(const VoucherResult& result, Progress& progress, const workbench::VoucherKinds& kinds,
              Output& output) const {
        progress.totals.add(result);
        if (dryRun_) {
            progress.report.add(result.key, result.changes);
        }
        if (report_.csv()) {
            progress.outcomes.add(record(result, kinds, output));
        }
        if (output.json()) {
            nlohmann::ordered_json json = resultJson(result, kinds, output.language());
            addChangesJson(json, result, dryRun_);
            if (report_.toFile()) {
                progress.json += jsonLine(json);
            } else {
                output.raw(jsonLine(json));
                output.flush(); // a reader of the stream sees each voucher as soon as the disk has it
            }
        }
    }

    /// A voucher's record in CSV.
    static std::vector<ReportTable::Cell> record(const VoucherResult& result, const workbench::VoucherKinds& kinds,
                                                 const Output& output) {
        using Kind = workbench::RowChange::Kind;
        std::vector<ReportTable::Cell> cells{kinds.keyText(result.key),
                                             output.text(outcomeTexts.at(indexOf(result.outcome))),
                                             std::to_string(result.rows)};
        for (const Kind kind : {Kind::kept, Kind::added, Kind::changed, Kind::removed}) {
            cells.emplace_back(std::to_string(result.count(kind)));
        }
        cells.emplace_back(result.refusal ? std::to_string(result.refusal->error.number()) : std::string());
        cells.emplace_back(result.refusal ? refusalText(output.language(), *result.refusal) : std::string());
        return cells;
    }

    /// The command line for the log.
    [[nodiscard]] std::string commandText() const {
        return "allot --year " + period_.yearArgument.text +
               (period_.periodText.empty() ? "" : " --period " + period_.periodText) + generation_.words();
    }

    void writeReport(Output& output, const Progress& progress, const workbench::VoucherKinds& kinds) const {
        if (output.json()) {
            report_.write(output, progress.json);
        } else if (report_.csv()) {
            report_.write(output, progress.outcomes.csv());
            if (dryRun_) {
                output.remark(output.text(HostText::dryRun));
            }
        } else {
            report_.write(output, textForPeople(output, progress, kinds));
        }
    }

    [[nodiscard]] std::string textForPeople(const Output& output, const Progress& progress,
                                            const workbench::VoucherKinds& kinds) const {
        const Totals& totals = progress.totals;
        std::string text;
        if (!progress.report.table().empty()) {
            text += report_.text(output, progress.report.table()) + "\n";
        }
        if (totals.refused() > 0) {
            text += refusalsText(output, totals, kinds);
        }
        TextTable table({{output.text(HostText::outcome)},
                         {output.text(HostText::vouchers), TextTable::Align::right},
                         {output.text(HostText::rowsOf), TextTable::Align::right}});
        Totals::Count sum;
        for (std::size_t i = 0; i < outcomeTexts.size(); ++i) {
            const Totals::Count& count = totals.counts.at(i);
            table.add({output.text(outcomeTexts.at(i)), std::to_string(count.vouchers), std::to_string(count.rows)});
            sum.vouchers += count.vouchers;
            sum.rows += count.rows;
        }
        table.add({output.text(HostText::total), std::to_string(sum.vouchers), std::to_string(sum.rows)});
        text += tableText(table, output);
        if (const std::string rows = totals.kinds.text(output.language()); !rows.empty()) {
            text += output.text(HostText::rowsOf) + output.text(HostText::colon) + rows + "\n";
        }
        return dryRun_ ? text + output.text(HostText::dryRun) + "\n" : text;
    }

    /// The refused vouchers with their reasons, and what they lack.
    [[nodiscard]] std::string refusalsText(const Output& output, const Totals& totals,
                                           const workbench::VoucherKinds& kinds) const {
        TextTable refusals({{output.text(HostText::voucher)},
                            {output.text(HostText::error), TextTable::Align::right},
                            {output.text(HostText::message)}});
        for (const VoucherResult& result : totals.refusals) {
            refusals.add({kinds.keyText(result.key), std::to_string(result.refusal->error.number()),
                          refusalText(output.language(), *result.refusal)});
        }
        std::string text = output.text(HostText::refusalsFollow) + "\n" + tableText(refusals, output);
        if (totals.refused() > totals.refusals.size()) {
            const std::size_t more = totals.refused() - totals.refusals.size();
            text += output.text(HostText::moreRefusals, {std::to_string(more)}) + "\n";
        }
        return text + "\n" + output.text(HostText::openSummary) + "\n" +
               groupTable(totals.lacking, kinds, output.language()).text(report_.columns(output)) + "\n";
    }

    [[nodiscard]] std::string tableText(const TextTable& table, const Output& output) const {
        std::string text;
        for (const std::string& line : table.lines(report_.columns(output))) {
            text += line + "\n";
        }
        return text;
    }

    PeriodArgument period_;
    GenerationOptions generation_;
    bool dryRun_ = false;
    bool all_ = false;
    std::string jobsText_;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeAllotCommand() { return std::make_unique<AllotCommand>(); }

} // namespace z7::cashflow::host
