#include "host/cli/programFiles.h"

#include "doubles/ScratchFolder.h"
#include "host/cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace z7::cashflow::host {
namespace {

using testing::HasSubstr;

/// What a shell command writes to its output and to its error stream.
std::string outputOf(const std::string& command) {
    std::string text;
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(("{ " + command + "; } 2>&1").c_str(), "r"), pclose);
    char buffer[4096];
    for (std::size_t count = 0; pipe && (count = fread(buffer, 1, sizeof buffer, pipe.get())) > 0;) {
        text.append(buffer, count);
    }
    return text;
}

bool isInstalled(const std::string& program) {
    return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
}

std::vector<const CLI::App*> commandsOf(const CommandLine& commandLine) {
    return commandLine.program().get_subcommands([](const CLI::App*) { return true; });
}

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

/// A word with its hyphens as the source of a manual page has them.
std::string inManual(const std::string& word) { return std::regex_replace(word, std::regex("-"), "\\-"); }

class ProgramFiles : public testing::Test {
protected:
    /// Writes a file of the program and returns its path.
    std::string written(const std::string& name) { return folder_.write(name, files_.at(name)).string(); }

    const std::map<std::string, std::string> files_ = programFiles();
    test::ScratchFolder folder_;
};

TEST_F(ProgramFiles, HoldAManualPageOfEachCommandWithAllItsOptionsInBothLanguages) {
    for (const auto& [language, folder] :
         {std::pair{Language::english, "man/man1/"}, std::pair{Language::chinese, "man/zh_CN/man1/"}}) {
        const CommandLine commandLine(language);
        EXPECT_TRUE(files_.contains(std::string(folder) + "z7cf.1"));
        for (const CLI::App* command : commandsOf(commandLine)) {
            const auto page = files_.find(std::string(folder) + "z7cf-" + command->get_name() + ".1");
            ASSERT_NE(page, files_.end()) << command->get_name();
            EXPECT_THAT(page->second, HasSubstr(inManual(" - " + command->get_description()) + "\n"));
            for (const CLI::Option* option : command->get_options()) {
                for (const std::string& name : option->get_lnames()) {
                    EXPECT_THAT(page->second, HasSubstr(inManual("--" + name))) << page->first;
                }
            }
            const std::string examples = page->second.substr(page->second.find("\n.nf\n"));
            EXPECT_THAT(examples, HasSubstr("  z7cf " + inManual(command->get_name()) + " ")) << page->first;
        }
    }
}

TEST_F(ProgramFiles, ManualPagesAreFormattedWithoutAWarningAndKeepHyphens) {
    if (!isInstalled("groff")) {
        GTEST_SKIP() << "groff is not installed";
    }
    for (const auto& [name, content] : files_) {
        if (name.starts_with("man/")) {
            EXPECT_EQ(outputOf("groff -man -Kutf8 -Tutf8 -ww -z '" + written(name) + "'"), "") << name;
        }
    }
    EXPECT_THAT(outputOf("groff -man -Kutf8 -Tutf8 '" + written("man/man1/z7cf-allot.1") + "'"),
                HasSubstr("--dry-run"));
}

TEST_F(ProgramFiles, BashCompletesCommandsTheirOptionsAndFiles) {
    const std::string script = written("bash-completion/completions/z7cf");
    const auto completed = [&](const std::string& words, int place) {
        return wordsOf(outputOf("cd '" + folder_.path().string() + "' && bash -c 'source \"" + script +
                                "\"; COMP_WORDS=(" + words + "); COMP_CWORD=" + std::to_string(place) +
                                "; _z7cf; printf \"%s\\n\" \"${COMPREPLY[@]}\"'"));
    };
    EXPECT_THAT(completed("z7cf stat", 1), testing::ElementsAre("statement"));
    EXPECT_THAT(completed("z7cf allot --dr", 2), testing::ElementsAre("--dry-run"));
    EXPECT_THAT(completed("z7cf --quiet allot --ye", 3), testing::ElementsAre("--year"));
    EXPECT_THAT(completed("z7cf kinds --ye", 2), testing::ElementsAre()) << "the command has no such option";
    EXPECT_THAT(completed("z7cf kinds bash", 2), testing::ElementsAre("bash-completion"));
}

TEST_F(ProgramFiles, ZshReadsItsCompletion) {
    if (!isInstalled("zsh")) {
        GTEST_SKIP() << "zsh is not installed";
    }
    const std::string script = written("zsh/site-functions/_z7cf");
    EXPECT_EQ(outputOf("zsh -n '" + script + "'"), "");
    // The two functions of the completion system write down what they are asked to offer.
    const auto offered = [&](const std::string& words) {
        return outputOf("zsh -fc '_describe() { print -l -- \"${(@P)2}\"; }; _arguments() { print -l -- \"$@\"; }; "
                        "words=(" +
                        words + "); CURRENT=${#words}; source \"" + script + "\"'");
    };
    EXPECT_THAT(offered("z7cf st"), HasSubstr("statement:Draw up"));
    EXPECT_THAT(offered("z7cf allot --"), testing::AllOf(HasSubstr("--dry-run["), HasSubstr("*: :_files")));
    EXPECT_THAT(offered("z7cf kinds --"), testing::Not(HasSubstr("--year[")));
}

} // namespace
} // namespace z7::cashflow::host
