#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/PeriodArgument.h"
#include "host/report/ReportOptions.h"
#include "host/report/openReport.h"
#include "host/text/refusalText.h"
#include "host/work/RememberedAnswers.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

namespace z7::cashflow::host {

namespace {

using workbench::Amount;
using workbench::OpenLine;
using workbench::OpenLineFinder;
using workbench::OpenSummary;
using workbench::UnsettledVoucher;
using workbench::Verdict;
using workbench::VoucherHead;
using workbench::VoucherKinds;

bool isKnown(const Verdict& verdict) { return verdict.kind != Verdict::Kind::unworkable; }

/// Whether the stored rows match; empty if there are none.
std::optional<bool> matched(const Verdict& verdict) {
    return isKnown(verdict) && verdict.rows > 0 ? std::optional(verdict.kind == Verdict::Kind::matched) : std::nullopt;
}

nlohmann::ordered_json voucherJson(const VoucherHead& voucher, const Verdict& verdict, const VoucherKinds& kinds,
                                   Language language) {
    const auto orNull = [](bool there, const nlohmann::ordered_json& value) {
        return there ? value : nlohmann::ordered_json();
    };
    const bool known = isKnown(verdict);
    const bool summed = known && verdict.cashSum;
    const auto match = matched(verdict);
    nlohmann::ordered_json object = {{"voucher", voucherKeyText(voucher.key)},
                                     {"sign", kinds.sign(voucher.key.kind)},
                                     {"date", orNull(voucher.date != Date::none(), dayText(voucher.date))},
                                     {"summary", voucher.summary},
                                     {"cashSum", orNull(summed, amountJson(verdict.cashSum.value_or(0.0)))},
                                     {"needed", orNull(summed, verdict.cashSum.value_or(0.0) != 0.0)},
                                     {"stored", orNull(known, verdict.rows)},
                                     {"matched", orNull(match.has_value(), match.value_or(false))}};
    if (verdict.refusal && (!known || match)) {
        object["error"] = errorJson(*verdict.refusal, language);
    }
    return object;
}

std::vector<ReportTable::Cell> voucherCells(const Output& output, const VoucherHead& voucher, const Verdict& verdict,
                                            const VoucherKinds& kinds) {
    const auto word = [&output](bool truth) { return output.text(truth ? HostText::yes : HostText::no); };
    std::vector<ReportTable::Cell> cells{kinds.keyText(voucher.key),
                                         voucher.date == Date::none() ? "" : dayText(voucher.date), voucher.summary};
    if (!isKnown(verdict)) {
        cells.insert(cells.end(), 4, "?");
        return cells;
    }
    const auto match = matched(verdict);
    cells.emplace_back(Amount::of(*verdict.cashSum));
    cells.emplace_back(word(*verdict.cashSum != 0.0));
    cells.emplace_back(std::to_string(verdict.rows));
    cells.emplace_back(match ? word(*match) : "-");
    return cells;
}

/// z7cf vouchers: lists vouchers with the state of their rows, or what is open and how to settle it.
class VouchersCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("vouchers", hostText(language, HostText::helpVouchers));
        period_.declare(*command, language);
        command->add_flag("--open", open_, hostText(language, HostText::helpOpen));
        CLI::Option* group = command->add_flag("--group", group_, hostText(language, HostText::helpGroup));
        command->add_flag("--lines", lines_, hostText(language, HostText::helpLines))->excludes(group);
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesVouchers));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const AccountPlace place = period_.database.take(options);
        const std::int16_t year = period_.year();
        static_cast<void>(period_.periods()); // a mistake is reported before anything is opened
        if (!open_ && (group_ || lines_)) {
            throw Failure(exit_code::usage, HostText::optionNeeds, {group_ ? "--group" : "--lines", "--open"});
        }
        report_.requireNewFile();
        Session session(place, year, options, console);
        const RememberedAnswers remembered(session.connection());
        const auto vouchers = period_.list(session);
        return open_ ? listOpen(output, session, vouchers) : listAll(output, session, vouchers);
    }

private:
    int listAll(Output& output, Session& session, const std::vector<VoucherHead>& vouchers) const {
        const VoucherKinds& kinds = session.kinds();
        ReportTable table({{output.text(HostText::voucher)},
                           {output.text(HostText::date)},
                           {output.text(HostText::summary), false, true},
                           {output.text(HostText::cashSum), true},
                           {output.text(HostText::needed)},
                           {output.text(HostText::stored), true},
                           {output.text(HostText::matched)}});
        std::string json;
        std::vector<std::string> remarks;
        for (const VoucherHead& voucher : vouchers) {
            const Verdict verdict = standingOf(session.judge(), voucher.key);
            if (!isKnown(verdict)) {
                remarks.push_back(
                    output.text(HostText::stateUnknown,
                                {kinds.keyText(voucher.key), std::to_string(verdict.refusal->error.number()),
                                 refusalText(output.language(), *verdict.refusal)}));
            }
            if (output.json()) {
                json += jsonLine(voucherJson(voucher, verdict, kinds, output.language()));
            } else {
                table.add(voucherCells(output, voucher, verdict, kinds));
            }
        }
        if (vouchers.empty() && !output.json()) {
            output.remark(output.text(HostText::noVouchers));
        }
        const bool headingsAlone = table.empty() && !report_.csv();
        report_.write(output, output.json() ? json : headingsAlone ? std::string() : report_.text(output, table));
        for (const std::string& remark : remarks) {
            output.remark(remark);
        }
        return remarks.empty() ? exit_code::done : exit_code::refused;
    }

    int listOpen(Output& output, Session& session, const std::vector<VoucherHead>& vouchers) const {
        const auto open =
            findUnsettled(session.connection(), session.judge(), vouchers, period_.year(), period_.periods());
        report_.write(output, lines_   ? linesText(output, session, open)
                              : group_ ? groupText(output, session, open)
                                       : openText(output, session, open));
        return open.empty() ? exit_code::done : exit_code::refused;
    }

    [[nodiscard]] std::string openText(const Output& output, Session& session,
                                       const std::vector<UnsettledVoucher>& open) const {
        std::string text;
        if (output.json()) {
            for (const UnsettledVoucher& voucher : open) {
                text += jsonLine(openJson(voucher, session.kinds(), output.language()));
            }
            return text;
        }
        const ReportTable table = openTable(open, session.kinds(), output.language());
        if (report_.csv()) {
            return table.csv();
        }
        return (open.empty() ? "" : table.text(report_.columns(output)) + "\n") + openTotal(open, output.language()) +
               "\n";
    }

    [[nodiscard]] std::string groupText(const Output& output, Session& session,
                                        const std::vector<UnsettledVoucher>& open) const {
        OpenSummary summary;
        for (const UnsettledVoucher& voucher : open) {
            summary.add(voucher.head.key, voucher.refusal);
        }
        if (!output.json()) {
            return open.empty() && !report_.csv()
                       ? openTotal(open, output.language()) + "\n"
                       : report_.text(output, groupTable(summary, session.kinds(), output.language()));
        }
        std::string text;
        for (const workbench::OpenGroup& group : summary.groups()) {
            text += jsonLine(groupJson(group, session.kinds()));
        }
        return text;
    }

    [[nodiscard]] std::string linesText(const Output& output, Session& session,
                                        const std::vector<UnsettledVoucher>& open) const {
        OpenLineFinder finder(session.connection(), session.judge(), period_.year());
        std::vector<OpenLine> lines;
        for (const UnsettledVoucher& voucher : open) {
            auto ofVoucher = finder.linesOf(voucher);
            std::move(ofVoucher.begin(), ofVoucher.end(), std::back_inserter(lines));
        }
        if (!output.json()) {
            return report_.csv()   ? lineList(lines, session.kinds()).csv()
                   : lines.empty() ? openTotal(open, output.language()) + "\n"
                                   : lineTable(lines, session.kinds(), output.language()).text(report_.columns(output));
        }
        std::string text;
        for (const OpenLine& line : lines) {
            text += jsonLine(lineJson(line, session.kinds()));
        }
        return text;
    }

    PeriodArgument period_;
    bool open_ = false;
    bool group_ = false;
    bool lines_ = false;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeVouchersCommand() { return std::make_unique<VouchersCommand>(); }

} // namespace z7::cashflow::host
