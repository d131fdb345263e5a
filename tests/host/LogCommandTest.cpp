// The log of changes and undo, as the program shows them.

#include "RunProgram.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ChildProcess.h"
#include "doubles/ScratchFolder.h"
#include "workbench/changes/RunLog.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <iterator>

namespace z7::cashflow::host {
namespace {

using Json = nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using workbench::RowImage;

/// The sample company with one month allocated by a known user at a known time.
class LogCommandTest : public testing::Test {
protected:
    LogCommandTest() { EXPECT_EQ(runProgram({"init", database.string(), "--sample"}).exitCode, 0); }

    RunResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin() + 1, database.string());
        return runProgram(arguments, {}, [] { return Date::fromCivil(2024, 8, 1, 9, 30, 5); });
    }
    [[nodiscard]] std::unique_ptr<sqlite::Connection> open() const {
        auto connection = std::make_unique<sqlite::Connection>();
        connection->Open(sqlite::connectionString(database, 2024));
        return connection;
    }
    void sql(const std::string& statement) const { open()->Execute(statement); }
    /// Leaves the account as an older version made it.
    void dropLog() const {
        sql("drop table z7_run_row");
        sql("drop table z7_run");
    }
    [[nodiscard]] std::vector<RowImage> allRows() const {
        return workbench::readRowImages(*open(), "select " + workbench::rowColumnList() + " from gl_cashtable");
    }
    [[nodiscard]] std::vector<Json> log(const std::vector<std::string>& words = {}) const {
        std::vector<std::string> arguments{"log", "--json"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        const RunResult result = run(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        std::vector<Json> lines;
        for (const std::string& line : result.lines()) {
            lines.push_back(Json::parse(line));
        }
        return lines;
    }
    /// A voucher for which the month's run stored rows.
    [[nodiscard]] std::string firstVoucher(int number) const { return log({std::to_string(number)}).at(0)["voucher"]; }

    static std::string textOf(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    test::ScratchFolder scratch;
    std::filesystem::path database = scratch.path() / "company.db";
};

TEST_F(LogCommandTest, ARunIsNotedWithUserTimeCommandAndVouchers) {
    const RunResult allotted = run({"allot", "--year", "2024", "--period", "7"});
    EXPECT_THAT(allotted.err, HasSubstr("Logged as run 1."));
    const auto runs = log();
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0]["run"], 1);
    EXPECT_EQ(runs[0]["time"], "2024-08-01 09:30:05");
    EXPECT_EQ(runs[0]["user"], "demo");
    EXPECT_EQ(runs[0]["command"], "allot --year 2024 --period 7");
    EXPECT_EQ(runs[0]["undoes"], nullptr);
    EXPECT_EQ(log({"1"}).size(), runs[0]["vouchers"]);
    const RunResult people = run({"log", "--lang", "zh-CN"});
    EXPECT_THAT(people.out, HasSubstr("批次"));
    EXPECT_THAT(people.out, HasSubstr("allot --year 2024 --period 7"));
}

TEST_F(LogCommandTest, ARunThatChangesNothingLeavesNoTraceAndNoNewIdentities) {
    EXPECT_EQ(run({"allot", "--year", "2024", "--period", "7"}).exitCode, 1);
    const auto before = allRows();
    EXPECT_THAT(run({"allot", "--year", "2024", "--period", "7"}).err, Not(HasSubstr("Logged as run")));
    EXPECT_EQ(log().size(), 1U);
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
    EXPECT_EQ(run({"allot", "--year", "2024", "--period", "8", "--dry-run"}).exitCode, 0);
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(LogCommandTest, UndoingARunRestoresEveryColumnAndIsARunItself) {
    const auto before = allRows();
    run({"allot", "--year", "2024", "--period", "7"});
    const auto afterFirst = allRows();
    run({"allot", "--year", "2024", "--period", "8"});
    const auto afterSecond = allRows();
    const RunResult undone = run({"undo", "2"});
    EXPECT_EQ(undone.exitCode, 0) << undone.out;
    EXPECT_THAT(undone.err, HasSubstr("Logged as run 3."));
    EXPECT_TRUE(workbench::sameRows(afterFirst, allRows(), true));
    EXPECT_EQ(log().front()["undoes"], 2);
    EXPECT_EQ(log().at(1)["undoneBy"], 3);
    EXPECT_EQ(run({"undo", "3"}).exitCode, 0) << "an undo is undone like any other run";
    EXPECT_TRUE(workbench::sameRows(afterSecond, allRows(), true));
    EXPECT_EQ(run({"undo", "1"}).exitCode, 0);
    EXPECT_EQ(run({"undo", "4"}).exitCode, 0);
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
}

TEST_F(LogCommandTest, AVoucherThatHasChangedSinceTheRunIsRefusedAndNamed) {
    run({"allot", "--year", "2024", "--period", "7"});
    const std::string key = firstVoucher(1);
    const std::string number = key.substr(key.rfind('/') + 1);
    sql("update gl_cashtable set cDefine1=N'later' where iYear=2024 and iPeriod=7 and iNo_id=" + number);
    const auto before = allRows();
    const RunResult refused = run({"undo", "1", key});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.out, HasSubstr("2024/7/收/1  10024  The rows are no longer those that run 1 stored"));
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
    const RunResult rest = run({"undo", "1", "--json"});
    EXPECT_EQ(rest.exitCode, 1);
    EXPECT_EQ(Json::parse(rest.lines().front())["error"]["findings"][0]["kind"], "changed-since");
    EXPECT_LT(allRows().size(), before.size());
}

TEST_F(LogCommandTest, OnlyTheNamedVouchersAreRestored) {
    run({"allot", "--year", "2024", "--period", "7"});
    const auto before = allRows();
    const std::string key = firstVoucher(1);
    EXPECT_EQ(run({"undo", "1", key}).exitCode, 0);
    EXPECT_LT(allRows().size(), before.size());
    EXPECT_EQ(log({"2"}).size(), 1U);
    EXPECT_THAT(run({"undo", "1", "2024/1/1/32000"}).err, HasSubstr("Run 1 did not change voucher 2024/1/收/32000."));
}

TEST_F(LogCommandTest, ADryRunShowsWhatWouldBeRestored) {
    run({"allot", "--year", "2024", "--period", "7"});
    const auto before = allRows();
    const RunResult shown = run({"undo", "1", firstVoucher(1), "--dry-run"});
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_THAT(shown.out, HasSubstr("removed"));
    EXPECT_THAT(shown.out, HasSubstr("Dry run: everything was rolled back"));
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
}

TEST_F(LogCommandTest, ARunThatIsNotInTheLogAndAWordThatIsNotARunAreRefused) {
    EXPECT_THAT(run({"log", "7"}).err, HasSubstr("There is no run 7 in the log."));
    EXPECT_EQ(run({"undo", "7"}).exitCode, 1);
    EXPECT_THAT(run({"undo", "0"}).err, HasSubstr("\"0\" is not the number of a run"));
    EXPECT_EQ(run({"log", "99999999999"}).exitCode, 2);
    EXPECT_EQ(run({"undo"}).exitCode, 2);
    EXPECT_EQ(run({"undo", "1", "x"}).exitCode, 2);
    EXPECT_THAT(run({"log"}).err, HasSubstr("The log contains no runs."));
}

TEST_F(LogCommandTest, AnAccountWithoutTheLogWorksAndSaysSo) {
    dropLog();
    const RunResult allotted = run({"allot", "--year", "2024", "--period", "7"});
    EXPECT_EQ(allotted.exitCode, 1);
    EXPECT_THAT(
        allotted.err,
        HasSubstr("This account has no log of changes, so this run cannot be undone; z7cf log FILE --start adds it."));
    EXPECT_FALSE(allRows().empty());
    EXPECT_THAT(run({"log"}).err, HasSubstr("This account has no log of changes, because"));
    EXPECT_EQ(run({"undo", "1"}).exitCode, 1);
}

TEST_F(LogCommandTest, AnAccountWithoutTheLogGetsItOnce) {
    dropLog();
    run({"allot", "--year", "2024", "--period", "6"});
    const auto before = allRows();
    const RunResult added = run({"log", "--start"});
    EXPECT_EQ(added.exitCode, 0) << added.err;
    EXPECT_EQ(added.out, "The log of changes was added: runs are logged from now on and can be undone.\n");
    EXPECT_THAT(run({"log"}).err, HasSubstr("The log contains no runs."));
    run({"allot", "--year", "2024", "--period", "7"});
    EXPECT_EQ(run({"log", "--start", "--lang", "zh-CN"}).out, "此账套已有变动日志，没有改动。\n");
    EXPECT_EQ(log().size(), 1U) << "what it holds stays";
    EXPECT_EQ(run({"undo", "1"}).exitCode, 0);
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
    EXPECT_EQ(run({"log", "--start", "--json"}).out, "{\"form\":1,\"log\":\"present\"}\n");
    EXPECT_EQ(run({"log", "1", "--start"}).exitCode, 2);
    dropLog();
    EXPECT_EQ(run({"log", "--start", "--json"}).out, "{\"form\":1,\"log\":\"added\"}\n");
}

TEST_F(LogCommandTest, TheLogIsNotAddedWithoutTheRightToWrite) {
    dropLog();
    for (const auto& entry : std::filesystem::directory_iterator(scratch.path())) {
        std::filesystem::permissions(entry.path(), std::filesystem::perms(0444));
    }
    std::filesystem::permissions(scratch.path(), std::filesystem::perms(0555));
    const std::string answer = test::withoutRights([this] {
        const RunResult refused = run({"log", "--start"});
        return std::to_string(refused.exitCode) + refused.out + refused.err;
    });
    std::filesystem::permissions(scratch.path(), std::filesystem::perms(0755));
    EXPECT_THAT(answer, testing::StartsWith("3z7cf: "));
    EXPECT_THAT(answer, HasSubstr("can only be read"));
    EXPECT_FALSE(workbench::hasLog(*open()));
}

TEST_F(LogCommandTest, TheLogIsWrittenAsCsvToAFile) {
    run({"allot", "--year", "2024", "--period", "7"});
    const std::string file = (scratch.path() / "log.csv").string();
    EXPECT_EQ(run({"log", "--csv", "-o", file}).exitCode, 0);
    EXPECT_THAT(textOf(file), HasSubstr("1,2024-08-01 09:30:05,demo,allot --year 2024 --period 7,"));
    EXPECT_THAT(run({"log", "1", "--csv"}).out, HasSubstr("Voucher,Change,Line,Account,Debit,Credit,Item,Was"));
    EXPECT_EQ(run({"log", "--output", file}).exitCode, 2) << "nothing is overwritten";
}

} // namespace
} // namespace z7::cashflow::host
