#include "providers/ProviderTest.h"

#include <functional>

namespace z7::cashflow::test {
namespace {

using namespace ledger;

/// A save is a sequence of statements. If any of them fails, its error passes through under the system's name, and
/// no further statement is run. The one exception is the name of an item on the line itself: that failure is
/// ignored.
class SaveFailure : public ProviderTest {
protected:
    using Prepare = std::function<void(Ledger&)>;
    using Run = std::function<bool(Ledger&)>;

    static bool isUnnoticed(const Lines& statements, std::size_t n) {
        return n >= 1 && n < statements.size() && statements[n - 1].starts_with("own(0,1,3): select citemname") &&
               statements[n - 1] == statements[n];
    }

    void failEverywhere(std::size_t expectedStatements, std::size_t expectedUnnoticed, const Prepare& prepare,
                        const Run& save) {
        Lines whole;
        {
            Ledger fresh;
            prepare(fresh);
            EXPECT_TRUE(save(fresh));
            whole = fresh.statements();
        }
        ASSERT_EQ(whole.size(), expectedStatements);
        std::size_t unnoticed = 0;
        for (std::size_t n = 1; n <= whole.size(); ++n) {
            modPublic::SetIYear(0);
            Ledger fresh;
            prepare(fresh);
            fresh.database.failStatement(n, Error(547, "server", "constraint", "23000"));
            if (isUnnoticed(whole, n)) {
                ++unnoticed;
                EXPECT_TRUE(save(fresh)) << n;
                EXPECT_EQ(fresh.statements().size(), whole.size());
                continue;
            }
            const Error error = errorOf([&] { (void)save(fresh); });
            EXPECT_EQ(error.number(), 547) << n;
            EXPECT_EQ(error.source(), "CashFlow") << n;
            EXPECT_EQ(error.description(), "constraint") << n;
            EXPECT_EQ(fresh.statements().size(), n) << fresh.statements().back();
            EXPECT_EQ(fresh.database.openRecordsets(), Lines{});
        }
        EXPECT_EQ(unnoticed, expectedUnnoticed);
    }
};

bool saveGiven(Ledger& on, Collection rows) {
    return on.gl.SaveCashFlowColEx(on.connection, "gl_accvouch", 1, 2, 5, Date(41279.0), &rows);
}

TEST_F(SaveFailure, OfAHostsCollection) {
    failEverywhere(
        14, 0, [](Ledger&) {},
        [](Ledger& on) {
            const Collection rows = hostCollection(on);
            addRow(rows, i16(2), "6001", 0.0, 60.0);
            addRow(rows, i16(2), "6001", 0.0, 40.0);
            return saveGiven(on, rows);
        });
}

TEST_F(SaveFailure, OfGeneratedRows) {
    failEverywhere(
        23, 2,
        [](Ledger& on) {
            on.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}},
                         {2, "6001", 0.0, 60.0, "98", "01", {}},
                         {3, "6002", 0.0, 40.0, "98", "02", {}}});
        },
        [](Ledger& on) { return on.gl.SaveCashFlowCol(on.connection, "gl_accvouch", 1, 2, 5); });
}

TEST_F(SaveFailure, OfStoredRows) {
    failEverywhere(
        17, 0, [](Ledger& on) { on.setStored({"88"}); },
        [](Ledger& on) { return on.gl.SaveCashFlowColEx(on.connection, "gl_accvouch", 1, 2, 5, Date(300.0)); });
}

TEST_F(SaveFailure, UnderAFormerNumber) {
    failEverywhere(
        13, 0,
        [](Ledger& on) {
            on.database.answerPrefix("Select Count(*)", {{""}, {{std::int32_t{0}}}, {}});
        },
        [](Ledger& on) {
            const Collection rows = hostCollection(on);
            rows->ibackno_id(7);
            addRow(rows, i16(2), "6001", 0.0, 100.0);
            return saveGiven(on, rows);
        });
}

TEST_F(SaveFailure, WithoutACashAccount) {
    failEverywhere(
        4, 0,
        [](Ledger& on) {
            on.haveCash(false);
            on.gl.SetOldVouchNoID(9);
        },
        [](Ledger& on) { return saveGiven(on, nullptr); });
}

TEST_F(SaveFailure, KeepsTheRowsThatWereFoundForTheCaller) {
    world.database.failPrefix("insert", Error(547, "server", "constraint"));
    Collection rows;
    EXPECT_ERROR(world.gl.SaveCashFlowCol(world.connection, "gl_accvouch", 1, 2, 5, &rows), 547);
    EXPECT_NE(rows, nullptr);
    EXPECT_EQ(world.database.countOf(deleteRows()), 1U) << "what ran before stays for the host to roll back";
}

TEST_F(SaveFailure, LeavesTheYearAndTheSideAsSet) {
    world.setOption("bCashCode", "TRUE");
    world.database.answerPrefix("select iyear,iid", {{"iyear", "iid"}, {{i16(2012), std::uint8_t{1}}}, {}});
    world.database.failPrefix("select code.ccode", Error(547, "server", "constraint"));
    Collection rows;
    EXPECT_ERROR(saveGiven(world, rows), 547);
    EXPECT_EQ(modPublic::GetIYear(), 2012);
    EXPECT_TRUE(modPublic::context().bCashCode);
}

} // namespace
} // namespace z7::cashflow::test
