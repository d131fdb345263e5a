#include "host/cli/optionText.h"

#include "host/text/HostText.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

std::string optionName(const CLI::Option& option, Language language) {
    std::string text;
    for (const std::string& name : option.get_snames()) {
        text += "-" + name + ", ";
    }
    for (const std::string& name : option.get_lnames()) {
        text += "--" + name;
    }
    if (option.get_items_expected_max() > 0 && option.get_type_size_max() > 0) {
        const bool number = option.get_type_name() == "INT" || option.get_type_name() == "UINT";
        text += " " + hostText(language, number ? HostText::helpNumber : HostText::helpText);
    }
    return text;
}

std::string optionMeaning(const CLI::Option& option, Language language) {
    std::string text = option.get_description();
    if (option.get_required()) {
        text += hostText(language, HostText::helpRequired);
    }
    for (const CLI::Option* other : option.get_excludes()) {
        const bool word = other->get_lnames().empty(); // an argument, such as RUN
        text +=
            hostText(language, HostText::helpExcludes, {word ? other->get_name() : "--" + other->get_lnames().front()});
    }
    return text;
}

std::string usageWords(const CLI::App& app, std::string line, Language language) {
    line += " " + hostText(language, HostText::helpOptionsPlace);
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional()) {
            line += option->get_required() ? " " + option->get_name() : " [" + option->get_name() + "]";
        }
    }
    if (!app.get_subcommands([](const CLI::App*) { return true; }).empty()) {
        line += " " + hostText(language, HostText::helpCommandPlace);
    }
    return line;
}

} // namespace z7::cashflow::host
