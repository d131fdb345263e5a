#pragma once

#include "host/account/AccountPlace.h"
#include "host/cli/GlobalOptions.h"
#include "host/text/Language.h"

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace z7::cashflow::host {

// Arguments shared by several commands, with the reading of their values. declare() adds an argument to a command,
// with help in the given language; the parser then writes into the argument, which must not move until it is read.

/// A positional argument, with its name in the help.
struct Word {
    const char* name;
    std::string* text;
};

/// Where the account's database is: the first positional argument of a command, or --connect in its place.
struct DatabaseArgument {
    std::string file;
    /// Adds the argument FILE.
    void declare(CLI::App& command, Language language);
    /// The account's place. With --connect there is no file, so the arguments after it move up by one; they
    /// also do with a connection string of the environment if exactly the last argument is missing. Failure
    /// (usage) if an argument is missing or there is one too many.
    [[nodiscard]] AccountPlace take(const GlobalOptions& options, const std::vector<Word>& following = {});
    /// The same for a command whose arguments after the file are optional and are checked by the command. A
    /// connection string of the environment is used if there is no argument, or if comesAfterFile is true for
    /// the first one.
    [[nodiscard]] AccountPlace takeOpen(const GlobalOptions& options, std::vector<std::string>& following,
                                        const std::function<bool(const std::string&)>& comesAfterFile);

private:
    void requireNoSecret() const;
};

} // namespace z7::cashflow::host
