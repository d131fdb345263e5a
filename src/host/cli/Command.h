#pragma once

#include "host/cli/GlobalOptions.h"
#include "host/terminal/Console.h"

#include <memory>

namespace CLI {
class App;
}

namespace z7::cashflow::host {

/// One command of the program.
class Command {
public:
    Command() = default;
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    /// Adds the command with its arguments, help and examples to the program. Parsed values are stored in this
    /// object.
    virtual CLI::App& declare(CLI::App& program, Language language) = 0;
    /// Runs the command with the parsed arguments and returns the exit code. Throws Failure, Interrupted,
    /// ReaderGone or Error.
    [[nodiscard]] virtual int run(const GlobalOptions& options, const Console& console) = 0;
};

[[nodiscard]] std::unique_ptr<Command> makeInitCommand();
[[nodiscard]] std::unique_ptr<Command> makeStatementCommand();
[[nodiscard]] std::unique_ptr<Command> makeVouchersCommand();
[[nodiscard]] std::unique_ptr<Command> makeVoucherCommand();
[[nodiscard]] std::unique_ptr<Command> makeItemsCommand();
[[nodiscard]] std::unique_ptr<Command> makeAccountsCommand();
[[nodiscard]] std::unique_ptr<Command> makeTemplatesCommand();
[[nodiscard]] std::unique_ptr<Command> makeKindsCommand();
[[nodiscard]] std::unique_ptr<Command> makeRowsCommand();
[[nodiscard]] std::unique_ptr<Command> makeCheckCommand();
[[nodiscard]] std::unique_ptr<Command> makeSaveCommand();
[[nodiscard]] std::unique_ptr<Command> makeAllotCommand();
[[nodiscard]] std::unique_ptr<Command> makeAssignCommand();
[[nodiscard]] std::unique_ptr<Command> makeClearCommand();
[[nodiscard]] std::unique_ptr<Command> makeReassignCommand();
[[nodiscard]] std::unique_ptr<Command> makeLogCommand();
[[nodiscard]] std::unique_ptr<Command> makeUndoCommand();
[[nodiscard]] std::unique_ptr<Command> makeVerifyCommand();
[[nodiscard]] std::unique_ptr<Command> makeExportCommand();
[[nodiscard]] std::unique_ptr<Command> makeImportCommand();
[[nodiscard]] std::unique_ptr<Command> makeEditCommand();
[[nodiscard]] std::unique_ptr<Command> makeWidthsCommand();
[[nodiscard]] std::unique_ptr<Command> makeOutsideCommand();
[[nodiscard]] std::unique_ptr<Command> makeVoucherXmlCommand();
[[nodiscard]] std::unique_ptr<Command> makeSampleXmlCommand();

} // namespace z7::cashflow::host
