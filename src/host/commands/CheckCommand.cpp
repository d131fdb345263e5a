#include "adapters/terminal/printable.h"
#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/VoucherArgument.h"
#include "host/text/refusalText.h"
#include "workbench/vouchers/Verdict.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

using workbench::Verdict;

namespace {

/// z7cf check: compares the stored rows of a voucher with the voucher.
class CheckCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("check", hostText(language, HostText::helpCheck));
        voucher_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesCheck));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        OpenVoucher voucher(voucher_, options, console);
        const Verdict verdict = voucher.session().judge().standing(voucher.voucher());
        if (output.json()) {
            nlohmann::ordered_json json = keyJson(voucher.voucher().key, voucher.session().kinds());
            json["rows"] = verdict.rows;
            addVerdictJson(json, verdict, options.language);
            output.raw(jsonLine(json));
        } else {
            output.line(terminal::printable(verdictText(options.language, verdict)));
        }
        output.flush();
        return verdict.isRefused() ? exit_code::refused : exit_code::done;
    }

private:
    VoucherArgument voucher_;
};

} // namespace

std::unique_ptr<Command> makeCheckCommand() { return std::make_unique<CheckCommand>(); }

} // namespace z7::cashflow::host
