#include "adapters/terminal/printable.h"
#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/VoucherArgument.h"
#include "host/report/ReportOptions.h"
#include "host/text/refusalText.h"
#include "workbench/open/UnsettledVoucher.h"
#include "z7cashflow/support/conversions.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <vector>

namespace z7::cashflow::host {

namespace {

using nlohmann::ordered_json;
using workbench::Amount;
using workbench::StoredRow;
using workbench::Verdict;
using workbench::Voucher;
using workbench::VoucherLine;

ReportTable::Cell amountCell(const std::optional<double>& amount) {
    return amount && *amount != 0.0 ? ReportTable::Cell(Amount::of(*amount)) : ReportTable::Cell("");
}

/// The amount that a row allocates, on the side of its line; on the row's own side if it has no line.
Amount allocatedBy(const StoredRow& row, const VoucherLine* line) {
    const bool debit = line != nullptr ? line->isDebit() : row.debit != 0.0;
    return Amount::of(debit ? row.debit : row.credit);
}

/// The lines of a voucher with their rows beside them, followed by the rows that belong to no line.
ReportTable voucherTable(const Output& output, const Voucher& voucher, const std::vector<StoredRow>& rows) {
    ReportTable table({{output.text(HostText::line), true},
                       {output.text(HostText::account)},
                       {output.text(HostText::accountName), false, true},
                       {output.text(HostText::cash)},
                       {output.text(HostText::debit), true},
                       {output.text(HostText::credit), true},
                       {output.text(HostText::summary), false, true},
                       {output.text(HostText::item)},
                       {output.text(HostText::itemName), false, true},
                       {output.text(HostText::allocatedRows), true}});
    Amount debits;
    Amount credits;
    for (const VoucherLine& line : voucher.lines) {
        debits += Amount::of(line.debit.value_or(0.0));
        credits += Amount::of(line.credit.value_or(0.0));
        std::vector<ReportTable::Cell> cells{std::to_string(line.number),
                                             line.account,
                                             line.accountName,
                                             line.cash ? output.text(HostText::yes) : "",
                                             amountCell(line.debit),
                                             amountCell(line.credit),
                                             line.summary};
        for (const StoredRow& row : rows) {
            if (row.line == line.number) {
                cells.insert(cells.end(), {row.item, row.itemName, allocatedBy(row, &line)});
                table.add(cells);
                cells.assign(7, ""); // the line stands beside its first row
            }
        }
        const bool alone =
            std::none_of(rows.begin(), rows.end(), [&line](const StoredRow& row) { return row.line == line.number; });
        if (alone) {
            cells.insert(cells.end(), 3, "");
            table.add(std::move(cells));
        }
    }
    for (const StoredRow& row : rows) {
        if (voucher.line(row.line) == nullptr) {
            table.add({std::to_string(row.line), row.account, "", "", "", "", "", row.item, row.itemName,
                       allocatedBy(row, nullptr)});
        }
    }
    table.add({"", output.text(HostText::total), "", "", debits, credits, "", "", "", ""});
    return table;
}

ordered_json rowJson(const StoredRow& row) {
    return {{"item", row.item},
            {"name", row.itemName},
            {"debit", amountJson(row.debit)},
            {"credit", amountJson(row.credit)}};
}

ordered_json amountOrNull(const std::optional<double>& amount) { return amount ? amountJson(*amount) : ordered_json(); }

ordered_json voucherJson(Session& session, const Voucher& voucher, const std::vector<StoredRow>& rows,
                         const Verdict& verdict, Language language) {
    ordered_json json = keyJson(voucher.key, session.kinds());
    json["date"] = voucher.date == Date::none() ? ordered_json() : ordered_json(dayText(voucher.date));
    auto& lines = json["lines"] = ordered_json::array();
    for (const VoucherLine& line : voucher.lines) {
        ordered_json ofLine = ordered_json::array();
        for (const StoredRow& row : rows) {
            if (row.line == line.number) {
                ofLine.push_back(rowJson(row));
            }
        }
        lines.push_back({{"line", line.number},
                         {"account", line.account},
                         {"name", line.accountName},
                         {"cash", line.cash},
                         {"debit", amountOrNull(line.debit)},
                         {"credit", amountOrNull(line.credit)},
                         {"summary", line.summary},
                         {"rows", std::move(ofLine)}});
    }
    auto& others = json["otherRows"] = ordered_json::array();
    for (const StoredRow& row : rows) {
        if (voucher.line(row.line) == nullptr) {
            ordered_json other = {{"line", row.line}, {"account", row.account}};
            other.update(rowJson(row));
            others.push_back(std::move(other));
        }
    }
    if (verdict.refusal) {
        json["error"] = errorJson(*verdict.refusal, language);
    }
    return json;
}

/// z7cf voucher: shows the lines of a voucher with the stored rows of each.
class VoucherCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("voucher", hostText(language, HostText::helpVoucher));
        voucher_.declare(*command, language);
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesVoucher));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        report_.requireNewFile();
        OpenVoucher open(voucher_, options, console);
        Session& session = open.session();
        const Voucher& voucher = open.voucher();
        const auto rows = workbench::readStoredRows(session.connection(), voucher.key);
        const Verdict verdict = workbench::standingOf(session.judge(), voucher.key);
        if (output.json()) {
            report_.write(output, jsonLine(voucherJson(session, voucher, rows, verdict, output.language())));
            return exit_code::done;
        }
        const ReportTable table = voucherTable(output, voucher, rows);
        if (report_.csv()) {
            report_.write(output, table.csv());
            return exit_code::done;
        }
        const std::string date = voucher.date == Date::none() ? "-" : dayText(voucher.date);
        report_.write(output, terminal::printable(
                                  output.text(HostText::voucherTitle, {session.kinds().keyText(voucher.key), date})) +
                                  "\n\n" + table.text(report_.columns(output)) + "\n" +
                                  terminal::printable(verdictText(output.language(), verdict)) + "\n");
        return exit_code::done;
    }

private:
    VoucherArgument voucher_;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeVoucherCommand() { return std::make_unique<VoucherCommand>(); }

} // namespace z7::cashflow::host
