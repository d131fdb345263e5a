#include "host/cli/programFiles.h"

#include "host/cli/CommandLine.h"
#include "host/cli/completion.h"
#include "host/cli/manualPage.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace z7::cashflow::host {

std::map<std::string, std::string> programFiles() {
    std::map<std::string, std::string> files;
    for (const auto& [language, folder] :
         {std::pair{Language::english, "man/man1/"}, std::pair{Language::chinese, "man/zh_CN/man1/"}}) {
        const CommandLine commandLine(language);
        const CLI::App& program = commandLine.program();
        files[folder + program.get_name() + ".1"] = manualPage(language, program, nullptr);
        for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; })) {
            files[folder + program.get_name() + "-" + command->get_name() + ".1"] =
                manualPage(language, *command, &program);
        }
    }
    const CommandLine english(Language::english);
    files["bash-completion/completions/z7cf"] = bashCompletion(english.program());
    files["zsh/site-functions/_z7cf"] = zshCompletion(english.program());
    return files;
}

} // namespace z7::cashflow::host
