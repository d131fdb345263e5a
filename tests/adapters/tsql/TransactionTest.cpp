#include "adapters/tsql/transaction.h"
#include "z7cashflow/support/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace z7::cashflow::tsql {
namespace {

using testing::ElementsAre;

/// A session that records the texts to run and refuses those that begin with a given text.
class TransactionTest : public testing::Test {
protected:
    TextRunner runner() {
        return {[this](const std::string& sql) { run(sql); }, [this](const std::string& sql) { run("back: " + sql); }};
    }
    void run(const std::string& sql) {
        log.push_back(sql);
        for (std::size_t i = 0; i < refused.size(); ++i) {
            if (sql.starts_with(refused[i])) {
                throw Error(static_cast<int>(i) + 1, "test", "refused");
            }
        }
    }
    static int errorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const Error& error) {
            return error.number();
        }
        return 0;
    }
    int fill() {
        Step step;
        step.kind = Step::Kind::queryInto;
        step.sql = "SELECT 1";
        step.target = {TableName::Place::temp, "X1"};
        return errorOf([&] {
            fillNewTable(step, {"\"a\" int", "\"b\""}, runner(), [this](const std::string& sql) { run(sql); });
        });
    }

    std::vector<std::string> log;
    std::vector<std::string> refused;
};

TEST_F(TransactionTest, TakesTheWriteLockOfTheAccountAlone) {
    EXPECT_EQ(errorOf([this] { beginTransaction(runner()); }), 0);
    EXPECT_THAT(log, ElementsAre("BEGIN", "DELETE FROM main.accinformation WHERE 0"));
}

TEST_F(TransactionTest, LeavesNoneOpenWhereTheWriteLockIsTaken) {
    refused = {"DELETE", "back: ROLLBACK"};
    EXPECT_EQ(errorOf([this] { beginTransaction(runner()); }), 1) << "the first error is told";
    EXPECT_THAT(log, ElementsAre("BEGIN", "DELETE FROM main.accinformation WHERE 0", "back: ROLLBACK"));
}

TEST_F(TransactionTest, TakesNothingBackWhereNothingHasBegun) {
    refused = {"BEGIN", "SAVEPOINT"};
    EXPECT_EQ(errorOf([this] { beginTransaction(runner()); }), 1);
    EXPECT_EQ(fill(), 2);
    EXPECT_THAT(log, ElementsAre("BEGIN", "SAVEPOINT z7_into"));
}

TEST_F(TransactionTest, FillsANewTableWithinASavepoint) {
    EXPECT_EQ(fill(), 0);
    EXPECT_THAT(log, ElementsAre("SAVEPOINT z7_into", "CREATE TABLE tempdb.\"X1\" (\"a\" int, \"b\")",
                                 "INSERT INTO tempdb.\"X1\" SELECT 1", "RELEASE z7_into"));
}

TEST_F(TransactionTest, TakesATableBackThatCannotBeFilled) {
    refused = {"INSERT"};
    EXPECT_EQ(fill(), 1);
    EXPECT_THAT(log,
                ElementsAre("SAVEPOINT z7_into", testing::StartsWith("CREATE TABLE"),
                            testing::StartsWith("INSERT INTO"), "back: ROLLBACK TO z7_into", "back: RELEASE z7_into"));
}

TEST_F(TransactionTest, ReportsTheFirstErrorIfTheRollbackFailsToo) {
    refused = {"CREATE", "back: ROLLBACK"};
    EXPECT_EQ(fill(), 1);
    EXPECT_THAT(log,
                ElementsAre("SAVEPOINT z7_into", testing::StartsWith("CREATE TABLE"), "back: ROLLBACK TO z7_into"));
}

} // namespace
} // namespace z7::cashflow::tsql
