#include "host/cli/usageText.h"

#include "host/text/HostText.h"
#include "host/text/joined.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

namespace {

/// The parser begins its sentences with the option that they are about.
std::string before(const std::string& sentence, const char* mark) { return sentence.substr(0, sentence.find(mark)); }

} // namespace

std::string usageText(Language language, const CLI::App& program, const CLI::ParseError& error) {
    const std::string sentence = error.what();
    switch (static_cast<CLI::ExitCodes>(error.get_exit_code())) {
    case CLI::ExitCodes::ExtrasError:
        return hostText(language, HostText::argumentUnknown, {joined(program.remaining(true), " ")});
    case CLI::ExitCodes::RequiredError:
        return hostText(language, HostText::argumentMissing, {before(sentence, " is required")});
    case CLI::ExitCodes::ArgumentMismatch:
        return hostText(language, HostText::optionWithoutValue, {before(sentence, ":")});
    case CLI::ExitCodes::ConversionError: {
        const std::size_t colon = sentence.find(": ");
        return hostText(language, HostText::optionBadValue,
                        {colon == std::string::npos ? sentence : sentence.substr(colon + 2)});
    }
    default:
        return hostText(language, HostText::commandLineWrong, {sentence});
    }
}

} // namespace z7::cashflow::host
