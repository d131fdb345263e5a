// Commands that only read need no write permission, neither for the account's files nor for their folder.

#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "doubles/ChildProcess.h"
#include "doubles/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace z7::cashflow::host {
namespace {

namespace fs = std::filesystem;

class ReadOnlyTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(runProgram({"init", file(), "--sample", "--quiet"}).exitCode, 0);
        ASSERT_EQ(runProgram({"allot", file(), "--year", "2024", "--period", "1-7", "--quiet"}).exitCode, 1);
        for (const auto& entry : fs::directory_iterator(folder.path())) {
            fs::permissions(entry.path(), fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
        }
        fs::permissions(folder.path(), fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                                           fs::perms::others_exec);
    }
    void TearDown() override { fs::permissions(folder.path(), fs::perms::owner_all); }

    [[nodiscard]] std::string file() const { return (folder.path() / "company.db").string(); }
    [[nodiscard]] std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path())) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    EnvironmentGuard language{"LC_ALL", "C"};
    EnvironmentGuard home{"HOME", "/nonexistent"};
    EnvironmentGuard config{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect{"Z7CF_CONNECT", nullptr};
    test::ScratchFolder folder;
};

TEST_F(ReadOnlyTest, EveryReadingCommandAnswersAsWithRights) {
    const std::vector<std::vector<std::string>> commands{
        {"statement", file(), "--year", "2024"},
        {"statement", file(), "--year", "2024", "--by", "month", "--by-currency", "--csv"},
        {"vouchers", file(), "--year", "2024", "--period", "6"},
        {"vouchers", file(), "--year", "2024", "--period", "6-7", "--open"},
        {"vouchers", file(), "--year", "2024", "--period", "7", "--open", "--group"},
        {"vouchers", file(), "--year", "2024", "--period", "7", "--open", "--lines", "--csv"},
        {"voucher", file(), "2024/6/付/10"},
        {"rows", file(), "2024/6/2/10", "--why"},
        {"rows", file(), "2024/7/2/2", "--generate", "--why"},
        {"check", file(), "2024/6/2/10"},
        {"items", file()},
        {"accounts", file(), "--year", "2024"},
        {"templates", file(), "--year", "2024"},
        {"kinds", file()},
        {"verify", file()},
        {"log", file()},
        {"outside", "check", file(), "sales_voucher", "AR-2024-0301", "--year", "2024"}};
    std::string expected;
    for (const auto& command : commands) {
        const RunResult run = runProgram(command);
        EXPECT_LE(run.exitCode, 1) << command.front() << run.err;
        expected += run.out + run.err;
    }
    const auto before = files();
    const std::string answers = test::withoutRights([&] {
        std::string text;
        for (const auto& command : commands) {
            const RunResult run = runProgram(command);
            text += run.out + run.err;
        }
        return text;
    });
    EXPECT_EQ(answers, expected);
    EXPECT_EQ(files(), before) << "nothing is left beside the account";
}

TEST_F(ReadOnlyTest, ACommandThatWritesSaysThatItMayNot) {
    const std::string answer = test::withoutRights([&] { return runProgram({"save", file(), "2024/6/2/10"}).err; });
    EXPECT_NE(answer.find("company.db"), std::string::npos) << answer;
}

} // namespace
} // namespace z7::cashflow::host
