#include "adapters/terminal/printable.h"
#include "host/cli/Command.h"
#include "host/cli/ExitCode.h"
#include "host/cli/Output.h"
#include "host/cli/jsonText.h"
#include "host/commands/arguments.h"
#include "host/work/Verdict.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

namespace {

const char* verdictWord(Verdict::Kind kind) noexcept {
    switch (kind) {
    case Verdict::Kind::meets:
        return "meets";
    case Verdict::Kind::nothing:
        return "nothing";
    case Verdict::Kind::noCash:
        return "no-cash";
    case Verdict::Kind::refused:
        break;
    }
    return "refused";
}

/// z7cf check: compares the stored rows of a voucher with it.
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
        Session& session = voucher.session();
        const VoucherHead& head = voucher.head();
        const auto rows = storedRows(session, head);
        const std::int32_t count = rows ? rows->Count() : 0;
        const Verdict verdict = judge(session, head, rows);
        if (output.json()) {
            nlohmann::ordered_json json = {
                {"voucher", voucherKeyText(head.key)}, {"verdict", verdictWord(verdict.kind)}, {"rows", count}};
            if (verdict.kind == Verdict::Kind::refused) {
                json["reason"] = verdict.reason;
            }
            output.line(jsonText(json));
        } else {
            output.line(terminal::printable(verdictText(options.language, verdict)));
        }
        output.flush();
        return verdict.kind == Verdict::Kind::refused ? exitCode::refused : exitCode::done;
    }

private:
    VoucherArgument voucher_;
};

} // namespace

std::unique_ptr<Command> makeCheckCommand() { return std::make_unique<CheckCommand>(); }

} // namespace z7::cashflow::host
