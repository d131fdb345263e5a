#include "host/cli/application.h"

#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <streambuf>

namespace z7::cashflow::host {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// A stream buffer that accepts a number of bytes and then fails with a system error.
class FailingBuffer : public std::streambuf {
public:
    FailingBuffer(std::size_t room, int reason) : room_(room), reason_(reason) {}

protected:
    int_type overflow(int_type c) override {
        if (room_ == 0) {
            errno = reason_;
            return traits_type::eof();
        }
        --room_;
        return traits_type::not_eof(c);
    }

private:
    std::size_t room_;
    int reason_;
};

/// All records of a table in a fixed order, one per line.
std::string contentOf(Connection& connection, const std::string& table) {
    std::vector<std::string> lines;
    for (const auto records = connection.Execute("select * from " + table); !records->atEnd(); records->MoveNext()) {
        std::string& line = lines.emplace_back();
        for (int i = 0; i < records->Fields().Count(); ++i) {
            line += toTextOrEmpty(records->Fields().Item(i)) + "|";
        }
    }
    std::sort(lines.begin(), lines.end());
    std::string content;
    for (const std::string& line : lines) {
        content += line + "\n";
    }
    return content;
}

/// Runs in a clean environment: no settings, English unless a test chooses otherwise.
class ApplicationTest : public testing::Test {
protected:
    std::string sample() {
        const std::string file = (scratch.path() / "sample.db").string();
        EXPECT_EQ(runProgram({"init", file, "--sample"}).exitCode, 0);
        return file;
    }

    RunResult runInto(std::streambuf& buffer, const std::vector<std::string>& arguments) {
        std::istringstream in;
        std::ostream out(&buffer);
        std::ostringstream err;
        const int code = runApplication(arguments, Console{in, out, err});
        return {code, "", err.str()};
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    test::ScratchFolder scratch;
};

TEST_F(ApplicationTest, HelpIsInBothLanguagesWithExamples) {
    for (const char* command :
         {"init", "vouchers", "rows", "check", "save", "allot", "assign", "clear", "reassign", "log", "undo"}) {
        const RunResult english = runProgram({command, "--help"});
        EXPECT_EQ(english.exitCode, 0);
        EXPECT_THAT(english.out, HasSubstr("Usage:"));
        EXPECT_THAT(english.out, HasSubstr("Examples:\n  z7cf " + std::string(command) + " "));
        EXPECT_THAT(english.out, HasSubstr("--json"));
        const RunResult chinese = runProgram({"--lang", "zh-CN", command, "--help"});
        EXPECT_EQ(chinese.exitCode, 0);
        EXPECT_THAT(chinese.out, HasSubstr("例：\n  z7cf " + std::string(command) + " "));
        EXPECT_THAT(chinese.out, Not(HasSubstr("Usage")));
    }
    const RunResult program = runProgram({"--help"});
    EXPECT_EQ(program.exitCode, 0);
    EXPECT_THAT(program.out, HasSubstr("Exit codes: 0 done"));
    EXPECT_EQ(program.err, "");
}

TEST_F(ApplicationTest, ShowsItsVersion) {
    const RunResult run = runProgram({"--version"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, testing::MatchesRegex("z7cf [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(ApplicationTest, AWrongCommandLineIsExitCodeTwo) {
    const std::string file = sample();
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"frobnicate"},
                                               {"init"},
                                               {"init", file, "more"},
                                               {"init", file + "2", "--sample", "--from", "x"},
                                               {"init", file + "2", "--set", "bCashCode"},
                                               {"init", file + "2", "--set", "unknown=true"},
                                               {"init", file + "2", "--from", (scratch.path() / "missing").string()},
                                               {"init", file},
                                               {"vouchers", file},
                                               {"vouchers", file, "--year", "x"},
                                               {"vouchers", file, "--year", "0"},
                                               {"vouchers", file, "--year", "10000"},
                                               {"vouchers", file, "--year", "2024", "--period", "256"},
                                               {"vouchers", file, "--year", "2024", "--period", "-1"},
                                               {"rows", file},
                                               {"rows", file, "2024/1/1"},
                                               {"check", file, "2024/1/1/x"},
                                               {"save", file, "2024/1/1/1' or '1'='1"},
                                               {"allot", file},
                                               {"allot", file, "--year", "2024", "--lang", "fr"},
                                               {"allot", file, "--year", "2024", "--settings", "/nonexistent.toml"},
                                               {"allot", file, "--year", "2024", "--unknown"}}) {
        const RunResult run = runProgram(arguments);
        EXPECT_EQ(run.exitCode, 2) << testing::PrintToString(arguments) << run.err;
        EXPECT_THAT(run.err, StartsWith("z7cf: ")) << testing::PrintToString(arguments);
        EXPECT_EQ(run.out, "") << testing::PrintToString(arguments);
    }
}

TEST_F(ApplicationTest, AVoucherThatIsNotThereIsExitCodeOne) {
    const std::string file = sample();
    for (const char* command : {"rows", "check", "save"}) {
        for (const char* key : {"2024/1/1/999", "2023/1/1/1", "2024/13/1/1", "2024/1/1/2147483647"}) {
            const RunResult run = runProgram({command, file, key});
            EXPECT_EQ(run.exitCode, 1) << command << key;
            EXPECT_EQ(run.err, std::string("z7cf: There is no voucher ") + key + "\n");
            EXPECT_EQ(run.out, "");
        }
    }
}

TEST_F(ApplicationTest, ADatabaseThatIsNoneIsExitCodeThree) {
    const std::string text =
        scratch.write("notes.db", "This is a text and no database, long enough to have a header.").string();
    const std::string folder = scratch.path().string();
    const std::string missing = (scratch.path() / "missing.db").string();
    const std::string empty = scratch.write("empty.db", "").string();
    for (const std::string& file : {text, folder, missing, empty}) {
        for (const std::vector<std::string>& arguments :
             std::vector<std::vector<std::string>>{{"vouchers", file, "--year", "2024"},
                                                   {"rows", file, "2024/1/1/1"},
                                                   {"check", file, "2024/1/1/1"},
                                                   {"save", file, "2024/1/1/1"},
                                                   {"allot", file, "--year", "2024"}}) {
            const RunResult run = runProgram(arguments);
            EXPECT_EQ(run.exitCode, 3) << testing::PrintToString(arguments);
            EXPECT_THAT(run.err, StartsWith("z7cf: "));
            EXPECT_THAT(run.err, HasSubstr(file));
            EXPECT_EQ(run.out, "");
        }
    }
    EXPECT_FALSE(std::filesystem::exists(missing)) << "looking for a database makes none";
}

TEST_F(ApplicationTest, AVoucherThatAnotherSessionHoldsIsRefusedAndTheRunGoesOn) {
    const std::string file = sample();
    sqlite::Connection other;
    other.Open(sqlite::connectionString(file, 2024));
    const std::string before = contentOf(other, "gl_cashtable");
    ASSERT_THAT(before, HasSubstr("\n")) << "some rows are there";
    other.BeginTrans();
    const std::string connect = "driver=sqlite;timeout=1;database=" + file;
    const RunResult run = runProgram({"allot", "--connect", connect, "--year", "2024", "--period", "1"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.out, HasSubstr("Another session is using the voucher, so nothing was changed; try again later."));
    EXPECT_THAT(run.out, testing::ContainsRegex("refused +25 +0\n"));
    const RunResult save = runProgram({"save", "--connect", connect, "2024/1/1/1", "--json"});
    EXPECT_EQ(save.exitCode, 1);
    EXPECT_THAT(save.out, HasSubstr("\"findings\":[{\"kind\":\"held-elsewhere\"}]"));
    other.RollbackTrans();
    EXPECT_EQ(contentOf(other, "gl_cashtable"), before);
}

TEST_F(ApplicationTest, ASignalStopsAnAllotmentBetweenVouchers) {
    const std::string file = sample();
    for (const auto& [number, expected] : {std::pair{SIGINT, 130}, {SIGTERM, 143}}) {
        sigset_t set;
        sigset_t former;
        sigemptyset(&set);
        sigaddset(&set, number);
        ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &set, &former), 0);
        ASSERT_EQ(raise(number), 0); // stays pending until the allocation checks for it
        const RunResult run = runProgram({"allot", file, "--year", "2024"});
        ASSERT_EQ(pthread_sigmask(SIG_SETMASK, &former, nullptr), 0);
        EXPECT_EQ(run.exitCode, expected);
        EXPECT_THAT(run.err, HasSubstr("Interrupted after 0 of 304 vouchers; the others are unchanged."));
        EXPECT_THAT(run.out, HasSubstr("Total"));
    }
}

TEST_F(ApplicationTest, ASignalDuringInitLeavesNoDatabase) {
    sigset_t set;
    sigset_t former;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &set, &former), 0);
    ASSERT_EQ(raise(SIGTERM), 0);
    const RunResult run = runProgram({"init", (scratch.path() / "new.db").string(), "--sample"});
    ASSERT_EQ(pthread_sigmask(SIG_SETMASK, &former, nullptr), 0);
    EXPECT_EQ(run.exitCode, 143);
    EXPECT_TRUE(std::filesystem::is_empty(scratch.path()));
}

TEST_F(ApplicationTest, AReaderThatGoesAwayEndsTheProgramWithoutAWord) {
    const std::string file = sample();
    FailingBuffer pipe(100, EPIPE);
    const RunResult run = runInto(pipe, {"vouchers", file, "--year", "2024", "--json"});
    EXPECT_EQ(run.exitCode, 141);
    EXPECT_EQ(run.err, "");
}

TEST_F(ApplicationTest, OutputThatCannotBeWrittenIsExitCodeThree) {
    const std::string file = sample();
    FailingBuffer disk(100, ENOSPC);
    const RunResult run = runInto(disk, {"allot", file, "--year", "2024", "--json"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("The output cannot be written: No space left on device"));
    FailingBuffer none(0, ENOSPC);
    EXPECT_EQ(runInto(none, {"--help"}).exitCode, 3);
}

TEST_F(ApplicationTest, AMissingAccountOptionIsReportedOnceAndCounted) {
    const test::ScratchFolder tables;
    for (const char* name : {"code", "dsign", "fitemss98", "gl_accvouch", "ua_period", "GL_CashItemDataSource"}) {
        std::filesystem::copy(std::filesystem::path(Z7_SOURCE_DIR) / "src/host/sample" / (std::string(name) + ".csv"),
                              tables.path() / (std::string(name) + ".csv"));
    }
    const std::string file = (scratch.path() / "noOptions.db").string();
    ASSERT_EQ(runProgram({"init", file, "--from", tables.path().string()}).exitCode, 0);
    const RunResult run = runProgram({"allot", file, "--year", "2024", "--period", "1"});
    const std::string notice = "GetAccinfo Error!: GL--bCashCode";
    EXPECT_THAT(run.err, StartsWith(notice + "\n"));
    EXPECT_THAT(run.err, HasSubstr(notice + " (26 times)\n")) << "25 vouchers and the beginning of the run";
    EXPECT_EQ(runProgram({"allot", file, "--year", "2024", "--period", "1", "--quiet"}).err, "");
}

TEST_F(ApplicationTest, SettingsAndCommandLineDecideTheLanguageInThatOrder) {
    const std::string file = sample();
    const EnvironmentGuard chinese("LC_ALL", "zh_CN.UTF-8");
    const std::vector<std::string> command{"check", file, "2024/1/3/3"};
    const auto with = [&command](std::vector<std::string> more) {
        std::vector<std::string> all = command;
        all.insert(all.end(), more.begin(), more.end());
        return runProgram(all).out;
    };
    const std::string settings = scratch.write("s.toml", "language = \"en\"\n").string();
    EXPECT_EQ(with({}), "凭证中没有现金流量科目，不需要现金流量行。\n");
    EXPECT_EQ(with({"--settings", settings}), "The voucher has no cash-flow account and needs no rows.\n");
    EXPECT_EQ(with({"--settings", settings, "--lang", "zh"}), "凭证中没有现金流量科目，不需要现金流量行。\n");
    const EnvironmentGuard config("XDG_CONFIG_HOME", scratch.path().c_str());
    scratch.write("z7cf/settings.toml", "language = \"en\"\n");
    EXPECT_EQ(with({}), "The voucher has no cash-flow account and needs no rows.\n") << "the user's own file";
}

TEST_F(ApplicationTest, LeavesTheContextOfTheThreadEmpty) {
    const std::string file = sample();
    static_cast<void>(runProgram({"save", file, "2024/1/1/2"}));
    EXPECT_EQ(modPublic::GetLogin(), nullptr);
    EXPECT_EQ(modPublic::context().yearOverride, 0);
    EXPECT_FALSE(modPublic::context().createMessageBox);
}

} // namespace
} // namespace z7::cashflow::host
