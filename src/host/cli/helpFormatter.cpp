#include "host/cli/helpFormatter.h"

#include "adapters/terminal/printable.h"
#include "host/cli/optionText.h"
#include "host/terminal/foldedText.h"
#include "host/text/HostText.h"

#include <CLI/CLI.hpp>

#include <sstream>
#include <utility>
#include <vector>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t helpWidth = 80;
constexpr std::size_t nameWidth = 22; ///< of the name column, without the two blanks on each side

/// The lines of a name and its meaning.
std::string entry(const std::string& name, const std::string& meaning) {
    std::string text;
    std::string first = "  " + name;
    const std::size_t used = terminal::displayWidth(first);
    const std::string margin(nameWidth + 4, ' ');
    if (used + 2 > margin.size()) {
        text += first + '\n';
        first = margin;
    } else {
        first.append(margin.size() - used, ' ');
    }
    for (const std::string& line : foldedText(meaning, helpWidth - margin.size())) {
        text += std::exchange(first, margin) + line + '\n';
    }
    return text;
}

/// Wraps the lines of a text that are too wide. A line that begins with a blank is a command to type and is kept
/// whole.
std::string paragraph(const std::string& given) {
    std::string text;
    std::istringstream lines(given);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(' ')) {
            text += line + '\n';
            continue;
        }
        for (const std::string& folded : foldedText(line, helpWidth)) {
            text += folded + '\n';
        }
    }
    return text;
}

class HelpFormatter final : public CLI::FormatterBase {
public:
    explicit HelpFormatter(Language language) noexcept : language_(language) {}
    // NOLINTNEXTLINE(readability-identifier-naming): the base class's name
    [[nodiscard]] std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;

private:
    Language language_;
};

std::string HelpFormatter::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode /*mode*/) const {
    std::string arguments;
    std::string options;
    for (const CLI::Option* option : app->get_options()) {
        if (option->get_positional()) {
            arguments += entry(option->get_name(), optionMeaning(*option, language_));
        } else {
            options += entry(optionName(*option, language_), optionMeaning(*option, language_));
        }
    }
    std::string commands;
    for (const CLI::App* command : app->get_subcommands([](const CLI::App*) { return true; })) {
        commands += entry(command->get_name(), command->get_description());
    }
    std::string text = paragraph(app->get_description()) +
                       hostText(language_, HostText::helpUsage, {usageWords(*app, std::move(name), language_)}) + '\n';
    for (const auto& [heading, part] : {std::pair{HostText::helpArguments, arguments},
                                        {HostText::helpOptions, options},
                                        {HostText::helpCommands, commands}}) {
        if (!part.empty()) {
            text += '\n' + hostText(language_, heading) + '\n' + part;
        }
    }
    return text + '\n' + paragraph(app->get_footer());
}

} // namespace

std::shared_ptr<CLI::FormatterBase> helpFormatter(Language language) {
    return std::make_shared<HelpFormatter>(language);
}

} // namespace z7::cashflow::host
