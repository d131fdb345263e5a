#pragma once

#include "host/text/HostText.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::host {

/// A fatal error to report, with its exit code: a text of the host's catalogue and its arguments. Several faults
/// are reported one per line before that text.
class Failure : public std::runtime_error {
public:
    Failure(int exitCode, HostText text, std::vector<std::string> arguments = {}, std::vector<std::string> lines = {})
        : std::runtime_error("the command failed"), exitCode_(exitCode), text_(text), arguments_(std::move(arguments)),
          lines_(std::move(lines)) {}

    [[nodiscard]] int exitCode() const noexcept { return exitCode_; }
    [[nodiscard]] std::string message(Language language) const { return hostText(language, text_, arguments_); }
    /// Lines to report before the message; usually empty.
    [[nodiscard]] const std::vector<std::string>& lines() const noexcept { return lines_; }

private:
    int exitCode_;
    HostText text_;
    std::vector<std::string> arguments_;
    std::vector<std::string> lines_;
};

/// Standard output was closed by its reader, such as "head". The program ends silently.
class ReaderGone : public std::runtime_error {
public:
    ReaderGone() : std::runtime_error("nobody reads the output") {}
};

/// The user stopped the program with a signal, and unfinished work has been rolled back.
class Interrupted : public std::runtime_error {
public:
    Interrupted() : std::runtime_error("interrupted") {}
};

} // namespace z7::cashflow::host
