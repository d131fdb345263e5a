#pragma once

#include "host/text/HostText.h"
#include "host/text/codeText.h"
#include "workbench/vouchers/Refusal.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::host {

/// A fatal error to report, with its exit code: a text of the host's catalogue and its arguments. Several faults
/// are reported one per line before that text.
class Failure : public std::runtime_error {
public:
    /// One of several faults: its code for programs, such as "sheet-bad-line", and the line for people, which also
    /// says where it is.
    struct Fault {
        std::string code;
        std::string line;
    };

    Failure(int exitCode, HostText text, std::vector<std::string> arguments = {}, std::vector<Fault> faults = {})
        : std::runtime_error("the command failed"), exitCode_(exitCode), text_(text), arguments_(std::move(arguments)),
          faults_(std::move(faults)) {}

    /// The same failure with what caused it; its text already contains the reason.
    [[nodiscard]] Failure because(workbench::Refusal cause) && {
        cause_ = std::move(cause);
        return std::move(*this);
    }

    /// The same failure under the code of the one fault that it reports.
    [[nodiscard]] Failure coded(std::string code) && {
        code_ = std::move(code);
        return std::move(*this);
    }

    [[nodiscard]] int exitCode() const noexcept { return exitCode_; }
    [[nodiscard]] HostText text() const noexcept { return text_; }
    /// What went wrong as a word for programs, the same in every language: "file-missing".
    [[nodiscard]] std::string code() const { return code_.empty() ? codeText(text_) : code_; }
    [[nodiscard]] const std::vector<std::string>& arguments() const noexcept { return arguments_; }
    [[nodiscard]] std::string message(Language language) const { return hostText(language, text_, arguments_); }
    /// Faults to report before the message; usually empty.
    [[nodiscard]] const std::vector<Fault>& faults() const noexcept { return faults_; }
    /// The error, with what was found out about it, that ended the command; empty if the program itself decided so.
    [[nodiscard]] const std::optional<workbench::Refusal>& cause() const noexcept { return cause_; }

private:
    int exitCode_;
    HostText text_;
    std::vector<std::string> arguments_;
    std::vector<Fault> faults_;
    std::string code_; ///< empty for that of the text
    std::optional<workbench::Refusal> cause_;
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
