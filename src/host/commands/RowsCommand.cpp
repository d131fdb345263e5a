#include "adapters/terminal/printable.h"
#include "host/Command.h"
#include "host/ExitCode.h"
#include "host/Output.h"
#include "host/Verdict.h"
#include "host/commands/arguments.h"
#include "host/jsonText.h"
#include "z7cashflow/support/conversions.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <map>

namespace z7::cashflow::host {

namespace {

/// Names of the accounts of a year. Freshly generated rows do not carry them.
std::map<std::string, std::string> accountNames(Session& session) {
    std::map<std::string, std::string> names;
    const auto accounts =
        session.connection().Execute("select ccode,ccode_name from code where iyear=" + std::to_string(session.year()));
    for (; !accounts->EndOfFile(); accounts->MoveNext()) {
        names.emplace(toTextOrEmpty(accounts->Fields().Item("ccode")),
                      toTextOrEmpty(accounts->Fields().Item("ccode_name")));
    }
    accounts->Close();
    return names;
}

std::string sideText(const Variant& amount) {
    const bool isZero = !amount.isNull() && equalByValue(amount, Variant(0.0));
    return amount.isNull() || isZero ? "" : amountText(toDouble(amount));
}

/// z7cf rows: shows the rows of a voucher.
class RowsCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("rows", hostText(language, HostText::helpRows));
        voucher_.declare(*command, language);
        command->add_flag("--generate", generate_, hostText(language, HostText::helpGenerate));
        command->footer(hostText(language, HostText::examplesRows));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const VoucherKey key = voucher_.key();
        Session session(voucher_.database.file, key.year, options, console);
        const VoucherHead head = voucher_.find(session);
        const auto rows = generate_ ? generatedRows(session, head) : storedRows(session, head);
        if (output.json()) {
            output.line(rows ? jsonText(rowsJson(*rows)) : "[]");
        } else if (rows && rows->Count() > 0) {
            output.table(tableOf(output, session, *rows));
        } else {
            output.line(output.text(HostText::noRows));
        }
        output.flush();
        const std::string verdict = verdictText(options.language, judge(session, head, rows));
        if (output.json()) {
            output.remark(verdict);
        } else {
            output.line(terminal::printable(verdict));
        }
        output.flush();
        return exitCode::done;
    }

private:
    static TextTable tableOf(const Output& output, Session& session, const CashFlowCollection& rows) {
        const auto names = accountNames(session);
        TextTable table({{output.text(HostText::line), TextTable::Align::right},
                         {output.text(HostText::account)},
                         {output.text(HostText::accountName)},
                         {output.text(HostText::debit), TextTable::Align::right},
                         {output.text(HostText::credit), TextTable::Align::right},
                         {output.text(HostText::item)},
                         {output.text(HostText::itemName)}});
        for (const auto& row : rows) {
            const std::string account = toTextOrEmpty(row->Item("ccode"));
            const auto name = names.find(account);
            table.add({toTextOrEmpty(row->Item("inid")), account, name == names.end() ? "" : name->second,
                       sideText(row->Item("md")), sideText(row->Item("mc")), toTextOrEmpty(row->Item("cCashItem")),
                       toTextOrEmpty(row->Item("cCashItemName"))});
        }
        return table;
    }

    VoucherArgument voucher_;
    bool generate_ = false;
};

} // namespace

std::unique_ptr<Command> makeRowsCommand() { return std::make_unique<RowsCommand>(); }

} // namespace z7::cashflow::host
