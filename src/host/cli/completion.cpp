#include "host/cli/completion.h"

#include <CLI/CLI.hpp>

#include <vector>

namespace z7::cashflow::host {

namespace {

std::vector<const CLI::App*> commandsOf(const CLI::App& program) {
    return program.get_subcommands([](const CLI::App*) { return true; });
}

bool takesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0 && option.get_type_size_max() > 0;
}

/// The options of a command as they are typed, with a blank before each.
std::string optionWords(const CLI::App& app) {
    std::string words;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_snames()) {
            words += " -" + name;
        }
        for (const std::string& name : option->get_lnames()) {
            words += " --" + name;
        }
    }
    return words;
}

/// A text within single quotes of the shell, where zsh's own signs in a description have no meaning.
std::string described(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '\'') {
            result += "'\\''";
        } else {
            result += c == ':' || c == '[' || c == ']' || c == '\\' ? std::string{'\\', c} : std::string(1, c);
        }
    }
    return result;
}

std::string zshOptions(const CLI::App& app) {
    std::string lines;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            lines += " \\\n            '--" + name + "[" + described(option->get_description()) + "]" +
                     (takesValue(*option) ? ": :_files'" : "'");
        }
    }
    return lines + " \\\n            '*: :_files'";
}

} // namespace

std::string bashCompletion(const CLI::App& program) {
    std::string names;
    std::string cases;
    for (const CLI::App* command : commandsOf(program)) {
        names += " " + command->get_name();
        cases += "    " + command->get_name() + ") words=\"" + optionWords(*command).substr(1) + "\" ;;\n";
    }
    return R"(# Completion of z7cf for bash.
_z7cf() {
    local word=${COMP_WORDS[COMP_CWORD]} commands=")" +
           names.substr(1) + R"(" command="" words i
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ " $commands " == *" ${COMP_WORDS[i]} "* ]]; then
            command=${COMP_WORDS[i]}
            break
        fi
    done
    case $command in
    "") words="$commands help)" +
           optionWords(program) + "\" ;;\n" + cases + R"(    esac
    if [[ $word == -* || -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -o filenames -F _z7cf z7cf
)";
}

std::string zshCompletion(const CLI::App& program) {
    std::string commands;
    std::string cases;
    for (const CLI::App* command : commandsOf(program)) {
        commands += "        '" + command->get_name() + ":" + described(command->get_description()) + "'\n";
        cases += "    " + command->get_name() + ")\n        _arguments" + zshOptions(*command) + "\n        ;;\n";
    }
    return "#compdef z7cf\n# Completion of z7cf for zsh.\n_z7cf() {\n    local -a commands=(\n" + commands +
           R"(    )
    local place=2
    if ((CURRENT == place)) && [[ ${words[CURRENT]} != -* ]]; then
        _describe command commands
        return
    fi
    local command=${words[place]}
    case $command in
)" + cases +
           "    *)\n        _arguments" + zshOptions(program) + "\n        ;;\n    esac\n}\n_z7cf \"$@\"\n";
}

} // namespace z7::cashflow::host
