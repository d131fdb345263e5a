// Allocating with several parallel sessions.

#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/odbc/Connection.h"
#include "adapters/odbc/SqliteDialect.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ChildProcess.h"
#include "doubles/ScratchFolder.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The statement that locks a voucher of March, which the sessions reach in the middle of the year.
const std::string lockInMarch = "update gl_accvouch set cdigest=cdigest where iyear=2024 and iperiod=3 and isignseq=1 "
                                "and ino_id=2";

class AllotJobsTest : public testing::Test {
protected:
    AllotJobsTest() { EXPECT_EQ(runProgram({"init", pristine_.string(), "--sample", "--quiet"}).exitCode, 0); }

    /// A copy of the sample company in files of their own.
    [[nodiscard]] std::filesystem::path copy(const std::string& name) const {
        std::filesystem::path file = scratch_.path() / (name + ".db");
        const sqlite::DatabaseFiles from = sqlite::databaseFiles(pristine_);
        const sqlite::DatabaseFiles to = sqlite::databaseFiles(file);
        std::filesystem::copy_file(from.account, to.account);
        std::filesystem::copy_file(from.system, to.system);
        return file;
    }

    [[nodiscard]] static RunResult allot(const std::filesystem::path& file, std::vector<std::string> more) {
        more.insert(more.begin(), {"allot", file.string(), "--year", "2024"});
        return runProgram(more);
    }

    [[nodiscard]] static std::vector<std::string> texts(const std::filesystem::path& file, const std::string& query) {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(file));
        const auto records = connection.Execute(query);
        std::vector<std::string> list;
        for (; !records->atEnd(); records->MoveNext()) {
            std::string text;
            for (int i = 0; i < records->Fields().Count(); ++i) {
                if (records->Fields().Name(i) != "RowGuid") {
                    const Variant value = records->Fields().Item(i);
                    text += (value.isNull() ? "(null)" : toText(value)) + "|";
                }
            }
            list.push_back(text);
        }
        return list;
    }
    /// The stored rows without their identities.
    [[nodiscard]] static std::vector<std::string> rows(const std::filesystem::path& file) {
        return texts(file, "select * from gl_cashtable order by iYear,iPeriod,iSignSeq,iNo_id,inid,cCashItem,md,mc");
    }
    /// The vouchers whose rows were stored by the runs of the log.
    [[nodiscard]] static std::vector<std::string> loggedVouchers(const std::filesystem::path& file) {
        return texts(file, "select distinct iYear,iPeriod,iSignSeq,iNo_id from z7_run_row where bAfter=1 "
                           "order by iYear,iPeriod,iSignSeq,iNo_id");
    }
    /// The vouchers that are reported as stored.
    [[nodiscard]] static std::vector<std::string> storedVouchers(const RunResult& run) {
        std::vector<std::string> list;
        for (const std::string& line : run.lines()) {
            const auto json = nlohmann::json::parse(line);
            if (json.contains("outcome") && json["outcome"] == "stored") {
                std::string key = json.at("voucher").get<std::string>() + "|";
                std::replace(key.begin(), key.end(), '/', '|');
                list.push_back(key);
            }
        }
        return list;
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    test::ScratchFolder scratch_;
    std::filesystem::path pristine_ = scratch_.path() / "pristine.db";
};

TEST_F(AllotJobsTest, GiveTheOutcomesAndTheirOrderOfOneSession) {
    const auto alone = copy("alone");
    const auto beside = copy("beside");
    const RunResult expected = allot(alone, {"--json", "--jobs", "1"});
    const RunResult run = allot(beside, {"--json", "--jobs", "5"});
    EXPECT_EQ(run.out, expected.out);
    EXPECT_EQ(run.err, expected.err);
    EXPECT_EQ(run.exitCode, expected.exitCode);
    EXPECT_EQ(rows(beside), rows(alone));
    const std::string changed = "select iRun,bAfter,iPeriod,iSignSeq,iNo_id,inid,cCashItem,md,mc from z7_run_row order "
                                "by iRun,bAfter,iPeriod,iSignSeq,iNo_id,inid,cCashItem,md,mc";
    EXPECT_EQ(texts(beside, changed), texts(alone, changed)) << "all of them work in one run of the log";
    EXPECT_EQ(texts(beside, "select iRun,cCommand from z7_run"), texts(alone, "select iRun,cCommand from z7_run"));
}

TEST_F(AllotJobsTest, ShowTheSameInADryRunAndKeepNothing) {
    const auto file = copy("dry");
    const RunResult expected = allot(file, {"--dry-run", "--jobs", "1"});
    const RunResult run = allot(file, {"--dry-run", "--jobs", "3"});
    EXPECT_EQ(run.out, expected.out);
    EXPECT_EQ(run.exitCode, expected.exitCode);
    EXPECT_THAT(rows(file), testing::ElementsAreArray(rows(pristine_)));
    EXPECT_THAT(texts(file, "select iRun from z7_run"), IsEmpty());
}

TEST_F(AllotJobsTest, LeaveNoTraceInTheLogWhereNothingChanges) {
    const auto file = copy("twice");
    ASSERT_EQ(allot(file, {"--jobs", "2"}).exitCode, 1);
    EXPECT_THAT(texts(file, "select iRun from z7_run"), ElementsAre("1|"));
    const RunResult again = allot(file, {"--jobs", "2"});
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_THAT(texts(file, "select iRun from z7_run"), ElementsAre("1|"));
    EXPECT_THAT(again.err, testing::Not(HasSubstr("run")));
}

TEST_F(AllotJobsTest, AreBetween1And64) {
    const auto file = copy("bounds");
    for (const char* jobs : {"0", "65", "-1", "1.5", "many", " 2", "18446744073709551617"}) {
        const RunResult run = allot(file, {"--jobs", jobs});
        EXPECT_EQ(run.exitCode, 2) << jobs;
        EXPECT_THAT(run.err, HasSubstr("--jobs takes a number of sessions from 1 to 64, not \"" + std::string(jobs)));
        EXPECT_EQ(run.out, "");
    }
    EXPECT_EQ(allot(file, {"--period", "1", "--jobs", "64"}).exitCode, 0) << "more than there are vouchers";
}

TEST_F(AllotJobsTest, StoreNoVoucherTwiceWhileAnotherProgramAllotsTheSameYear) {
    const auto alone = copy("alone");
    const auto shared = copy("shared");
    ASSERT_EQ(allot(alone, {"--jobs", "1"}).exitCode, 1);
    const std::string connect = "driver=sqlite;database=" + shared.string() + ";timeout=600000";
    const auto program = [&connect] {
        return runProgram({"allot", "--connect", connect, "--year", "2024", "--jobs", "3"}).exitCode;
    };
    test::ChildProcess first(program);
    test::ChildProcess second(program);
    EXPECT_EQ(first.wait(), 1) << "ten vouchers are refused";
    EXPECT_EQ(second.wait(), 1);
    EXPECT_EQ(rows(shared), rows(alone));
}

#ifdef Z7_SESSION_FUNCTIONS

/// The same company as on a server: through SQLite's ODBC driver, with sessions that a test can disturb.
class AllotJobsOnAServerTest : public AllotJobsTest {
protected:
    /// Runs allot for the year; the observer is called for each statement, on any thread.
    [[nodiscard]] static RunResult allotOver(const std::filesystem::path& file, std::vector<std::string> more,
                                             const std::function<void(const std::string&)>& observer = {}) {
        more.insert(more.begin(),
                    {"allot", "--year", "2024", "--connect",
                     "Driver=SQLite3;timeout=600000;Database=" + file.string() + ";LoadExt=" Z7_SESSION_FUNCTIONS});
        return runProgram(more, [observer] {
            auto connection =
                std::make_unique<odbc::Connection>([] { return std::make_unique<odbc::SqliteDialect>(); });
            if (observer) {
                connection->onStatement([observer](int, const std::string& text) { observer(text); });
            }
            return connection;
        });
    }
};

TEST_F(AllotJobsOnAServerTest, AreFourWhereNothingIsSaid) {
    const auto file = copy("server");
    std::atomic<int> sessions = 0;
    const RunResult run = allotOver(file, {"--period", "1"}, [&sessions](const std::string& text) {
        sessions += text.find("N'bAutoDisplay'") == std::string::npos ? 0 : 1; // asked once by each
    });
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(sessions, 5) << "the command's own and four that save";
}

TEST_F(AllotJobsOnAServerTest, GiveTheOutcomesAndTheirOrderOfOneSession) {
    const auto alone = copy("alone");
    const auto beside = copy("beside");
    const RunResult expected = allotOver(alone, {"--json", "--jobs", "1"});
    const RunResult run = allotOver(beside, {"--json"});
    EXPECT_EQ(run.out, expected.out);
    EXPECT_EQ(run.err, expected.err);
    EXPECT_EQ(run.exitCode, expected.exitCode);
    EXPECT_EQ(rows(beside), rows(alone));
    EXPECT_THAT(texts(beside, "select iRun from z7_run"), ElementsAre("1|"));
}

TEST_F(AllotJobsOnAServerTest, TryAVoucherAgainThatTheServerGaveUpOnce) {
    const auto file = copy("victim");
    std::atomic<int> locks = 0;
    const RunResult run = allotOver(file, {"--period", "3", "--json"}, [&locks](const std::string& text) {
        if (text.starts_with(lockInMarch) && ++locks == 1) {
            throw Error(1205, "ODBC", "chosen as the victim of a deadlock", "40001");
        }
    });
    EXPECT_EQ(locks, 2);
    EXPECT_THAT(run.out, HasSubstr(R"({"form":1,"voucher":"2024/3/1/2","sign":"收","outcome":"stored")"));
    EXPECT_THAT(run.out, testing::Not(HasSubstr("held-elsewhere")));
}

TEST_F(AllotJobsOnAServerTest, AllEndWhereOneFails) {
    const auto file = copy("failing");
    const RunResult run = allotOver(file, {"--json", "--jobs", "3"}, [](const std::string& text) {
        if (text.starts_with(lockInMarch)) {
            throw Error(10054, "ODBC", "the line is cut", "08S01");
        }
    });
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("Stopped at voucher 2024/3/"));
    EXPECT_THAT(run.err, HasSubstr(std::to_string(run.lines().size() - 1) + " of 304 vouchers are done"));
    const auto last = nlohmann::json::parse(run.lines().back());
    EXPECT_EQ(last.size(), 2U) << "after the vouchers, the failure of the command: " << run.lines().back();
    EXPECT_EQ(last.at("error").at("number"), 10054);
    EXPECT_EQ(last.at("error").at("code"), "database-failed");
    EXPECT_EQ(last.at("error").at("exitCode"), 3);
    EXPECT_THAT(run.out, testing::Not(HasSubstr("2024/3/1/2\"")));
    EXPECT_LT(run.lines().size(), 150U) << "nobody goes on to the end of the year";
    EXPECT_EQ(storedVouchers(run), loggedVouchers(file)) << "what was stored is reported";
}

TEST_F(AllotJobsOnAServerTest, AllEndWhereASessionDoesNotOpen) {
    const auto file = copy("closed");
    std::atomic<int> sessions = 0;
    const RunResult run = allotOver(file, {"--json", "--jobs", "4"}, [&sessions](const std::string& text) {
        if (text.find("N'bAutoDisplay'") != std::string::npos && ++sessions == 3) {
            throw Error(17809, "ODBC", "too many connections", "08004");
        }
    });
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("too many connections"));
    EXPECT_EQ(storedVouchers(run), loggedVouchers(file));
    EXPECT_EQ(texts(file, "select iRun from z7_run").size(), loggedVouchers(file).empty() ? 0U : 1U);
}

TEST_F(AllotJobsOnAServerTest, AllEndBetweenVouchersAtASignal) {
    const auto file = copy("signal");
    const RunResult run = allotOver(file, {"--json", "--jobs", "3"}, [](const std::string& text) {
        if (text.starts_with(lockInMarch)) {
            kill(getpid(), SIGTERM);
        }
    });
    EXPECT_EQ(run.exitCode, 143);
    EXPECT_THAT(run.err, HasSubstr("Interrupted after " + std::to_string(run.lines().size()) + " of 304 vouchers"));
    EXPECT_LT(run.lines().size(), 304U);
    EXPECT_THAT(run.out, HasSubstr("2024/3/1/2\"")) << "the voucher in hand is finished";
    EXPECT_EQ(storedVouchers(run), loggedVouchers(file));
}

#endif

} // namespace
} // namespace z7::cashflow::host
