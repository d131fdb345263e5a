#include "host/Allotment.h"
#include "host/Command.h"
#include "host/ExitCode.h"
#include "host/Failure.h"
#include "host/Output.h"
#include "host/Verdict.h"
#include "host/commands/arguments.h"
#include "host/jsonText.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

namespace {

/// z7cf save: finds or generates the rows of a voucher and saves them.
class SaveCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("save", hostText(language, HostText::helpSave));
        voucher_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesSave));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const AccountPlace place = voucher_.take(options);
        const VoucherKey key = voucher_.key();
        Session session(place, key.year, options, console);
        const VoucherHead head = voucher_.find(session);
        session.requireInYear(head.date);
        Allotment allotment(session.guarded(), session.provider().Gl(), true);
        const VoucherResult result = allotment.allot(head);
        if (output.json()) {
            output.line(jsonText(resultJson(result)));
        } else if (result.refusal) {
            throw Failure(
                exitCode::refused, HostText::voucherFailed,
                {std::to_string(result.refusal->number), reasonText(options.language, result.refusal->description)});
        } else {
            output.line(output.text(savedText(result.outcome), {voucherKeyText(key), std::to_string(result.rows)}));
        }
        output.flush();
        return result.refusal ? exitCode::refused : exitCode::done;
    }

private:
    VoucherArgument voucher_;
};

} // namespace

std::unique_ptr<Command> makeSaveCommand() { return std::make_unique<SaveCommand>(); }

} // namespace z7::cashflow::host
