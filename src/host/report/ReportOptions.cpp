#include "host/report/ReportOptions.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "host/cli/outputFile.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

void ReportOptions::declare(CLI::App& command, Language language) {
    command.add_flag("--csv", csv_, hostText(language, HostText::helpCsv));
    command.add_option("-o,--output", file_, hostText(language, HostText::helpOutputFile));
}

void ReportOptions::requireNewFile() const {
    if (!file_.empty()) {
        host::requireNewFile(sqlite::pathOf(file_));
    }
}

void ReportOptions::write(Output& output, std::string_view report) const {
    if (file_.empty()) {
        output.raw(report);
        output.flush();
    } else {
        writeNewFile(sqlite::pathOf(file_), report);
    }
}

} // namespace z7::cashflow::host
