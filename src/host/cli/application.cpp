#include "host/cli/application.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/terminal/printable.h"
#include "host/cli/CommandLine.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/Settings.h"
#include "host/cli/connectOption.h"
#include "host/cli/environment.h"
#include "host/cli/exitCode.h"
#include "host/cli/failureJson.h"
#include "host/cli/jsonText.h"
#include "host/cli/usageFailure.h"
#include "host/text/reasonText.h"
#include "workbench/vouchers/databaseFailure.h"
#include "z7cashflow/support/Error.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <exception>
#include <new>
#include <optional>
#include <ostream>
#include <sstream>

namespace z7::cashflow::host {

using workbench::isDatabaseFailure;

namespace {

/// Refuses an option with an empty value: most likely a shell variable was empty.
void requireNoEmptyOption(const std::vector<std::string>& arguments) {
    for (const std::string option : {"--connect", "--settings", "--lang", "--from"}) {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            const bool next = arguments[i] == option && i + 1 < arguments.size() && arguments[i + 1].empty();
            if (next || arguments[i] == option + "=") {
                throw Failure(exit_code::usage, HostText::optionEmpty, {option});
            }
        }
    }
}

/// Turns "help" and "help COMMAND" into --help and COMMAND --help.
std::vector<std::string> withHelpAsOption(std::vector<std::string> arguments, const CLI::App& program) {
    std::size_t place = 0;
    while (place < arguments.size() && arguments[place].starts_with('-')) {
        const std::string& option = arguments[place];
        place += option == "--lang" || option == "--connect" || option == "--settings" ? 2 : 1;
    }
    if (place >= arguments.size() || arguments[place] != "help") {
        return arguments;
    }
    arguments.erase(arguments.begin() + static_cast<std::ptrdiff_t>(place));
    if (place < arguments.size() && !arguments[place].starts_with('-')) {
        const std::string& word = arguments[place];
        if (program.get_subcommands([&word](const CLI::App* command) { return command->get_name() == word; }).empty()) {
            throw unknownCommand(program, word);
        }
    }
    arguments.emplace_back("--help");
    return arguments;
}

/// The language for help and for errors on the command line, which are shown before the options are parsed.
Language languageOfArguments(const std::vector<std::string>& arguments) {
    std::optional<Language> language;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--lang" && i + 1 < arguments.size()) {
            language = readLanguage(arguments[i + 1]);
        } else if (arguments[i].starts_with("--lang=")) {
            language = readLanguage(std::string_view(arguments[i]).substr(7));
        }
    }
    return language.value_or(languageOfEnvironment());
}

/// The settings file that was named, or the user's own if it exists.
Settings settingsFor(const GivenOptions& given, Language language) {
    if (!given.settings.empty()) {
        return readSettingsFile(sqlite::pathOf(given.settings), language);
    }
    const auto path = defaultSettingsPath();
    std::error_code ignored;
    return path && std::filesystem::exists(*path, ignored) ? readSettingsFile(*path, language) : Settings{};
}

void say(const Console& console, Language language, const std::string& message) {
    console.err << terminal::printable(hostText(language, HostText::errorLine, {message})) << std::endl;
}

/// Precedence: command line, settings file, environment.
GlobalOptions globalOptions(const GivenOptions& given, Language languageSoFar, const Console& console) {
    GlobalOptions options;
    options.language = languageSoFar;
    options.quiet = given.quiet;
    options.json = given.json;
    if (!given.language.empty() && !readLanguage(given.language)) {
        throw Failure(exit_code::usage, HostText::badLanguage, {given.language});
    }
    const Settings settings = settingsFor(given, languageSoFar);
    if (given.language.empty()) {
        options.language = settings.language.value_or(languageSoFar);
    }
    options.connectGiven = !given.connect.empty();
    const std::string option = options.connectGiven ? given.connect : environmentVariable("Z7CF_CONNECT").value_or("");
    if (!option.empty()) {
        options.connect = connectionStringOf(option, options.connectGiven);
        const std::string file = holdsSecret(options.connect) ? fileOpenToOthers(option) : std::string();
        if (!file.empty() && !options.quiet) {
            say(console, options.language, hostText(options.language, HostText::connectFileOpen, {file}));
        }
    }
    options.account = settings.account.value_or(options.account);
    options.accountGiven = settings.account.has_value();
    options.user = settings.user.value_or(options.user);
    options.operatorName = settings.operatorName.value_or(options.operatorName);
    options.guard = settings.guard.value_or(options.guard);
    options.accountingSystem = settings.accountingSystem.value_or(options.accountingSystem);
    options.statementGroups = settings.statementGroups;
    return options;
}

/// What every kind of exception means as a failure of the command.
Failure failureOf(const std::exception_ptr& exception, Language language) {
    try {
        std::rethrow_exception(exception);
    } catch (const Failure& failure) {
        return failure;
    } catch (const Error& error) {
        const bool database = isDatabaseFailure(error);
        return Failure(database ? exit_code::database : exit_code::refused,
                       database ? HostText::databaseFailed : HostText::voucherFailed,
                       {std::to_string(error.number()), reasonText(language, error)})
            .because({error, {}});
    } catch (const std::bad_alloc&) {
        return Failure(exit_code::database, HostText::outOfMemory);
    } catch (const std::exception& error) {
        return Failure(exit_code::database, HostText::internal, {error.what()});
    }
}

/// Reports a failure on standard error, and with --json as the last line of standard output, too, unless that has
/// failed itself.
int report(const Failure& failure, const Console& console, Language language, bool json) {
    for (const Failure::Fault& fault : failure.faults()) {
        say(console, language, fault.line);
    }
    say(console, language, failure.message(language));
    if (json && console.out) {
        console.out << jsonLine({{"error", failureJson(failure, language)}}) << std::flush;
    }
    return failure.exitCode();
}

/// Whether JSON is asked for. The command line may be wrong, so that it cannot be parsed.
bool isJsonRequested(const std::vector<std::string>& arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument == "--json" || argument.starts_with("--json=");
    });
}

/// Runs a command and turns every kind of failure into a message and an exit code.
int guarded(const Console& console, const Language& language, bool json, const std::function<int()>& action) {
    try {
        return action();
    } catch (const ReaderGone&) {
        return exit_code::readerGone;
    } catch (const std::exception&) {
        return report(failureOf(std::current_exception(), language), console, language, json);
    }
}

} // namespace

int runApplication(const std::vector<std::string>& arguments, const Console& console,
                   const ConnectionMaker& serverConnection, const Clock& clock) {
    Language language = languageOfArguments(arguments);
    return guarded(console, language, isJsonRequested(arguments), [&]() -> int {
        requireNoEmptyOption(arguments);
        CommandLine commandLine(language);
        CLI::App& program = commandLine.program();
        try {
            const auto words = withHelpAsOption(arguments, program);
            program.parse(std::vector<std::string>(words.rbegin(), words.rend()));
        } catch (const CLI::Success& request) { // help or version was asked for
            std::ostringstream text;
            static_cast<void>(program.exit(request, text, console.err));
            Output output(console, GlobalOptions{});
            output.raw(text.str());
            output.flush();
            return exit_code::done;
        } catch (const CLI::ParseError& error) {
            throw usageFailure(program, error);
        }
        GlobalOptions options = globalOptions(commandLine.given(), language, console);
        if (serverConnection) {
            options.serverConnection = serverConnection;
        }
        if (clock) {
            options.clock = clock;
        }
        language = options.language;
        if (Command* command = commandLine.parsedCommand()) {
            return command->run(options, console);
        }
        throw Failure(exit_code::usage, HostText::commandMissing);
    });
}

} // namespace z7::cashflow::host
