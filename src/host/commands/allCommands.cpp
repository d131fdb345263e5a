#include "host/commands/allCommands.h"

namespace z7::cashflow::host {

std::vector<std::unique_ptr<Command>> allCommands() {
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(makeInitCommand());
    commands.push_back(makeStatementCommand());
    commands.push_back(makeVouchersCommand());
    commands.push_back(makeVoucherCommand());
    commands.push_back(makeRowsCommand());
    commands.push_back(makeCheckCommand());
    commands.push_back(makeSaveCommand());
    commands.push_back(makeAllotCommand());
    commands.push_back(makeAssignCommand());
    commands.push_back(makeClearCommand());
    commands.push_back(makeReassignCommand());
    commands.push_back(makeLogCommand());
    commands.push_back(makeUndoCommand());
    commands.push_back(makeItemsCommand());
    commands.push_back(makeAccountsCommand());
    commands.push_back(makeTemplatesCommand());
    commands.push_back(makeKindsCommand());
    commands.push_back(makeVerifyCommand());
    commands.push_back(makeExportCommand());
    commands.push_back(makeImportCommand());
    commands.push_back(makeEditCommand());
    commands.push_back(makeWidthsCommand());
    commands.push_back(makeOutsideCommand());
    commands.push_back(makeVoucherXmlCommand());
    commands.push_back(makeSampleXmlCommand());
    return commands;
}

} // namespace z7::cashflow::host
