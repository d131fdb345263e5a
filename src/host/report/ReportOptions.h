#pragma once

#include "host/cli/Output.h"
#include "host/report/ReportTable.h"
#include "host/text/Language.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace z7::cashflow::host {

/// The options --csv and -o FILE of commands that write a report.
class ReportOptions {
public:
    /// Adds the options to a command, with their help in the given language.
    void declare(CLI::App& command, Language language);
    [[nodiscard]] bool csv() const noexcept { return csv_; }
    [[nodiscard]] bool toFile() const noexcept { return !file_.empty(); }
    /// Failure (usage) if the file of -o exists, as nothing is overwritten. Call it before any long work.
    void requireNewFile() const;
    /// Width of the terminal that the report goes to; 0 for a file or a pipe, where nothing is cut.
    [[nodiscard]] std::size_t columns(const Output& output) const { return file_.empty() ? output.columns() : 0; }
    /// A table as CSV or as text, as the options say.
    [[nodiscard]] std::string text(const Output& output, const ReportTable& table) const {
        return csv_ ? table.csv() : table.text(columns(output));
    }
    /// Writes a finished report to the file of -o, or to standard output if there is none. Failure (database)
    /// if it cannot be written; an incomplete file is removed.
    void write(Output& output, std::string_view report) const;

private:
    bool csv_ = false;
    std::string file_;
};

} // namespace z7::cashflow::host
