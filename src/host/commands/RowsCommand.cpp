#include "adapters/terminal/printable.h"
#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/VoucherArgument.h"
#include "host/commands/savedVoucher.h"
#include "host/text/refusalText.h"
#include "host/work/rowsView.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

using workbench::Judge;
using workbench::RowsOrigin;

namespace {

/// z7cf rows: shows the rows of a voucher.
class RowsCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("rows", hostText(language, HostText::helpRows));
        voucher_.declare(*command, language);
        command->add_flag("--generate", generate_, hostText(language, HostText::helpGenerate));
        command->add_flag("--why", why_, hostText(language, HostText::helpWhy));
        command->add_flag("--identities", identities_, hostText(language, HostText::helpIdentities));
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesRows));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        report_.requireNewFile();
        OpenVoucher voucher(voucher_, options, console);
        voucher.requireDated(options.language);
        Session& session = voucher.session();
        Judge& judge = session.judge();
        const auto unworkable = generate_ ? judge.unworkable(voucher.voucher()) : std::nullopt;
        if (unworkable) {
            failAsRefused(options.language, *unworkable);
        }
        const ItemSourceNotes notes;
        const auto rows = generate_ ? judge.generatedRows(voucher.voucher()) : judge.storedRows(voucher.voucher());
        const ItemSources* const sources = why_ ? &notes.sources() : nullptr;
        const workbench::Verdict verdict = generate_ ? judge.compare(voucher.voucher(), rows, RowsOrigin::generated)
                                                     : judge.standing(voucher.voucher());
        const std::string judged = verdictText(options.language, verdict);
        if (output.json()) {
            nlohmann::ordered_json json = keyJson(voucher.voucher().key, session.kinds());
            json["rows"] = rowsArray(rows.get(), identities_, sources);
            addVerdictJson(json, verdict, options.language);
            report_.write(output, jsonLine(std::move(json)));
        } else {
            const std::string text = rowsText(output, session, rows.get(), report_, sources);
            report_.write(output, report_.csv() ? text : text + terminal::printable(judged) + "\n");
        }
        if (output.json() || report_.csv()) {
            output.remark(judged);
        }
        return exit_code::done;
    }

private:
    VoucherArgument voucher_;
    bool generate_ = false;
    bool why_ = false;
    bool identities_ = false;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeRowsCommand() { return std::make_unique<RowsCommand>(); }

} // namespace z7::cashflow::host
