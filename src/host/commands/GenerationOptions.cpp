#include "host/commands/GenerationOptions.h"

#include "host/text/HostText.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

void GenerationOptions::declare(CLI::App& command, Language language) {
    CLI::Option* regenerate =
        command.add_flag("--regenerate", regenerate_, hostText(language, HostText::helpRegenerateRows));
    command.add_flag("--keep-items", keepItems_, hostText(language, HostText::helpKeepItems))->needs(regenerate);
}

} // namespace z7::cashflow::host
