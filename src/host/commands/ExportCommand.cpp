#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/VoucherArgument.h"
#include "host/commands/savedVoucher.h"
#include "host/work/StableIdentities.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <optional>

namespace z7::cashflow::host {

using workbench::Voucher;

namespace {

/// z7cf export: writes the rows of a voucher as an XML document.
class ExportCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("export", hostText(language, HostText::helpExport));
        voucher_.declare(*command, language);
        command->add_flag("--generate", generate_, hostText(language, HostText::helpGenerate));
        command->add_flag("--identities", identities_, hostText(language, HostText::helpNewIdentities));
        command->footer(hostText(language, HostText::examplesExport));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        OpenVoucher voucher(voucher_, options, console);
        Session& session = voucher.session();
        voucher.requireDated(options.language);
        const Voucher& head = voucher.voucher();
        if (const auto unworkable = generate_ ? session.judge().unworkable(head) : std::nullopt) {
            failAsRefused(options.language, *unworkable);
        }
        std::optional<StableIdentities> stable;
        if (!identities_) {
            stable.emplace(head.key);
        }
        auto rows = generate_ ? session.judge().generatedRows(head) : session.judge().storedRows(head);
        if (!rows) { // write a document without rows that still names its voucher
            rows = session.provider().CreateCashFlowCollection();
            rows->UpdateCol(head.key.period, head.key.kind, head.key.number, head.date);
        }
        const std::string document = rows->Save();
        if (output.json()) {
            nlohmann::ordered_json json = keyJson(head.key, session.kinds());
            json["rows"] = rows->Count();
            json["xml"] = document;
            output.raw(jsonLine(json));
        } else {
            output.raw(document);
        }
        output.flush();
        return exit_code::done;
    }

private:
    VoucherArgument voucher_;
    bool generate_ = false;
    bool identities_ = false;
};

} // namespace

std::unique_ptr<Command> makeExportCommand() { return std::make_unique<ExportCommand>(); }

} // namespace z7::cashflow::host
