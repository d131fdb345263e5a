#include "host/commands/DatabaseArgument.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "host/cli/Failure.h"
#include "host/cli/connectOption.h"
#include "host/cli/exitCode.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace z7::cashflow::host {

void DatabaseArgument::declare(CLI::App& command, Language language) {
    command.add_option("FILE", file, hostText(language, HostText::helpFile));
}

void DatabaseArgument::requireNoSecret() const {
    // A connection string in place of a file name would appear in the error message.
    if (file.find(';') != std::string::npos && holdsSecret(file)) {
        throw Failure(exit_code::usage, HostText::connectSecret);
    }
}

AccountPlace DatabaseArgument::takeOpen(const GlobalOptions& options, std::vector<std::string>& following,
                                        const std::function<bool(const std::string&)>& comesAfterFile) {
    requireNoSecret();
    const bool connected = !options.connect.empty() && (options.connectGiven || file.empty() || comesAfterFile(file));
    if (!connected) {
        if (file.empty()) {
            throw Failure(exit_code::usage, HostText::argumentMissing, {"FILE"});
        }
        return AccountPlace::ofFile(sqlite::pathOf(file));
    }
    if (!file.empty()) {
        following.insert(following.begin(), std::exchange(file, {}));
    }
    return AccountPlace::ofConnectionString(options.connect, options.serverConnection);
}

AccountPlace DatabaseArgument::take(const GlobalOptions& options, const std::vector<Word>& following) {
    requireNoSecret();
    const bool oneLess = following.empty() ? file.empty() : following.back().text->empty();
    const bool connected = !options.connect.empty() && (options.connectGiven || oneLess);
    if (connected) {
        std::string word = std::move(file);
        file.clear();
        for (const Word& place : following) {
            std::swap(word, *place.text);
        }
        if (!word.empty()) {
            throw Failure(exit_code::usage, HostText::argumentTooMany, {word});
        }
    } else if (file.empty()) {
        throw Failure(exit_code::usage, HostText::argumentMissing, {"FILE"});
    }
    for (const Word& word : following) {
        if (word.text->empty()) {
            throw Failure(exit_code::usage, HostText::argumentMissing, {word.name});
        }
    }
    return connected ? AccountPlace::ofConnectionString(options.connect, options.serverConnection)
                     : AccountPlace::ofFile(sqlite::pathOf(file));
}

} // namespace z7::cashflow::host
