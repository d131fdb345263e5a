#include "host/cli/Command.h"
#include "host/cli/ExitCode.h"
#include "host/cli/Output.h"
#include "host/cli/jsonText.h"
#include "host/commands/arguments.h"
#include "host/work/Verdict.h"
#include "host/work/databaseFailure.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <optional>

namespace z7::cashflow::host {

namespace {

/// How the rows of one voucher stand.
struct VoucherState {
    double cashSum = 0.0;
    bool needed = false;          ///< the voucher moves cash, so that it must have rows
    std::int32_t stored = 0;      ///< the rows that are stored
    std::optional<bool> meets;    ///< whether the stored rows meet the voucher; nothing without stored rows
    std::optional<Error> refusal; ///< why it could not be found out; what was found before is told
};

void readState(Session& session, const VoucherHead& voucher, VoucherState& state) {
    const VoucherKey& key = voucher.key;
    const auto rows = storedRows(session, voucher);
    state.cashSum =
        session.data().GetCashSumInVoucher(session.guarded(), voucherTable, key.period, key.kind, key.number);
    state.needed = state.cashSum != 0.0;
    if (rows) {
        state.stored = rows->Count();
        state.meets = judge(session, voucher, rows).kind == Verdict::Kind::meets;
    }
}

/// One voucher whose data cannot be worked with does not end the list.
VoucherState stateOf(Session& session, const VoucherHead& voucher) {
    VoucherState state;
    try {
        readState(session, voucher, state);
    } catch (const Error& error) {
        if (isDatabaseFailure(error)) {
            throw;
        }
        state.refusal = error;
    }
    return state;
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
        const auto period = period_.period();
        Session session(place, year, options, console);
        const auto vouchers = listVouchers(session.connection(), year, period);
        TextTable table({{output.text(HostText::voucher)},
                         {output.text(HostText::date)},
                         {output.text(HostText::summary), TextTable::Align::left, true},
                         {output.text(HostText::cashSum), TextTable::Align::right},
                         {output.text(HostText::needed)},
                         {output.text(HostText::stored), TextTable::Align::right},
                         {output.text(HostText::meets)}});
        for (const VoucherHead& voucher : vouchers) {
            const VoucherState state = stateOf(session, voucher);
            if (state.refusal) {
                output.remark(output.text(HostText::stateUnknown,
                                          {voucherKeyText(voucher.key), std::to_string(state.refusal->number()),
                                           reasonText(options.language, *state.refusal)}));
            }
            if (output.json()) {
                output.line(jsonText(json(voucher, state)));
            } else {
                table.add(cells(output, voucher, state));
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
        return exitCode::done;
    }

private:
    static nlohmann::ordered_json json(const VoucherHead& voucher, const VoucherState& state) {
        const auto orNull = [](bool there, const nlohmann::ordered_json& value) {
            return there ? value : nlohmann::ordered_json();
        };
        nlohmann::ordered_json object = {{"voucher", voucherKeyText(voucher.key)},
                                         {"date", orNull(voucher.date != Date::none(), dayText(voucher.date))},
                                         {"summary", voucher.summary},
                                         {"cashSum", state.cashSum},
                                         {"needed", state.needed},
                                         {"stored", state.stored},
                                         {"meets", orNull(state.meets.has_value(), state.meets.value_or(false))}};
        if (state.refusal) {
            object["error"] = errorJson(*state.refusal);
        }
        return object;
    }

    static std::vector<std::string> cells(const Output& output, const VoucherHead& voucher, const VoucherState& state) {
        const auto word = [&output](bool truth) { return output.text(truth ? HostText::yes : HostText::no); };
        return {voucherKeyText(voucher.key),
                voucher.date == Date::none() ? "" : dayText(voucher.date),
                voucher.summary,
                amountText(state.cashSum),
                word(state.needed),
                std::to_string(state.stored),
                state.refusal ? "?"
                : state.meets ? word(*state.meets)
                              : "-"};
    }

    PeriodArgument period_;
};

} // namespace

std::unique_ptr<Command> makeVouchersCommand() { return std::make_unique<VouchersCommand>(); }

} // namespace z7::cashflow::host
