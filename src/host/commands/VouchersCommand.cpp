#include "host/cli/Command.h"
#include "host/cli/ExitCode.h"
#include "host/cli/Output.h"
#include "host/cli/jsonText.h"
#include "host/commands/arguments.h"
#include "host/text/amountText.h"
#include "host/text/refusalText.h"
#include "workbench/vouchers/databaseFailure.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <optional>
#include <vector>

namespace z7::cashflow::host {

using workbench::isDatabaseFailure;
using workbench::Refusal;
using workbench::Verdict;
using workbench::VoucherHead;
using workbench::voucherKeyText;

namespace {

/// How a voucher stands. One whose data cannot be worked with does not end the list.
Verdict standingOf(Session& session, const VoucherHead& voucher) {
    Verdict verdict;
    try {
        verdict = session.judge().standing(session.judge().read(voucher.key));
    } catch (const Error& error) {
        if (isDatabaseFailure(error)) {
            throw;
        }
        verdict.refusal = Refusal{error, {}};
    }
    return verdict;
}

bool isKnown(const Verdict& verdict) { return verdict.kind != Verdict::Kind::unworkable; }

/// Whether the stored rows match; nothing without stored rows.
std::optional<bool> matched(const Verdict& verdict) {
    return isKnown(verdict) && verdict.rows > 0 ? std::optional(verdict.kind == Verdict::Kind::matched) : std::nullopt;
}

/// z7cf vouchers: lists vouchers and how their rows stand.
class VouchersCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("vouchers", hostText(language, HostText::helpVouchers));
        period_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesVouchers));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const AccountPlace place = period_.database.take(options);
        const std::int16_t year = period_.year();
        static_cast<void>(period_.periods()); // a slip is found before anything is opened
        Session session(place, year, options, console);
        const auto vouchers = period_.list(session);
        TextTable table({{output.text(HostText::voucher)},
                         {output.text(HostText::date)},
                         {output.text(HostText::summary), TextTable::Align::left, true},
                         {output.text(HostText::cashSum), TextTable::Align::right},
                         {output.text(HostText::needed)},
                         {output.text(HostText::stored), TextTable::Align::right},
                         {output.text(HostText::matched)}});
        bool allKnown = true;
        for (const VoucherHead& voucher : vouchers) {
            const Verdict verdict = standingOf(session, voucher);
            if (!isKnown(verdict)) {
                allKnown = false;
                output.remark(output.text(HostText::stateUnknown,
                                          {voucherKeyText(voucher.key), std::to_string(verdict.refusal->error.number()),
                                           refusalText(options.language, *verdict.refusal)}));
            }
            if (output.json()) {
                output.line(jsonText(json(voucher, verdict, options.language)));
            } else {
                table.add(cells(output, voucher, verdict));
            }
        }
        if (!output.json()) {
            if (table.empty()) {
                output.remark(output.text(HostText::noVouchers));
            } else {
                output.table(table);
            }
        }
        output.flush();
        return allKnown ? exitCode::done : exitCode::refused;
    }

private:
    static nlohmann::ordered_json json(const VoucherHead& voucher, const Verdict& verdict, Language language) {
        const auto orNull = [](bool there, const nlohmann::ordered_json& value) {
            return there ? value : nlohmann::ordered_json();
        };
        const bool known = isKnown(verdict);
        const bool summed = known && verdict.cashSum;
        const auto match = matched(verdict);
        nlohmann::ordered_json object = {{"voucher", voucherKeyText(voucher.key)},
                                         {"date", orNull(voucher.date != Date::none(), dayText(voucher.date))},
                                         {"summary", voucher.summary},
                                         {"cashSum", orNull(summed, verdict.cashSum.value_or(0.0))},
                                         {"needed", orNull(summed, verdict.cashSum.value_or(0.0) != 0.0)},
                                         {"stored", orNull(known, verdict.rows)},
                                         {"matched", orNull(match.has_value(), match.value_or(false))}};
        if (verdict.refusal && (!known || match)) {
            object["error"] = errorJson(*verdict.refusal, language);
        }
        return object;
    }

    static std::vector<std::string> cells(const Output& output, const VoucherHead& voucher, const Verdict& verdict) {
        const auto word = [&output](bool truth) { return output.text(truth ? HostText::yes : HostText::no); };
        std::vector<std::string> cells{voucherKeyText(voucher.key),
                                       voucher.date == Date::none() ? "" : dayText(voucher.date), voucher.summary};
        if (!isKnown(verdict)) {
            cells.insert(cells.end(), 4, "?");
            return cells;
        }
        const auto match = matched(verdict);
        cells.push_back(amountText(*verdict.cashSum));
        cells.push_back(word(*verdict.cashSum != 0.0));
        cells.push_back(std::to_string(verdict.rows));
        cells.push_back(match ? word(*match) : "-");
        return cells;
    }

    PeriodArgument period_;
};

} // namespace

std::unique_ptr<Command> makeVouchersCommand() { return std::make_unique<VouchersCommand>(); }

} // namespace z7::cashflow::host
