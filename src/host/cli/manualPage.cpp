#include "host/cli/manualPage.h"

#include "host/cli/exitCode.h"
#include "host/cli/optionText.h"
#include "host/text/HostText.h"
#include "z7cashflow/support/version.h"

#include <CLI/CLI.hpp>

#include <array>
#include <sstream>
#include <utility>

namespace z7::cashflow::host {

namespace {

/// A text as man shows it letter by letter: without this a hyphen may become a dash, and a line that begins with a dot
/// a request.
std::string shownAsIs(const std::string& text) {
    std::string result;
    bool lineBegins = true;
    for (const char c : text) {
        if (lineBegins && (c == '.' || c == '\'')) {
            result += "\\&";
        }
        lineBegins = c == '\n';
        if (c == '\\') {
            result += "\\e";
        } else if (c == '-') {
            result += "\\-";
        } else {
            result += c;
        }
    }
    return result;
}

class Page {
public:
    explicit Page(Language language) : language_(language) {}

    void title(const std::string& name) {
        text_ += ".TH " + shownAsIs(name) + " 1 \"\" \"z7cf " + libraryVersion +
                 "\" z7cf\n.ad l\n"; // Chinese has no blanks to stretch
    }
    void section(HostText heading) { text_ += ".SH " + hostText(language_, heading) + '\n'; }
    void line(const std::string& words) { text_ += shownAsIs(words) + '\n'; }
    void entry(const std::string& name, const std::string& meaning) {
        text_ += ".TP\n.B " + shownAsIs(name) + '\n' + shownAsIs(meaning) + '\n';
    }
    /// Lines to type, as they are.
    void example(const std::string& lines) { text_ += ".nf\n" + shownAsIs(lines) + ".fi\n"; }
    void bold(const std::string& words) { text_ += ".B " + shownAsIs(words) + '\n'; }
    void reference(const std::string& page) { text_ += ".BR " + shownAsIs(page) + " (1)\n"; }

    [[nodiscard]] std::string text() && { return std::move(text_); }

private:
    Language language_;
    std::string text_;
};

/// The examples below their heading, which is the first line of the footer.
std::string examplesOf(const CLI::App& app) {
    const std::string footer = app.get_footer();
    const std::size_t end = footer.find('\n');
    return end == std::string::npos ? std::string() : footer.substr(end + 1) + '\n';
}

void exitCodes(Page& page, Language language) {
    page.section(HostText::manualExitStatus);
    constexpr std::array codes{
        std::pair{exit_code::done, HostText::exitDone}, std::pair{exit_code::refused, HostText::exitRefused},
        std::pair{exit_code::usage, HostText::exitUsage}, std::pair{exit_code::database, HostText::exitDatabase}};
    for (const auto& [code, meaning] : codes) {
        page.entry(std::to_string(code), hostText(language, meaning));
    }
    page.entry(">" + std::to_string(exit_code::signalBase), hostText(language, HostText::exitSignal));
}

} // namespace

std::string manualPage(Language language, const CLI::App& app, const CLI::App* parent) {
    const std::string typed = parent == nullptr ? app.get_name() : parent->get_name() + " " + app.get_name();
    const std::string name = parent == nullptr ? app.get_name() : parent->get_name() + "-" + app.get_name();
    Page page(language);
    page.title(name);
    page.section(HostText::manualName);
    page.line(name + " - " + app.get_description());
    page.section(HostText::manualSynopsis);
    page.bold(usageWords(app, typed, language));
    bool arguments = false;
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional()) {
            if (!std::exchange(arguments, true)) {
                page.section(HostText::manualArguments);
            }
            page.entry(option->get_name(), optionMeaning(*option, language));
        }
    }
    page.section(HostText::manualOptions);
    for (const CLI::Option* option : app.get_options()) {
        if (!option->get_positional()) {
            page.entry(optionName(*option, language), optionMeaning(*option, language));
        }
    }
    const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
    if (!commands.empty()) {
        page.section(HostText::manualCommands);
    }
    for (const CLI::App* command : commands) {
        page.entry(command->get_name(), command->get_description());
    }
    page.section(HostText::manualExamples);
    page.example(examplesOf(app));
    exitCodes(page, language);
    page.section(HostText::manualSeeAlso);
    if (parent != nullptr) {
        page.reference(parent->get_name());
    }
    for (const CLI::App* command : commands) {
        page.reference(app.get_name() + "-" + command->get_name());
    }
    return std::move(page).text();
}

} // namespace z7::cashflow::host
