#include "adapters/terminal/printable.h"
#include "host/account/accountCheck.h"
#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/DatabaseArgument.h"
#include "host/text/codeText.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

namespace {

/// z7cf verify: checks whether an account's files are sound and its tables consistent.
class VerifyCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("verify", hostText(language, HostText::helpVerify));
        database_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesVerify));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const auto [findings, remark] = checkAccount(database_.take(options), options);
        if (output.json()) {
            nlohmann::ordered_json list = nlohmann::ordered_json::array();
            for (const AccountFinding& finding : findings) {
                list.push_back({{"kind", finding.kind},
                                {"code", codeText(finding.text)},
                                {"text", output.text(finding.text, finding.arguments)},
                                {"arguments", finding.arguments}});
            }
            nlohmann::ordered_json json = {{"holds", findings.empty()}, {"findings", list}};
            if (remark) {
                json["remark"] = {{"code", codeText(*remark)}, {"text", output.text(*remark)}};
            }
            output.raw(jsonLine(std::move(json)));
        } else {
            for (const AccountFinding& finding : findings) {
                output.line(terminal::printable(output.text(finding.text, finding.arguments)));
            }
            output.line(findings.empty() ? output.text(HostText::verifyHolds)
                                         : output.text(HostText::verifyFindings, {std::to_string(findings.size())}));
        }
        output.flush();
        if (remark) {
            output.remark(output.text(*remark));
        }
        return findings.empty() ? exit_code::done : exit_code::refused;
    }

private:
    DatabaseArgument database_;
};

} // namespace

std::unique_ptr<Command> makeVerifyCommand() { return std::make_unique<VerifyCommand>(); }

} // namespace z7::cashflow::host
