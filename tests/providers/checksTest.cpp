#include "providers/ProviderTest.h"

namespace z7::cashflow::test {
namespace {

using namespace ledger;

class Checks : public ProviderTest {
protected:
    bool checkRows(const Collection& rows) { return world.gl.CheckKmFrom(world.connection, rows, &info); }
    bool checkSum(const Collection& rows, const std::string& table = "gl_accvouch") {
        return world.gl.CheckCFColFromDB(world.connection, table, 1, 2, 5, rows, &info);
    }

    std::string info = "before";
    const Collection rows = hostCollection(world);
};

TEST_F(Checks, AnEmptyCollectionFitsItsVoucher) {
    EXPECT_TRUE(checkRows(rows));
    EXPECT_EQ(info, "before");
    EXPECT_EQ(world.statements(), Lines{run(lines())});
}

TEST_F(Checks, CompleteRowsOnTheirAccountsFit) {
    addRow(rows, i16(2), "6001", 0.0, 60.0);
    addRow(rows, "2", "6001", 0.0, 999.0);
    EXPECT_TRUE(checkRows(rows));
    EXPECT_EQ(info, "before");
    EXPECT_EQ(world.statements(), Lines{run(lines())});
}

TEST_F(Checks, ARowWithoutALineIsFoundBeforeItsAccountIsLookedAt) {
    addRow(rows, i16(9), "wrong", Null{}, Null{}, Null{});
    EXPECT_FALSE(checkRows(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00002>");
}

TEST_F(Checks, ARowOnAnotherAccountThanItsLineDoesNotFit) {
    for (const Variant& account : {Variant("6002"), Variant("6001 "), Variant(""), Variant(" 6001"), Variant()}) {
        const Collection other = hostCollection(world);
        addRow(other, i16(2), account, 0.0, 100.0);
        EXPECT_FALSE(checkRows(other));
        EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00001>") << toTextOrEmpty(account);
    }
}

TEST_F(Checks, AccountsAreComparedWithTheirCase) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "60a", 0.0, 100.0, {}, {}, {}}});
    addRow(rows, i16(2), "60A", 0.0, 100.0);
    EXPECT_FALSE(checkRows(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00001>");
}

TEST_F(Checks, AnIncompleteRowIsReportedInThreeParts) {
    addRow(rows, i16(2), "6001", 0.0, 100.0, Null{});
    EXPECT_FALSE(checkRows(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00020>\t2\t4");
    const Collection other = hostCollection(world);
    addRow(other, i16(2), "6001", Null{}, Null{});
    EXPECT_FALSE(checkRows(other));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00022>\t2\t3");
}

TEST_F(Checks, OnlyTheFirstFailureIsReported) {
    addRow(rows, i16(2), "6001", 0.0, 100.0);
    addRow(rows, i16(2), "wrong", 0.0, 100.0);
    addRow(rows, i16(9), "6001", 0.0, 100.0);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00001>");
    EXPECT_EQ(world.statements(), (Lines{run(cashSum()), run(lines())})) << "the sum of the rows is never formed";
    const auto& trace = world.database.trace();
    EXPECT_EQ(std::count_if(trace.begin(), trace.end(), [](const auto& event) { return event.starts_with("Filter"); }),
              2);
}

TEST_F(Checks, ANullLineNumberDoesNotFilter) {
    addRow(rows, Null{}, "6001", 0.0, 100.0);
    EXPECT_ERROR(checkRows(rows), errors::invalidArgument);
    EXPECT_EQ(info, "before");
    addRow(rows, "2 or 1=1", "6001", 0.0, 100.0);
    rows->Remove(1);
    EXPECT_ERROR(checkRows(rows), errors::invalidArgument);
    errorCameOut();
}

TEST_F(Checks, TheReasonIsNotNeeded) {
    addRow(rows, i16(9), "6001", 0.0, 100.0);
    EXPECT_FALSE(world.gl.CheckKmFrom(world.connection, rows));
    EXPECT_FALSE(world.gl.CheckCFColFromDB(world.connection, "gl_accvouch", 1, 2, 5, rows));
}

TEST_F(Checks, ANumberBeyondSixteenBitsOverflows) {
    rows->UpdateCol(1, 2, 40000, Date(41279.0));
    EXPECT_ERROR(checkRows(rows), errors::overflow);
}

TEST_F(Checks, RowsOnTheOtherSideMeetTheCashSum) {
    addRow(rows, i16(2), "6001", 0.0, 100.0);
    EXPECT_TRUE(checkSum(rows));
    EXPECT_EQ(info, "before");
    EXPECT_EQ(world.statements(), (Lines{run(cashSum()), run(lines()), run(isCash("6001"))}));
}

TEST_F(Checks, RowsOnTheCashSideMeetTheCashSum) {
    addRow(rows, i16(1), "1001", 60.0, 0.0);
    addRow(rows, i16(1), "1001", 40.0, Null{});
    EXPECT_TRUE(checkSum(rows));
    EXPECT_EQ(world.statements(), (Lines{run(cashSum()), run(lines()), run(isCash("1001")), run(isCash("1001"))}));
}

TEST_F(Checks, TheCaseOfTheCollectionsRowsIsNotComparedLineByLine) {
    addRow(rows, i16(1), "1001", 160.0, 0.0);
    addRow(rows, i16(1), "1001", 0.0, 60.0);
    EXPECT_TRUE(checkSum(rows));
}

TEST_F(Checks, ADifferenceBelowAThousandthIsNone) {
    for (const auto& [amount, fits] : std::vector<std::pair<double, bool>>{
             {100.0005, true}, {99.9995, true}, {100.004, false}, {99.996, false}, {-100.0, false}}) {
        const Collection other = hostCollection(world);
        addRow(other, i16(1), "1001", amount, 0.0);
        EXPECT_EQ(checkSum(other), fits) << amount;
    }
}

TEST_F(Checks, TheBoundItselfFails) {
    world.setSum(0.0);
    addRow(rows, i16(1), "1001", 0.001, 0.0);
    EXPECT_FALSE(checkSum(rows));
    const Collection other = hostCollection(world);
    addRow(other, i16(1), "1001", 0.000999, 0.0);
    EXPECT_TRUE(checkSum(other));
}

TEST_F(Checks, TheDifferenceIsReportedInTwoLines) {
    addRow(rows, i16(1), "1001", 100.004, 0.0);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00003><Z7.CW.GL.CashFlow.00004>100.00\r\n"
                    "<Z7.CW.GL.CashFlow.00006><Z7.CW.GL.CashFlow.00004>100.00");
}

TEST_F(Checks, AnEmptyCollectionMatchesOnlyZero) {
    world.setSum(50.0);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00003><Z7.CW.GL.CashFlow.00004>50.00\r\n"
                    "<Z7.CW.GL.CashFlow.00006><Z7.CW.GL.CashFlow.00005>0.00");
    info = "before";
    world.setSum(0.0);
    EXPECT_TRUE(checkSum(rows));
    EXPECT_EQ(info, "before");
}

TEST_F(Checks, ASumBelowOneShowsOnTheDebitSide) {
    world.setSum(0.5);
    addRow(rows, i16(1), "1001", 0.01, 0.0);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00003><Z7.CW.GL.CashFlow.00004>0.50\r\n"
                    "<Z7.CW.GL.CashFlow.00006><Z7.CW.GL.CashFlow.00004>0.01");
}

TEST_F(Checks, ANegativeSumShowsOnTheCreditSide) {
    world.setSum(-50.0);
    addRow(rows, i16(2), "6001", 0.0, 1234.565);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00003><Z7.CW.GL.CashFlow.00005>50.00\r\n"
                    "<Z7.CW.GL.CashFlow.00006><Z7.CW.GL.CashFlow.00004>1234.57");
}

TEST_F(Checks, AFailingCatalogueLeavesThatPartEmpty) {
    login->texts->failure = Error(1, "catalogue", "broken");
    world.setSum(50.0);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(info, "50.00\r\n0.00");
}

TEST_F(Checks, ACatalogueWhoseFailureCannotEvenBeShownLeavesThatPartEmpty) {
    login->texts->failure = Error(1, "catalogue", "broken");
    modPublic::context().createMessageBox = nullptr;
    world.setSum(50.0);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(info, "50.00\r\n0.00");
}

TEST_F(Checks, TheTextsOfTwoSumsAreLookedUpInTheirOrder) {
    world.setSum(50.0);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(login->texts->asked, (Lines{"Z7.CW.GL.CashFlow.00003", "Z7.CW.GL.CashFlow.00004",
                                          "Z7.CW.GL.CashFlow.00006", "Z7.CW.GL.CashFlow.00005"}));
}

TEST_F(Checks, TheLinesAreClosedBeforeTheReasonIsLookedUp) {
    login->texts->failure = Error(1, "catalogue", "broken");
    modPublic::context().createMessageBox = [this]() -> std::shared_ptr<MessageBox> {
        EXPECT_EQ(world.database.openRecordsets(), Lines{}) << "no box stands while the lines are open";
        return messages;
    };
    for (const auto& [line, account] : std::vector<std::pair<int, const char*>>{{9, "6001"}, {2, "6002"}}) {
        const Collection one = hostCollection(world);
        addRow(one, i16(line), account, 0.0, 100.0);
        modPublic::context().messageBoxObject = nullptr;
        EXPECT_FALSE(checkRows(one));
        EXPECT_EQ(info, "");
    }
    EXPECT_EQ(messages->log.size(), 4U);
}

TEST_F(Checks, ASumThatIsNotANumberLeavesItsAmountEmpty) {
    addRow(rows, i16(1), "1001", 1e308, 0.0);
    addRow(rows, i16(1), "1001", 1e308, 0.0);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00003><Z7.CW.GL.CashFlow.00004>100.00\r\n"
                    "<Z7.CW.GL.CashFlow.00006><Z7.CW.GL.CashFlow.00004>");
}

TEST_F(Checks, NullAmountsArePassedOverOneByOne) {
    addRow(rows, i16(2), "6001", Null{}, 100.0);
    EXPECT_TRUE(checkSum(rows));
    const Collection other = hostCollection(world);
    addRow(other, i16(1), "1001", 100.0, Null{});
    EXPECT_TRUE(checkSum(other));
}

TEST_F(Checks, AmountsThatAreTextsCount) {
    addRow(rows, "2", "6001", "", "100.00");
    EXPECT_ERROR(checkSum(rows), errors::typeMismatch);
    const Collection other = hostCollection(world);
    addRow(other, "2", "6001", "0", "100.00");
    EXPECT_TRUE(checkSum(other));
}

TEST_F(Checks, TheCollectionTakesTheTableAlsoOnAFailure) {
    rows->VoucherTable("before");
    addRow(rows, i16(9), "6001", 0.0, 100.0);
    EXPECT_FALSE(checkSum(rows, "gl_v_accvouch"));
    EXPECT_EQ(rows->VoucherTable(), "gl_v_accvouch");
    EXPECT_EQ(world.statements(), (Lines{run(cashSum("gl_v_accvouch")), run(lines("gl_v_accvouch"))}));
}

TEST_F(Checks, AFailingSumLeavesTheCollectionsTable) {
    rows->VoucherTable("before");
    world.database.failStatement(1, Error(8134, "server", "divide by zero"));
    EXPECT_ERROR(checkSum(rows), 8134);
    EXPECT_EQ(rows->VoucherTable(), "before");
}

TEST_F(Checks, RowsAreLookedUpUnderTheCollectionsOwnKey) {
    addRow(rows, i16(2), "6001", 0.0, 100.0);
    rows->iNo_id(6);
    EXPECT_FALSE(checkSum(rows));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00002>");
    EXPECT_EQ(world.statements(), (Lines{run(cashSum()), run(lines("gl_accvouch", "2013", "6"))}));
}

TEST_F(Checks, WithoutACollectionThereIsNothingToCheck) {
    EXPECT_ERROR(checkRows(nullptr), errors::objectNotSet);
    EXPECT_ERROR(checkSum(nullptr), errors::objectNotSet);
}

TEST_F(Checks, EveryFailureOfTheDatabaseIsTheCallers) {
    for (std::size_t n = 1; n <= 4; ++n) {
        Ledger fresh;
        const Collection own = hostCollection(fresh);
        addRow(own, i16(2), "6001", 0.0, 60.0);
        addRow(own, i16(1), "1001", 40.0, 0.0);
        fresh.database.failStatement(n, Error(1205, "server", "deadlock"));
        const Error error =
            errorOf([&] { (void)fresh.gl.CheckCFColFromDB(fresh.connection, "gl_accvouch", 1, 2, 5, own, &info); });
        EXPECT_EQ(error.number(), 1205);
        EXPECT_EQ(error.source(), "server");
        EXPECT_EQ(fresh.statements().size(), n);
        EXPECT_EQ(info, "before");
        EXPECT_EQ(fresh.database.openRecordsets(), Lines{});
    }
}

} // namespace
} // namespace z7::cashflow::test
