#include "host/cli/usageText.h"

#include "host/cli/nearMatch.h"
#include "host/text/HostText.h"
#include "host/text/joined.h"

#include <CLI/CLI.hpp>

#include <algorithm>

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

/// The sentence for an unknown word, with the word that was probably meant.
std::string unknownText(Language language, HostText plain, HostText withMatch, const std::string& word,
                        const std::vector<std::string>& words) {
    const std::string match = nearMatch(word, words);
    return match.empty() ? hostText(language, plain, {word}) : hostText(language, withMatch, {word, match});
}

/// The first unknown word on the command line that looks like an option.
std::string unknownOption(const CLI::App& program) {
    const auto words = program.remaining(true);
    const auto found =
        std::find_if(words.begin(), words.end(), [](const auto& word) { return word.size() > 1 && word[0] == '-'; });
    return found == words.end() ? std::string() : before(*found, "=");
}

std::string extraText(Language language, const CLI::App& program) {
    const CLI::App& command = parsedCommand(program);
    const std::string option = unknownOption(program);
    if (!option.empty()) {
        return unknownText(language, HostText::optionUnknown, HostText::optionUnknownNear, option,
                           optionNames(command));
    }
    const auto words = program.remaining(true);
    return &command == &program && !words.empty() ? unknownCommandText(language, program, words.front())
                                                  : hostText(language, HostText::argumentUnknown, {joined(words, " ")});
}

/// The parser reports "Could not convert: --year = soon" for a value that is not a number.
std::string valueText(Language language, const std::string& sentence) {
    const std::string pair = after(sentence, ": ");
    return pair.find(" = ") == std::string::npos
               ? hostText(language, HostText::optionTakesNone, {before(sentence, ":")})
               : hostText(language, HostText::optionBadValue, {before(pair, " = "), after(pair, " = ")});
}

/// The parser reports "--by: week not in {month,quarter,year}" for a value that is not in a list.
std::string choiceText(Language language, const std::string& sentence) {
    const std::string mark = " not in {";
    std::string choices = before(after(sentence, mark), "}");
    std::replace(choices.begin(), choices.end(), ',', '/');
    return sentence.find(mark) == std::string::npos
               ? hostText(language, HostText::commandLineWrong, {sentence})
               : hostText(language, HostText::optionChoice,
                          {before(sentence, ": "), choices, before(after(sentence, ": "), mark.c_str())});
}

std::string countText(Language language, const std::string& sentence) {
    if (sentence.find("flag override") != std::string::npos) {
        return hostText(language, HostText::optionTakesNone, {before(sentence, " was given")});
    }
    const bool tooMany = sentence.find("At Most") != std::string::npos;
    return hostText(language, tooMany ? HostText::optionTwice : HostText::optionWithoutValue, {before(sentence, ":")});
}

} // namespace

std::string unknownCommandText(Language language, const CLI::App& program, const std::string& word) {
    return unknownText(language, HostText::commandUnknown, HostText::commandUnknownNear, word, commandNames(program));
}

std::string usageText(Language language, const CLI::App& program, const CLI::ParseError& error) {
    const std::string sentence = error.what();
    switch (static_cast<CLI::ExitCodes>(error.get_exit_code())) {
    case CLI::ExitCodes::ExtrasError:
        return extraText(language, program);
    case CLI::ExitCodes::RequiredError: // it may be missing because the name of an option is mistyped
        return unknownOption(program).empty()
                   ? hostText(language, HostText::argumentMissing, {before(sentence, " is required")})
                   : extraText(language, program);
    case CLI::ExitCodes::ArgumentMismatch:
        return countText(language, sentence);
    case CLI::ExitCodes::ConversionError:
        return valueText(language, sentence);
    case CLI::ExitCodes::ValidationError:
        return choiceText(language, sentence);
    case CLI::ExitCodes::ExcludesError:
        return hostText(language, HostText::optionsExclude,
                        {before(sentence, " excludes "), after(sentence, " excludes ")});
    default:
        return hostText(language, HostText::commandLineWrong, {sentence});
    }
}

} // namespace z7::cashflow::host
