#include "host/Command.h"

namespace z7::cashflow::host {

std::vector<std::unique_ptr<Command>> allCommands() {
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(makeInitCommand());
    commands.push_back(makeVouchersCommand());
    commands.push_back(makeRowsCommand());
    commands.push_back(makeCheckCommand());
    commands.push_back(makeSaveCommand());
    commands.push_back(makeAllotCommand());
    return commands;
}

} // namespace z7::cashflow::host
