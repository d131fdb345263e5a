// Items assigned by hand, on the small company.

#include "workbench/changes/Assignment.h"

#include "outside/CompanyTest.h"
#include "workbench/changes/undo.h"

#include <gmock/gmock.h>

#include <map>
#include <random>

namespace z7::cashflow::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AssignmentTest : public test::CompanyTest {
protected:
    AssignmentTest() { modPublic::SetIYear(2013); }

    /// The environment of one command; each command has its own.
    struct Desk {
        explicit Desk(AssignmentTest& test, bool keep = true)
            : log(test.connection, {"li", "test", [] { return Date(41300.0); }, {}}),
              allotment(test.connection, test.data, test.gl, keep, &log),
              assignment(test.connection, test.data, test.gl, allotment) {}
        RunLog log;
        Allotment allotment;
        Assignment assignment;
    };

    VoucherResult assign(const VoucherKey& key, const std::vector<LineWish>& wishes) {
        return Desk(*this).assignment.assign(key, wishes, rests);
    }
    std::vector<RowImage> rows() {
        return readRowImages(connection, "select " + rowColumnList() + " from gl_cashtable");
    }

    DataProvider data;
    std::vector<LineRest> rests;
    const VoucherKey receipt{2013, 1, 1, 6}; ///< 250.5 on line 2, whose template has the item 01
    const VoucherKey other{2013, 1, 2, 5};
};

TEST_F(AssignmentTest, ALineWithoutRowsGetsTheItemAndTheLinesFields) {
    EXPECT_EQ(assign(receipt, {{2, {{"02", {}}}}}).outcome, Outcome::stored);
    EXPECT_THAT(company.storedRows(), ElementsAre(stored("02", "250.5")));
    EXPECT_THAT(company.records("select csign,cexch_name,iYear from gl_cashtable"),
                ElementsAre("csign=收 cexch_name=人民币 iYear=2013"));
    EXPECT_THAT(rests, IsEmpty());
}

TEST_F(AssignmentTest, ASplitLeavesTheRestOnTheProposedItem) {
    EXPECT_FALSE(assign(receipt, {{2, {{"02", Amount::read("100")}}}}).refusal);
    EXPECT_THAT(company.storedRows(), ElementsAre(stored("02", "100"), stored("01", "150.5")));
    ASSERT_EQ(rests.size(), 1U);
    EXPECT_EQ(rests[0].line, 2);
    EXPECT_THAT(rests[0].parts, ElementsAre(ItemPart{"01", Amount::read("150.5")}));
    EXPECT_FALSE(assign(receipt, {{2, {{"02", {}}}}}).refusal) << "and is put together again";
    EXPECT_THAT(company.storedRows(), ElementsAre(stored("02", "250.5")));
}

TEST_F(AssignmentTest, ALineThatIsNotThereOrTooLittleOfOneIsRefusedAndNothingChanges) {
    storeRow("02");
    const auto before = rows();
    const auto kindOf = [](const VoucherResult& result) { return result.refusal->findings.at(0).kind; };
    EXPECT_EQ(kindOf(assign(receipt, {{9, {{"02", {}}}}})), Finding::Kind::lineMissing);
    EXPECT_EQ(kindOf(assign(receipt, {{2, {{"02", Amount::read("300")}}}})), Finding::Kind::amountExceedsLine);
    company.execute("delete from GL_CashItemDataSource");
    const VoucherResult rest = assign(receipt, {{2, {{"02", Amount::read("50.5")}}}});
    EXPECT_EQ(kindOf(rest), Finding::Kind::restWithoutItem);
    EXPECT_EQ(rest.refusal->findings[0].amount, 200.0);
    EXPECT_TRUE(sameRows(rows(), before, true));
    EXPECT_THAT(readRuns(connection), IsEmpty());
}

TEST_F(AssignmentTest, TheAccountsOptionDecidesWhetherRowsThatDoNotMatchAreStored) {
    const LineWish cashLine{1, {{"02", {}}}}; // beside the generated row on line 2, so that the sum is doubled
    company.setOption("bXJLL", "True");
    EXPECT_EQ(assign(receipt, {cashLine}).refusal->error.number(), errors::sumsDiffer);
    EXPECT_THAT(rows(), IsEmpty());
    company.setOption("bXJLL", "False");
    const VoucherResult result = assign(receipt, {cashLine});
    EXPECT_EQ(result.outcome, Outcome::stored);
    EXPECT_TRUE(result.mismatch);
}

TEST_F(AssignmentTest, ClearingRemovesRowsThatNoReaderFindsToo) {
    storeRow("99");
    EXPECT_EQ(Desk(*this, false).allotment.removeRows(receipt).removed, 1);
    EXPECT_EQ(rows().size(), 1U) << "a dry run";
    const VoucherResult cleared = Desk(*this).allotment.removeRows(receipt);
    EXPECT_EQ(cleared.outcome, Outcome::nothing);
    EXPECT_EQ(cleared.removed, 1);
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_FALSE(Desk(*this).allotment.removeRows(receipt).changed());
    EXPECT_EQ(readRuns(connection).size(), 1U);
}

TEST_F(AssignmentTest, RegeneratingReplacesStoredItemsAndKeepsThoseForWhichNoneIsFound) {
    storeRow("02");
    EXPECT_EQ(Desk(*this).assignment.regenerate(receipt, true).outcome, Outcome::stored);
    EXPECT_THAT(company.storedRows(), ElementsAre(stored("01", "250.5"))) << "a template is found";
    EXPECT_TRUE(Desk(*this).allotment.removeRows(receipt).changed());
    EXPECT_TRUE(assign(receipt, {{2, {{"02", {}}}}}).changed());
    company.execute("delete from GL_CashItemDataSource");
    EXPECT_FALSE(Desk(*this).assignment.regenerate(receipt, true).changed());
    EXPECT_THAT(company.storedRows(), ElementsAre(stored("02", "250.5")));
    EXPECT_TRUE(Desk(*this).assignment.regenerate(receipt, false).refusal) << "there is nothing to take its place";
    EXPECT_FALSE(modPublic::context().bAutoDisplay);
}

TEST_F(AssignmentTest, ReassigningMovesTheRowsOfOneItemAndAccount) {
    EXPECT_TRUE(assign(receipt, {{2, {{"02", {}}}}}).changed());
    EXPECT_THAT(vouchersWithItem(connection, 2013, {}, "02", ""), ElementsAre(receipt));
    EXPECT_THAT(vouchersWithItem(connection, 2013, PeriodRange{2, 12}, "02", ""), IsEmpty());
    EXPECT_THAT(vouchersWithItem(connection, 2013, {}, "02", "1001"), IsEmpty());
    EXPECT_FALSE(Desk(*this).assignment.reassign(receipt, "02", "01", "1001").changed());
    EXPECT_TRUE(Desk(*this).assignment.reassign(receipt, "02", "01", "").changed());
    EXPECT_THAT(company.storedRows(), ElementsAre(stored("01", "250.5")));
}

/// After random changes of two vouchers the rows are those of the log, and undoing all changes restores the first
/// rows with every column.
TEST_F(AssignmentTest, WhateverIsDoneEndsWhereTheLogSaysAndIsUndoneToTheLastColumn) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&random](int choices) {
            return static_cast<int>(random() % static_cast<unsigned>(choices));
        };
        company.execute("delete from gl_cashtable");
        company.execute("delete from z7_run_row");
        company.execute("delete from z7_run");
        storeRow("02");
        company.execute("update gl_cashtable set cDefine1=N'kept', cDefine16=0.1, cDefine4='2013-01-06 10:11:12'");
        const auto start = rows();
        for (int step = 0; step < 25; ++step) {
            const VoucherKey key = pick(2) == 0 ? receipt : other;
            const std::string item = pick(2) == 0 ? "01" : "02";
            Desk desk(*this);
            switch (pick(6)) {
            case 0:
                static_cast<void>(desk.allotment.allot(key));
                break;
            case 1:
                static_cast<void>(desk.assignment.assign(key, {{2, {{item, {}}}}}, rests));
                break;
            case 2:
                static_cast<void>(
                    desk.assignment.assign(key, {{2, {{item, Amount::of(Variant(1.0 + pick(90)))}}}}, rests));
                break;
            case 3:
                static_cast<void>(desk.assignment.reassign(key, item, item == "01" ? "02" : "01", ""));
                break;
            case 4:
                static_cast<void>(desk.allotment.removeRows(key));
                break;
            default:
                if (const auto runs = readRuns(connection); !runs.empty()) {
                    const auto& run = runs.at(static_cast<std::size_t>(pick(static_cast<int>(runs.size()))));
                    for (const VoucherKey& changed : vouchersOfRun(connection, run.number)) {
                        static_cast<void>(undoVoucher(connection, desk.log, run.number, changed, true));
                    }
                }
            }
            std::map<std::int32_t, std::vector<RowImage>> latest; // the log's rows of each voucher, by number
            for (const auto& run : readRuns(connection)) {
                for (const VoucherKey& changed : vouchersOfRun(connection, run.number)) {
                    latest.emplace(changed.number, readLogged(connection, run.number, changed).after);
                }
            }
            for (const auto& [number, left] : latest) {
                EXPECT_TRUE(sameRows(readRowImages(connection, number == receipt.number ? receipt : other), left, true))
                    << "seed " << seed << ", step " << step;
            }
        }
        const auto runs = readRuns(connection); // the newest first
        EXPECT_GT(runs.size(), 5U);
        for (const auto& run : runs) {
            Desk desk(*this);
            for (const VoucherKey& changed : vouchersOfRun(connection, run.number)) {
                EXPECT_FALSE(undoVoucher(connection, desk.log, run.number, changed, true).refusal)
                    << "seed " << seed << ", run " << run.number;
            }
        }
        EXPECT_TRUE(sameRows(rows(), start, true)) << "seed " << seed;
    }
}

} // namespace
} // namespace z7::cashflow::workbench
