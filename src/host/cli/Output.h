#pragma once

#include "host/cli/GlobalOptions.h"
#include "host/terminal/Console.h"
#include "host/terminal/TextTable.h"
#include "host/text/HostText.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::host {

/// Standard output of a command, and its remarks on the error stream. A line that cannot be written ends the command:
/// ReaderGone if the reader has closed the pipe, else a Failure that says why.
class Output {
public:
    Output(const Console& console, const GlobalOptions& options) : console_(console), options_(options) {}

    /// Whether the output is for machines.
    [[nodiscard]] bool json() const noexcept { return options_.json; }
    /// Width of the terminal that standard output is; 0 if it is not one.
    [[nodiscard]] std::size_t columns() const noexcept { return console_.columns; }
    [[nodiscard]] Language language() const noexcept { return options_.language; }
    [[nodiscard]] std::string text(HostText text, const std::vector<std::string>& arguments = {}) const {
        return hostText(options_.language, text, arguments);
    }

    /// Writes one line as it is; for texts of the program itself and for JSON, which has no control characters.
    void line(std::string_view text);
    void table(const TextTable& table);
    /// Writes a document as it is, without a line break of its own.
    void raw(std::string_view text);
    /// Hands everything written so far to the reader. A command calls it before it counts its output as done.
    void flush();
    /// Writes a line for people on the error stream, made safe for a terminal, unless they want none.
    void remark(const std::string& text);

private:
    void requireGood();

    const Console& console_;
    const GlobalOptions& options_;
};

} // namespace z7::cashflow::host
