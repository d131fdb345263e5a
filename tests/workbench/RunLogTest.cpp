// The log of a run, row by row, on the small company.

#include "workbench/changes/RunLog.h"

#include "outside/CompanyTest.h"
#include "workbench/changes/undo.h"
#include "workbench/vouchers/Allotment.h"

#include <gmock/gmock.h>

namespace z7::cashflow::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RunLogTest : public test::CompanyTest {
protected:
    RunLogTest() { modPublic::SetIYear(2013); }

    RunNote note(const std::string& command, std::optional<std::int32_t> undoes = {}) const {
        return {"li", command, [] { return Date::fromCivil(2013, 2, 1, 8, 0, 0); }, undoes};
    }
    std::vector<RowImage> rows() {
        return readRowImages(connection, "select " + rowColumnList() + " from gl_cashtable");
    }
    VoucherResult allot(Connection& session, RunLog& log, const VoucherKey& key) {
        return Allotment(session, data, gl, true, &log).allot(key);
    }

    /// Repeats a change while its first, second, third ... statement fails, until it succeeds, and checks each
    /// time that nothing has changed. Returns the number of statements, including begin and commit.
    template <class Change> int failEverywhere(Change&& change) {
        const auto before = rows();
        const std::size_t runs = readRuns(connection).size();
        for (int failAt = 1; failAt < 500; ++failAt) {
            int count = 0;
            bool failed = false;
            company.connection().onRewrittenStatement([&](int, const std::string&) {
                if (!failed && ++count == failAt) {
                    failed = true;
                    throw Error(13, "SQLite", "database or disk is full", "HY000");
                }
            });
            bool done = false;
            try {
                done = change();
            } catch (const Error& error) {
                EXPECT_EQ(error.number(), 13);
            }
            company.connection().onRewrittenStatement({});
            if (done) {
                EXPECT_FALSE(failed) << "statement " << failAt << " failed unnoticed";
                return count;
            }
            EXPECT_TRUE(sameRows(rows(), before, true)) << failAt;
            EXPECT_EQ(readRuns(connection).size(), runs) << failAt;
        }
        ADD_FAILURE() << "it never comes to an end";
        return 0;
    }

    DataProvider data;
    const VoucherKey receipt{2013, 1, 1, 6};
    const VoucherKey other{2013, 1, 2, 5};
};

TEST_F(RunLogTest, TheColumnsAreThoseOfTheTable) {
    const auto records = connection.Execute("select * from gl_cashtable");
    ASSERT_EQ(static_cast<std::size_t>(records->Fields().Count()), rowColumns.size());
    for (std::size_t i = 0; i < rowColumns.size(); ++i) {
        EXPECT_EQ(records->Fields().Name(static_cast<int>(i)), rowColumns.at(i));
    }
    const auto logged = connection.Execute("select * from z7_run_row");
    ASSERT_EQ(static_cast<std::size_t>(logged->Fields().Count()), rowColumns.size() + 2);
    for (std::size_t i = 0; i < rowColumns.size(); ++i) {
        EXPECT_EQ(logged->Fields().Name(static_cast<int>(i) + 2), rowColumns.at(i));
    }
}

TEST_F(RunLogTest, HoldsTheRowsBeforeAndAfterEachChange) {
    storeRow("02");
    company.execute("update gl_cashtable set cDefine16=0.1, md_f=1234567.8912, cDefine4='2013-01-06 10:11:12'");
    const auto before = rows();
    company.execute("update gl_accvouch set cDefine1=N'new' where ino_id=6");
    RunLog log(connection, note("save"));
    EXPECT_EQ(allot(connection, log, receipt).outcome, Outcome::stored);
    EXPECT_EQ(log.number(), 1);
    const LoggedVoucher logged = readLogged(connection, 1, receipt);
    EXPECT_TRUE(sameRows(logged.before, before, true));
    EXPECT_TRUE(sameRows(logged.after, rows(), true));
    const auto runs = readRuns(connection);
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].user, "li");
    EXPECT_EQ(runs[0].command, "save");
    EXPECT_EQ(dateText(runs[0].time), "2013-02-01 08:00:00");
    EXPECT_EQ(runs[0].vouchers, 1);
    RunLog undo(connection, note("undo 1", 1));
    EXPECT_FALSE(undoVoucher(connection, undo, 1, receipt, true).refusal);
    EXPECT_TRUE(sameRows(rows(), before, true));
}

TEST_F(RunLogTest, TheRunGetsItsNumberWithTheFirstChangeAndKeepsIt) {
    RunLog first(connection, note("a"));
    RunLog second(connection, note("b"));
    EXPECT_EQ(first.number(), std::nullopt);
    static_cast<void>(allot(connection, second, receipt));
    static_cast<void>(allot(connection, first, other));
    EXPECT_EQ(second.number(), 1);
    EXPECT_EQ(first.number(), 2);
    EXPECT_EQ(allot(connection, first, receipt).count(RowChange::Kind::kept), 1);
    EXPECT_THAT(vouchersOfRun(connection, 2), ElementsAre(other));
}

TEST_F(RunLogTest, SeveralSessionsWorkInAReservedRun) {
    RunLog run(connection, note("allot"));
    const std::int32_t number = run.reserve();
    EXPECT_THAT(readRuns(connection), IsEmpty()) << "nobody sees a run without rows";
    RunLog first(connection, number);
    RunLog second(connection, number);
    EXPECT_FALSE(allot(connection, first, receipt).refusal);
    EXPECT_FALSE(allot(connection, second, other).refusal);
    run.settle(true);
    EXPECT_EQ(run.number(), number);
    EXPECT_EQ(vouchersOfRun(connection, number).size(), 2U);
    EXPECT_EQ(readRuns(connection).size(), 1U);
}

TEST_F(RunLogTest, AReservedNumberOutlivesAVoucherThatIsRolledBack) {
    RunLog run(connection, note("allot"));
    const std::int32_t number = run.reserve();
    RunLog log(connection, number);
    log.ended(false);
    EXPECT_FALSE(allot(connection, log, receipt).refusal);
    run.settle(true);
    EXPECT_THAT(vouchersOfRun(connection, number), ElementsAre(receipt));
}

TEST_F(RunLogTest, AReservedRunThatChangedNothingGoes) {
    RunLog run(connection, note("allot"));
    static_cast<void>(run.reserve());
    run.settle(false);
    EXPECT_EQ(run.number(), std::nullopt);
    EXPECT_TRUE(connection.Execute("select iRun from z7_run")->atEnd());
}

TEST_F(RunLogTest, AReservedRunStaysWhereRowsWereNotedAfterAll) {
    RunLog run(connection, note("allot"));
    const std::int32_t number = run.reserve();
    RunLog log(connection, number);
    EXPECT_FALSE(allot(connection, log, receipt).refusal);
    run.settle(false); // the answer to a commit got lost
    EXPECT_THAT(vouchersOfRun(connection, number), ElementsAre(receipt));
    EXPECT_EQ(readRuns(connection).size(), 1U);
}

TEST_F(RunLogTest, WithoutANumberNothingIsNoted) {
    RunLog log(connection, std::nullopt);
    EXPECT_FALSE(log.available());
    EXPECT_FALSE(allot(connection, log, receipt).refusal);
    EXPECT_THAT(readRuns(connection), IsEmpty());
}

TEST_F(RunLogTest, QuotesInUserAndCommandAreTextAndLongOnesAreCut) {
    RunNote hostile = note("x'); delete from gl_cashtable --" + std::string(400, 'y'));
    hostile.user = "o'neill" + std::string(100, 'z');
    RunLog log(connection, hostile);
    static_cast<void>(allot(connection, log, receipt));
    const auto run = findRun(connection, 1);
    ASSERT_TRUE(run);
    EXPECT_EQ(run->user.size(), 60U);
    EXPECT_EQ(run->command.size(), 255U);
    EXPECT_EQ(rows().size(), 1U);
}

TEST_F(RunLogTest, AFailureAtAnyStatementOfASaveLeavesLogAndRowsConsistent) {
    storeRow("02");
    company.execute("update gl_accvouch set cDefine1=N'new' where ino_id=6");
    const auto before = rows();
    const int statements = failEverywhere([&] {
        RunLog log(connection, note("save"));
        const bool stored = !allot(connection, log, receipt).refusal;
        EXPECT_EQ(log.number().has_value(), stored);
        return stored;
    });
    EXPECT_GT(statements, 20);
    EXPECT_EQ(readRuns(connection).front().command, "save");
    EXPECT_FALSE(sameRows(rows(), before, false));
}

TEST_F(RunLogTest, AFailureAtAnyStatementOfAnUndoLeavesLogAndRowsConsistent) {
    storeRow("02");
    company.execute("update gl_accvouch set cDefine1=N'new' where ino_id=6");
    const auto before = rows();
    RunLog log(connection, note("save"));
    ASSERT_FALSE(allot(connection, log, receipt).refusal);
    failEverywhere([&] {
        RunLog undo(connection, note("undo 1", 1));
        return !undoVoucher(connection, undo, 1, receipt, true).refusal;
    });
    EXPECT_TRUE(sameRows(rows(), before, true));
    EXPECT_EQ(readRuns(connection).size(), 2U);
}

TEST_F(RunLogTest, RowsArePairedByLineAccountAndSide) {
    storeRow("02");
    const auto before = rows();
    company.execute("update gl_cashtable set cCashItem=N'01', RowGuid=N'other'");
    auto changes = compareRows(before, rows());
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].kind, RowChange::Kind::changed);
    ASSERT_EQ(changes[0].columns.size(), 1U);
    EXPECT_EQ(rowColumns.at(changes[0].columns[0]), "cCashItem");
    company.execute("update gl_cashtable set inid=1, ccode=N'1001', md=250.5, mc=0");
    changes = compareRows(before, rows());
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].kind, RowChange::Kind::added);
    EXPECT_EQ(changes[1].kind, RowChange::Kind::removed);
}

} // namespace
} // namespace z7::cashflow::workbench
