#include "host/cli/usageFailure.h"

#include "host/cli/exitCode.h"
#include "host/cli/nearMatch.h"
#include "host/text/joined.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace z7::cashflow::host {

namespace {

/// The part of a sentence before a mark. The parser's sentences begin with the option that they are about.
std::string before(const std::string& sentence, const char* mark) { return sentence.substr(0, sentence.find(mark)); }

std::string after(const std::string& sentence, const std::string& mark) {
    const std::size_t at = sentence.find(mark);
    return at == std::string::npos ? sentence : sentence.substr(at + mark.size());
}

/// The command that was parsed, or the program itself.
const CLI::App& parsedCommand(const CLI::App& program) {
    const auto commands = program.get_subcommands();
    return commands.empty() ? program : *commands.front();
}

std::vector<std::string> optionNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    return names;
}

std::vector<std::string> commandNames(const CLI::App& program) {
    std::vector<std::string> names;
    for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

Failure failure(HostText text, std::vector<std::string> arguments) {
    return Failure(exit_code::usage, text, std::move(arguments));
}

/// The failure for an unknown word, with the word that was probably meant.
Failure unknownWord(HostText plain, HostText withMatch, const std::string& word,
                    const std::vector<std::string>& words) {
    const std::string match = nearMatch(word, words);
    return match.empty() ? failure(plain, {word}) : failure(withMatch, {word, match});
}

/// The first unknown word on the command line that looks like an option.
std::string unknownOption(const CLI::App& program) {
    const auto words = program.remaining(true);
    const auto found =
        std::find_if(words.begin(), words.end(), [](const auto& word) { return word.size() > 1 && word[0] == '-'; });
    return found == words.end() ? std::string() : before(*found, "=");
}

Failure extraWord(const CLI::App& program) {
    const CLI::App& command = parsedCommand(program);
    const std::string option = unknownOption(program);
    if (!option.empty()) {
        return unknownWord(HostText::optionUnknown, HostText::optionUnknownNear, option, optionNames(command));
    }
    const auto words = program.remaining(true);
    return &command == &program && !words.empty() ? unknownCommand(program, words.front())
                                                  : failure(HostText::argumentUnknown, {joined(words, " ")});
}

/// The parser reports "Could not convert: --year = soon" for a value that is not a number.
Failure badValue(const std::string& sentence) {
    const std::string pair = after(sentence, ": ");
    return pair.find(" = ") == std::string::npos
               ? failure(HostText::optionTakesNone, {before(sentence, ":")})
               : failure(HostText::optionBadValue, {before(pair, " = "), after(pair, " = ")});
}

/// The parser reports "--by: week not in {month,quarter,year}" for a value that is not in a list.
Failure badChoice(const std::string& sentence) {
    const std::string mark = " not in {";
    std::string choices = before(after(sentence, mark), "}");
    std::replace(choices.begin(), choices.end(), ',', '/');
    return sentence.find(mark) == std::string::npos
               ? failure(HostText::commandLineWrong, {sentence})
               : failure(HostText::optionChoice,
                         {before(sentence, ": "), choices, before(after(sentence, ": "), mark.c_str())});
}

Failure badCount(const std::string& sentence) {
    if (sentence.find("flag override") != std::string::npos) {
        return failure(HostText::optionTakesNone, {before(sentence, " was given")});
    }
    const bool tooMany = sentence.find("At Most") != std::string::npos;
    return failure(tooMany ? HostText::optionTwice : HostText::optionWithoutValue, {before(sentence, ":")});
}

} // namespace

Failure unknownCommand(const CLI::App& program, const std::string& word) {
    return unknownWord(HostText::commandUnknown, HostText::commandUnknownNear, word, commandNames(program));
}

Failure usageFailure(const CLI::App& program, const CLI::ParseError& error) {
    const std::string sentence = error.what();
    switch (static_cast<CLI::ExitCodes>(error.get_exit_code())) {
    case CLI::ExitCodes::ExtrasError:
        return extraWord(program);
    case CLI::ExitCodes::RequiredError: // it may be missing because the name of an option is mistyped
        return unknownOption(program).empty() ? failure(HostText::argumentMissing, {before(sentence, " is required")})
                                              : extraWord(program);
    case CLI::ExitCodes::ArgumentMismatch:
        return badCount(sentence);
    case CLI::ExitCodes::ConversionError:
        return badValue(sentence);
    case CLI::ExitCodes::ValidationError:
        return badChoice(sentence);
    case CLI::ExitCodes::ExcludesError:
        return failure(HostText::optionsExclude, {before(sentence, " excludes "), after(sentence, " excludes ")});
    default:
        return failure(HostText::commandLineWrong, {sentence});
    }
}

} // namespace z7::cashflow::host
