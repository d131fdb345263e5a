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

/// Standard output of a command, and its remarks on standard error. If a line cannot be written, the command ends
/// with ReaderGone (the reader has closed the pipe) or with a Failure that says why.
class Output {
public:
    Output(const Console& console, const GlobalOptions& options) : console_(console), options_(options) {}

    /// Whether the output is JSON.
    [[nodiscard]] bool json() const noexcept { return options_.json; }
    /// Width of the terminal on standard output in columns; 0 if it is not a terminal.
    [[nodiscard]] std::size_t columns() const noexcept { return console_.columns; }
    [[nodiscard]] Language language() const noexcept { return options_.language; }
    [[nodiscard]] std::string text(HostText text, const std::vector<std::string>& arguments = {}) const {
        return hostText(options_.language, text, arguments);
    }

    /// Writes one line unchanged. Use it for the program's own texts and for JSON, which contain no control
    /// characters.
    void line(std::string_view text);
    void table(const TextTable& table);
    /// Writes a document unchanged, without adding a line break.
    void raw(std::string_view text);
    /// Flushes everything written so far. A command calls it before it reports success.
    void flush();
    /// Writes a line for people to standard error, with control characters replaced, unless --quiet was given.
    void remark(const std::string& text);

private:
    void requireGood();

    const Console& console_;
    const GlobalOptions& options_;
};

} // namespace z7::cashflow::host
