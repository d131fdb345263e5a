// The examples in the help must work: each of them runs on a prepared sample company.

#include "CommandLine.h"
#include "EnvironmentGuard.h"
#include "ServerDouble.h"
#include "doubles/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <set>

namespace z7::cashflow::host {
namespace {

using testing::AnyOf;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

namespace fs = std::filesystem;

/// The examples with another exit code than 0: vouchers of the sample company's year are refused.
const std::map<std::string, int>& otherCodes() {
    static const std::map<std::string, int> codes{
        {"z7cf statement company.db --year 2024", 1},
        {"z7cf statement company.db --year 2024 --period 1-3 --by month --csv -o quarter.csv", 1},
        {"z7cf statement company.db --year 2024 --html 2024.html", 1},
        {"z7cf vouchers company.db --year 2024 --open", 1},
        {"z7cf vouchers company.db --year 2024 --open --group", 1},
        {"z7cf vouchers company.db --year 2024 --open --lines --csv -o open.csv", 1},
        {"z7cf allot company.db --year 2024", 1},
        {"z7cf allot company.db --year 2024 --dry-run", 1},
        {"z7cf allot company.db --year 2024 --period 3 --json", 1},
        {"z7cf edit company.db 2024/6/2/10", 2}, // there is no screen
        {"z7cf edit company.db 2024/6/2/10 --read-only", 2},
        {"z7cf edit company.db --outside sales_voucher AR-2024-0301", 2},
    };
    return codes;
}

/// Files that an example writes, which therefore must not exist before.
std::vector<std::string> filesToWrite(const std::string& line) {
    const auto words = wordsOf(line);
    std::vector<std::string> files;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i - 1] == "-o" || words[i - 1] == ">" || words[i - 1] == "--html") {
            files.push_back(words[i]);
        }
    }
    return files;
}

/// Changes the working folder for its lifetime.
class InFolder {
public:
    explicit InFolder(const fs::path& folder) { fs::current_path(folder); }
    ~InFolder() { fs::current_path(before_); }
    InFolder(const InFolder&) = delete;
    InFolder& operator=(const InFolder&) = delete;

private:
    fs::path before_ = fs::current_path();
};

/// Each test has its own folder with an account whose year has been allocated.
class HelpExamplesTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        prepared().emplace();
        const InFolder inside(prepared()->path());
        EXPECT_EQ(runLine("z7cf sample-xml .").exitCode, 0);
        fs::create_directory("tables");
        std::ofstream("tables/dsign.csv") << "isignseq,csign\n1,R\n";
        std::ofstream("tables/ua_period.csv") << "cacc_id,iyear,iid,dbegin,dend\n001,2024,1,2024-01-01,2024-01-31\n";
        for (const char* const account : {"company.db", "a.db", "b.db"}) {
            EXPECT_EQ(runLine("z7cf init " + std::string(account) + " --sample --quiet").exitCode, 0);
        }
        EXPECT_EQ(runLine("z7cf allot company.db --year 2024 --quiet").exitCode, 1);             // run 1
        EXPECT_EQ(runLine("z7cf assign company.db 2024/6/2/10 1 0113 --quiet").exitCode, 0);     // run 2
        EXPECT_EQ(runLine("z7cf assign company.db 2024/6/2/10 1 0112 400.00 0114").exitCode, 0); // run 3
        EXPECT_EQ(
            runLine("z7cf outside generate company.db sales_voucher AR-2024-0301 --year 2024 --xml rows.xml").exitCode,
            0);
        std::ofstream("open.csv") << "voucher,line,item\n2024/4/2/10,1,0114\n";
        std::ofstream("office.txt") << "driver=sqlite;database=company.db\n";
    }
    static void TearDownTestSuite() { prepared().reset(); }

    /// The examples of a help text, without their indentation.
    static std::vector<std::string> examplesOf(const std::string& help) {
        std::vector<std::string> examples;
        std::istringstream stream(help);
        bool under = false;
        for (std::string line; std::getline(stream, line);) {
            under = under || line == "Examples:" || line == "例：";
            if (under && line.starts_with("  ")) {
                examples.push_back(line.substr(2));
            }
        }
        return examples;
    }
    static std::vector<std::string> examplesOf(const std::string& command, const std::string& language) {
        const RunResult help = runLine("z7cf " + command + " --help --lang " + language);
        EXPECT_EQ(help.exitCode, 0) << help.err;
        return examplesOf(help.out);
    }
    /// The commands listed by the help.
    static std::vector<std::string> commands() {
        std::vector<std::string> names;
        bool listed = false;
        for (const std::string& line : runLine("z7cf --help").lines()) {
            listed = line == "Subcommands:" || (listed && !line.empty());
            if (listed && line.starts_with("  ") && !line.starts_with("   ")) {
                names.push_back(wordsOf(line).front());
            }
        }
        return names;
    }
    /// All examples of the help, without duplicates.
    static std::set<std::string> allExamples() {
        std::set<std::string> all;
        auto names = commands();
        names.emplace_back(); // the program's own
        for (const std::string& name : names) {
            const auto examples = examplesOf(name, "en");
            all.insert(examples.begin(), examples.end());
        }
        return all;
    }

    /// Runs an example in a new copy of the prepared folder.
    static RunResult runExample(const std::string& line) {
        const test::ScratchFolder scratch;
        const InFolder inside(scratch.path());
        fs::copy(prepared()->path(), scratch.path(), fs::copy_options::recursive);
        for (const std::string& file : filesToWrite(line)) {
            fs::remove(file);
        }
        ServerDouble server;
        if (line.starts_with("z7cf init")) {
            fs::remove("company.db");
            fs::remove("company.zqsystem.db");
            std::ofstream("office.txt") << "Driver={FreeTDS};Server=office;Database=company001\n";
        }
        const RunResult result = runLine(line, server.connections());
        for (const std::string& file : filesToWrite(line)) {
            EXPECT_TRUE(fs::exists(file)) << line;
        }
        return result;
    }

private:
    static std::optional<test::ScratchFolder>& prepared() {
        static std::optional<test::ScratchFolder> folder;
        return folder;
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    EnvironmentGuard display_{"DISPLAY", nullptr};
    EnvironmentGuard wayland_{"WAYLAND_DISPLAY", nullptr};
};

TEST_F(HelpExamplesTest, EveryCommandHasExamplesAndTheSameInBothLanguages) {
    EXPECT_GT(commands().size(), 20U);
    for (const std::string& name : commands()) {
        const auto examples = examplesOf(name, "en");
        EXPECT_THAT(examples, Not(SizeIs(0))) << name;
        for (const std::string& line : examples) {
            EXPECT_THAT(line, HasSubstr("z7cf " + name + " "));
        }
        EXPECT_THAT(examplesOf(name, "zh-CN"), ElementsAreArray(examples)) << name;
    }
    EXPECT_THAT(examplesOf("", "en"), Not(SizeIs(0)));
    EXPECT_THAT(examplesOf("", "zh-CN"), ElementsAreArray(examplesOf("", "en")));
}

TEST_F(HelpExamplesTest, EveryExampleRunsAndEndsAsExpected) {
    const auto examples = allExamples();
    for (const std::string& line : examples) {
        SCOPED_TRACE(line);
        const auto other = otherCodes().find(line);
        const RunResult result = runExample(line);
        EXPECT_EQ(result.exitCode, other == otherCodes().end() ? 0 : other->second) << result.out << result.err;
        if (result.exitCode == 2) {
            EXPECT_THAT(result.err, AnyOf(HasSubstr("no screen"), HasSubstr("without windows")));
        }
    }
    for (const auto& [line, code] : otherCodes()) {
        EXPECT_TRUE(examples.contains(line)) << "no example any more: " << line;
    }
}

} // namespace
} // namespace z7::cashflow::host
