#pragma once

#include "host/cli/Command.h"
#include "host/text/Language.h"

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// The options that every command has, as given on the command line.
struct GivenOptions {
    std::string language;
    std::string settings;
    std::string connect;
    bool quiet = false;
    bool json = false;
};

/// The command line of z7cf with help in one language: the program, its commands and their options. Parsing, help,
/// manual pages and completions all read this one declaration.
class CommandLine {
public:
    explicit CommandLine(Language language);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// The program with its commands as subcommands. Owned by this object.
    [[nodiscard]] CLI::App& program() noexcept { return *program_; }
    [[nodiscard]] const CLI::App& program() const noexcept { return *program_; }
    /// The common options after the program was parsed.
    [[nodiscard]] const GivenOptions& given() const noexcept { return given_; }
    /// The command that was parsed, or a null pointer if the command line named none. Owned by this object.
    [[nodiscard]] Command* parsedCommand() const;

private:
    void addCommonOptions(CLI::App& app, Language language);

    std::unique_ptr<CLI::App> program_;
    GivenOptions given_;
    std::vector<std::unique_ptr<Command>> commands_;
    std::vector<CLI::App*> declared_; ///< the subcommand of each command, in the same order
};

} // namespace z7::cashflow::host
