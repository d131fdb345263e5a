#include "host/cli/CommandLine.h"

#include "host/cli/helpFormatter.h"
#include "host/commands/allCommands.h"
#include "host/text/HostText.h"
#include "z7cashflow/support/version.h"

#include <CLI/CLI.hpp>

#include <cstddef>

namespace z7::cashflow::host {

CommandLine::CommandLine(Language language)
    : program_(std::make_unique<CLI::App>(hostText(language, HostText::helpProgram), "z7cf")),
      commands_(allCommands()) {
    program_->formatter(helpFormatter(language));
    program_->allow_windows_style_options(false); // "/data/company.db" is a file
    addCommonOptions(*program_, language);
    program_->set_version_flag("--version", std::string("z7cf ") + libraryVersion,
                               hostText(language, HostText::helpVersion));
    program_->footer(hostText(language, HostText::examplesProgram));
    for (const auto& command : commands_) {
        CLI::App& declared = command->declare(*program_, language);
        addCommonOptions(declared, language);
        declared_.push_back(&declared);
    }
}

CommandLine::~CommandLine() = default;

Command* CommandLine::parsedCommand() const {
    for (std::size_t i = 0; i < commands_.size(); ++i) {
        if (declared_[i]->parsed()) {
            return commands_[i].get();
        }
    }
    return nullptr;
}

void CommandLine::addCommonOptions(CLI::App& app, Language language) {
    app.set_help_flag("-h,--help", hostText(language, HostText::helpHelp));
    app.add_flag("--json", given_.json, hostText(language, HostText::helpJson));
    app.add_option("--lang", given_.language, hostText(language, HostText::helpLang));
    app.add_flag("--quiet", given_.quiet, hostText(language, HostText::helpQuiet));
    app.add_option("--connect", given_.connect, hostText(language, HostText::helpConnect));
    app.add_option("--settings", given_.settings, hostText(language, HostText::helpSettings));
}

} // namespace z7::cashflow::host
