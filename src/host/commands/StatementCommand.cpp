#include "adapters/sqlite/ConnectionOptions.h"
#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/cli/outputFile.h"
#include "host/commands/DatabaseArgument.h"
#include "host/commands/PeriodArgument.h"
#include "host/report/ReportOptions.h"
#include "host/report/statementPage.h"
#include "host/report/statementReport.h"
#include "z7cashflow/support/Error.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <charconv>
#include <tuple>

namespace z7::cashflow::host {

namespace {

using workbench::Amount;
using workbench::CashFlowStatement;
using workbench::Span;
using workbench::StatementRequest;

/// The periods of "3" or "1-3". Failure (usage) if the text is neither, or if the range is reversed.
std::pair<std::uint8_t, std::uint8_t> readPeriods(const std::string& text) {
    unsigned first = 0;
    unsigned last = 0;
    const char* const end = text.data() + text.size();
    auto read = std::from_chars(text.data(), end, first);
    if (read.ec == std::errc() && read.ptr != end && *read.ptr == '-') {
        read = std::from_chars(read.ptr + 1, end, last);
    } else {
        last = first;
    }
    if (read.ec != std::errc() || read.ptr != end || first > last || last > 255) {
        throw Failure(exit_code::usage, HostText::badPeriods, {text});
    }
    return {static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(last)};
}

/// z7cf statement: the cash-flow statement of a year and its proof against the cash accounts.
class StatementCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("statement", hostText(language, HostText::helpStatement));
        database_.declare(*command, language);
        year_.declare(*command, language);
        command->add_option("--period", periods_, hostText(language, HostText::helpPeriods));
        command->add_option("--by", by_, hostText(language, HostText::helpBy))
            ->check(CLI::IsMember({"month", "quarter", "year"}));
        command->add_flag("--by-currency", byCurrency_, hostText(language, HostText::helpByCurrency));
        command->add_option("--opening", openings_, hostText(language, HostText::helpOpening));
        command->add_option("--html", html_, hostText(language, HostText::helpHtml));
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesStatement));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const AccountPlace place = database_.take(options);
        StatementRequest request = requested(options);
        report_.requireNewFile();
        if (!html_.empty()) {
            requireNewFile(sqlite::pathOf(html_));
        }
        Session session(place, request.year, options, console);
        const CashFlowStatement statement = draw(session, request);
        report_.write(output, text(output, session.kinds(), statement));
        if (!html_.empty()) {
            writeNewFile(sqlite::pathOf(html_), page(session, request, statement, output.language()));
        }
        return statement.proven() ? exit_code::done : exit_code::refused;
    }

private:
    [[nodiscard]] StatementRequest requested(const GlobalOptions& options) const {
        StatementRequest request;
        request.year = year_.year();
        if (!periods_.empty()) {
            std::tie(request.firstPeriod, request.lastPeriod) = readPeriods(periods_);
        }
        request.span = by_ == "month" ? Span::month : by_ == "quarter" ? Span::quarter : Span::year;
        request.byCurrency = byCurrency_;
        request.groups = options.statementGroups;
        for (const std::string& opening : openings_) {
            const std::size_t sign = opening.find('=');
            try {
                if (sign == std::string::npos || sign == 0 ||
                    !request.openings.emplace(opening.substr(0, sign), Amount::read(opening.substr(sign + 1))).second) {
                    throw Failure(exit_code::usage, HostText::badOpening, {opening});
                }
            } catch (const Error&) {
                throw Failure(exit_code::usage, HostText::badOpening, {opening});
            }
        }
        return request;
    }

    static CashFlowStatement draw(Session& session, const StatementRequest& request) {
        const auto unknown = workbench::unknownOpening(session.connection(), request);
        if (!unknown.empty()) {
            throw Failure(exit_code::usage, HostText::openingNotCash, {unknown, std::to_string(request.year)});
        }
        CashFlowStatement statement = workbench::drawUpStatement(session.connection(), request);
        return statement;
    }

    [[nodiscard]] std::string text(const Output& output, const workbench::VoucherKinds& kinds,
                                   const CashFlowStatement& statement) const {
        const Language language = output.language();
        if (output.json()) {
            return jsonLine(statementJson(statement, kinds, language));
        }
        if (report_.csv()) {
            return wholeTable(statement, kinds, language).csv();
        }
        const std::string periods = columnName({statement.firstPeriod, statement.lastPeriod});
        std::string text = output.text(HostText::statementTitle, {std::to_string(statement.year), periods}) + "\n\n";
        const auto add = [&](const ReportTable& table) { text += table.text(report_.columns(output)) + "\n"; };
        add(itemTable(statement, language));
        if (byCurrency_) {
            add(currencyTable(statement, language));
        }
        add(accountTable(statement, language));
        if (!statement.gaps.empty()) {
            add(gapTable(statement, kinds, language));
        }
        return text +
               output.text(statement.proven() ? HostText::statementProven : HostText::statementOpen,
                           {statement.cash.flow.net().text(), statement.total.total.net().text(),
                            statement.difference().text(), std::to_string(statement.gaps.size())}) +
               "\n";
    }

    static std::string page(Session& session, StatementRequest request, const CashFlowStatement& statement,
                            Language language) {
        request.span = Span::month;
        request.byCurrency = false;
        const CashFlowStatement months = workbench::drawUpStatement(session.connection(), request);
        return statementHtml({statement, months, workbench::vouchersOfItems(session.connection(), statement),
                              workbench::vouchersOfAccounts(session.connection(), statement), session.kinds(),
                              language});
    }

    DatabaseArgument database_;
    YearArgument year_;
    std::string periods_;
    std::string by_ = "year";
    bool byCurrency_ = false;
    std::vector<std::string> openings_;
    std::string html_;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeStatementCommand() { return std::make_unique<StatementCommand>(); }

} // namespace z7::cashflow::host
