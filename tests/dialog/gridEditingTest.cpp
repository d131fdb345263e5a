// Editing: which cells are refused and how, and the effect of an accepted cell on its row and its line.

#include "dialog/DialogTest.h"

namespace z7::cashflow::test {
namespace {

class GridEditing : public DialogTest {
protected:
    GridEditing() {
        addTwoRows();
        open();
    }
    /// The text of a cell after an edit that must be accepted.
    std::string typed(std::int32_t row, std::int32_t col, const std::string& text) {
        EXPECT_TRUE(cells().type(row, col, text));
        return cells().TextMatrix(row, col);
    }
    void expectRefused(std::int32_t row, std::int32_t col, const std::string& text, const std::string& message) {
        messages->log.clear();
        const Lines before = rows();
        const std::string cell = cells().TextMatrix(row, col);
        EXPECT_FALSE(cells().type(row, col, text)) << text;
        EXPECT_EQ(boxes(), Lines{notice(message)}) << text;
        EXPECT_EQ(rows(), before) << text;
        EXPECT_EQ(cells().TextMatrix(row, col), cell) << text;
    }
    void addLine() { form().press("cmdAdd"); }
    std::string statement(std::size_t n) { return n < database.statements().size() ? database.statements()[n] : ""; }

    const std::string option = "con2: select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ";
};

TEST_F(GridEditing, AnEditIsOpenToEverybodyWhereNoUserIsNamed) { EXPECT_TRUE(cells().beginTyping(1, 4, "02")); }

TEST_F(GridEditing, AnotherUsersVoucherIsRefusedBeforeTheEditUnlessItMayBeEdited) {
    modPublic::context().CurUserName = "li";
    modPublic::context().VouchBillName = "Li";
    EXPECT_FALSE(cells().beginTyping(1, 4, "02"));
    EXPECT_EQ(boxes(), Lines{"<Z7.GL.ZZPZ.01154>|16|<Z7.GL.ZZPZ.00003>"});
    modPublic::context().VouchEdit = true;
    EXPECT_TRUE(cells().beginTyping(1, 4, "02"));
    EXPECT_TRUE(cells().leaveCell());
    modPublic::context().VouchEdit = false;
    modPublic::context().VouchBillName = "li";
    EXPECT_TRUE(cells().beginTyping(1, 4, "02"));
}

TEST_F(GridEditing, AnEmptyAccountIsRefusedWithoutAStatement) {
    expectRefused(1, 1, "", "<Z7.CW.GL.CashFlow.00043>");
    EXPECT_EQ(database.statements(), Lines{});
}

TEST_F(GridEditing, AnUnknownAccountIsRefused) {
    database.answerPrefix("select bCashItem from code where", none("bCashItem"));
    expectRefused(1, 1, "7777", "<Z7.CW.GL.CashFlow.00045>");
    EXPECT_EQ(database.statements(),
              (Lines{option, "con2: select bCashItem from code where iyear=2013 and  ccode=N'7777'"}));
}

TEST_F(GridEditing, TheYearOfAnAccountIsTheLoginsWhateverTheVouchersIs) {
    modPublic::SetIYear(2011);
    database.answerPrefix("select bCashItem from code where", none("bCashItem"));
    expectRefused(1, 1, "7777", "<Z7.CW.GL.CashFlow.00045>");
    EXPECT_EQ(statement(1), "con2: select bCashItem from code where iyear=2013 and  ccode=N'7777'");
}

TEST_F(GridEditing, WithTheOptionOnAnAccountThatMovesNoCashIsRefused) {
    database.answer("select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ",
                    one("CValue", "true"));
    expectRefused(1, 1, "6001", "<Z7.GL.ZZPZ.02010>");
    database.answerPrefix("select bCashItem from code where", one("bCashItem", true));
    EXPECT_EQ(typed(1, 1, "6001"), "6001");
}

TEST_F(GridEditing, WithTheOptionOffACashAccountIsRefusedInTheUsersLanguage) {
    database.answerPrefix("select bCashItem from code where", one("bCashItem", true));
    for (const char* tag : {"zh-CN", "zh-cn"}) {
        login->answers.languageTag = tag;
        expectRefused(1, 1, "1001", "请使用非现金流量科目!");
    }
    for (const char* tag : {"en", "zh-TW"}) {
        login->answers.languageTag = tag;
        expectRefused(1, 1, "1001", "<Z7.GL.ZZPZ.00234>");
    }
}

TEST_F(GridEditing, AnAccountWhoseFlagIsNullFitsBothWays) {
    database.answerPrefix("select bCashItem from code where", one("bCashItem", Null{}));
    for (const char* value : {"True", "False"}) {
        database.answer("select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ",
                        one("cvalue", value));
        EXPECT_EQ(typed(1, 1, "6001"), "6001");
    }
    database.answer("select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ",
                    one("cvalue", Null{}));
    EXPECT_EQ(typed(1, 1, "6001"), "6001");
}

TEST_F(GridEditing, AMissingOptionIsAnErrorForTheControlsCaller) {
    database.answer("select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ", none("cvalue"));
    EXPECT_ERROR(cells().type(1, 1, "6001"), errors::noCurrentRecord);
}

TEST_F(GridEditing, AnAccountOfTheLineFillsTheLineAndItsRow) {
    addLine();
    forget();
    EXPECT_EQ(typed(3, 1, "6001"), "6001");
    EXPECT_EQ(cells().TextMatrix(3, 0), "digest 6001");
    EXPECT_EQ(cells().TextMatrix(3, 2), "贷");
    EXPECT_EQ(cells().TextMatrix(3, 3), "0.00") << "the line of 60 has a row of 60";
    EXPECT_EQ(cells().TextMatrix(3, 6), "2");
    EXPECT_EQ(rows()[2], ":6001:0:0.00:") << "the row's line number follows when the line is left";
    EXPECT_EQ(database.statements(),
              (Lines{option, "con2: select bCashItem from code where iyear=2013 and  ccode=N'6001'",
                     "con2: select top 1 * from gl_accvouch where ccode=N'6001'" + keyCondition}));
    expectAllClosed();
}

TEST_F(GridEditing, TheSummaryOfALineThatWasFoundIsColouredAsTheSystems) {
    int coloured = 0;
    cells().beforeOperation = [&](const std::string& operation) { coloured += operation == "SetCellColor" ? 1 : 0; };
    EXPECT_EQ(typed(1, 1, "6001"), "6001");
    EXPECT_EQ(coloured, 1);
}

TEST_F(GridEditing, ALineWithItsNumberIsLookedUpByIt) {
    EXPECT_EQ(typed(1, 1, "6001"), "6001");
    EXPECT_EQ(statement(2), "con2: select * from gl_accvouch where ccode=N'6001'" + keyCondition + " And inid = 2");
    EXPECT_EQ(rows()[0], "2:6001:0:60.00:01");
}

TEST_F(GridEditing, ALineNumberThatIsGoneFallsBackToTheFirstLineOfTheAccountAnywhere) {
    database.answer("select * from gl_accvouch where ccode=N'6001'" + keyCondition + " And inid = 2", noLine());
    database.answer("select * from gl_accvouch where ccode=N'6001'", voucherLine("6001", i16(9), 5.0, 0.0));
    EXPECT_EQ(typed(1, 1, "6001"), "6001");
    EXPECT_EQ(cells().TextMatrix(1, 6), "9");
    EXPECT_EQ(cells().TextMatrix(1, 2), "借");
    expectAllClosed();
    EXPECT_EQ(cells().TextMatrix(1, 3), "60.00") << "an amount in the cell stays";
    EXPECT_EQ(rows()[0], "2:6001:60.00:0:01") << "and goes to the side of the line";
}

TEST_F(GridEditing, AnAccountWithoutALineIsLookedUpThreeTimesAndRefused) {
    database.answerPrefix("select * from gl_accvouch where ccode=N'6602'", noLine());
    expectRefused(1, 1, "6602", "<Z7.CW.GL.CashFlow.00045>");
    EXPECT_EQ(statement(2), "con2: select * from gl_accvouch where ccode=N'6602'" + keyCondition + " And inid = 2");
    EXPECT_EQ(statement(3), "con2: select * from gl_accvouch where ccode=N'6602'");
    EXPECT_EQ(statement(4), "con2: select * from gl_accvouch where ccode=N'6602'");
    EXPECT_EQ(statement(5), "");
    addLine();
    forget();
    database.answerPrefix("select top 1 * from gl_accvouch where ccode=N'6602'", noLine());
    EXPECT_FALSE(cells().type(3, 1, "6602"));
    EXPECT_EQ(database.countOf("select top 1 * from gl_accvouch where ccode=N'6602'" + keyCondition), 3U);
}

TEST_F(GridEditing, AKeylessTableIsLookedUpWithoutTheVouchersKey) {
    collection->VoucherTable("sales");
    database.answer("select * from sales where ccode=N'6001' and inid=2", noLine());
    database.answerInTurn("select * from sales where ccode=N'6001'",
                          {noLine(), voucherLine("6001", i16(4), 0.0, 60.0)});
    EXPECT_EQ(typed(1, 1, "6001"), "6001");
    EXPECT_EQ(cells().TextMatrix(1, 6), "4");
    EXPECT_EQ(database.countOf("select * from sales where ccode=N'6001'"), 3U);
    database.answer("select * from sales where ccode=N'6001' and inid=4", voucherLine("6001", i16(4), 0.0, 60.0));
    addLine();
    database.answer("select top 1 * from sales where ccode=N'6002'", voucherLine("6002", i16(3), 0.0, 40.0));
    EXPECT_EQ(typed(3, 1, "6002"), "6002");
}

TEST_F(GridEditing, AnAccountKeepsTheDatabasesSpellingInItsRow) {
    database.answer("select * from gl_accvouch where ccode=N'6001a'" + keyCondition + " And inid = 2",
                    voucherLine("6001A", i16(2), 0.0, 60.0));
    EXPECT_EQ(typed(1, 1, "6001a"), "6001a") << "the control shows what was typed";
    EXPECT_EQ(rows()[0], "2:6001A:0:60.00:01");
}

TEST_F(GridEditing, ANewShareOfALineIsProposedWhatRemainsOfIt) {
    setLine("6001", 2, 0.0, 1000.0);
    collection->Item(1)->SetValue("mc", 400.0);
    addLine();
    EXPECT_EQ(typed(3, 1, "6001"), "6001");
    EXPECT_EQ(cells().TextMatrix(3, 3), "600.00");
    EXPECT_EQ(rows()[2], ":6001:0:600.00:");
    EXPECT_TRUE(collection->Changed());
}

TEST_F(GridEditing, TheProposalCountsRowsOfTheLineAloneAndPassesOverNulls) {
    setLine("1001", 1, 1234.5, 0.0);
    addRow(i16(1), "1001", Null{}, 5.0, "01");
    addRow("1", "1001", "200", Null{}, "01");
    addRow(i16(7), "1001", 50.0, 0.0, "01");
    load();
    addLine();
    EXPECT_EQ(typed(6, 1, "1001"), "1001");
    EXPECT_EQ(cells().TextMatrix(6, 2), "借");
    EXPECT_EQ(cells().TextMatrix(6, 3), "1,034.50");
    EXPECT_EQ(rows()[5], ":1001:1034.50:0:");
}

TEST_F(GridEditing, ALineWithoutAmountsBecomesACreditOfZeroWhichTheAmountCellRefuses) {
    setLine("6001", 2, 0.0, 0.0);
    collection->Remove(1);
    collection->Remove(1);
    load();
    addLine();
    EXPECT_EQ(typed(1, 1, "6001"), "6001");
    EXPECT_EQ(cells().TextMatrix(1, 2), "贷");
    EXPECT_EQ(cells().TextMatrix(1, 3), "0.00");
    expectRefused(1, 3, "0.00", "<Z7.CW.GL.CashFlow.00049>");
}

TEST_F(GridEditing, ALineWhoseAmountsAreNullProposesNothing) {
    setLine("6001", 2, Null{}, Null{});
    addLine();
    EXPECT_EQ(typed(3, 1, "6001"), "6001");
    EXPECT_EQ(cells().TextMatrix(3, 3), "");
    EXPECT_EQ(rows()[2], ":6001:0::");
}

TEST_F(GridEditing, AmountsThatAreNoneAreRefused) {
    for (const char* text : {"0", "0.00", "abc", "", "   ", ",500", "-", "0,5"}) {
        expectRefused(1, 3, text, "<Z7.CW.GL.CashFlow.00049>");
    }
    EXPECT_EQ(database.statements(), Lines{});
}

TEST_F(GridEditing, AnAmountShowsWithCommasAndIsStoredWithout) {
    EXPECT_EQ(typed(1, 3, "1234.5"), "1,234.50");
    EXPECT_EQ(rows()[0], "2:6001:0:1234.50:01");
    EXPECT_EQ(typed(1, 3, "1,234.00"), "1,234.00");
    EXPECT_EQ(rows()[0], "2:6001:0:1234.00:01");
}

TEST_F(GridEditing, AnAmountGoesToTheSideOfTheDirectionAloneAndMayBeNegative) {
    collection->Item(1)->SetValue("md", 3.0);
    EXPECT_EQ(typed(1, 3, "-60"), "-60.00");
    EXPECT_EQ(rows()[0], "2:6001:3:-60.00:01");
    cells().TextMatrix(1, 2, "借");
    EXPECT_EQ(typed(1, 3, "8"), "8.00");
    EXPECT_EQ(rows()[0], "2:6001:8.00:-60.00:01");
}

TEST_F(GridEditing, AnAmountThatOnlyBeginsWithANumberStaysAsItIs) {
    EXPECT_EQ(typed(1, 3, "12x"), "12x");
    EXPECT_EQ(rows()[0], "2:6001:0:12x:01");
}

TEST_F(GridEditing, AnEmptyItemIsRefusedWithoutAStatement) {
    expectRefused(1, 4, "", "<Z7.CW.GL.CashFlow.00052>");
    EXPECT_EQ(database.statements(), Lines{});
}

TEST_F(GridEditing, AnUnknownItemIsRefused) {
    expectRefused(1, 4, "77", "<Z7.CW.GL.CashFlow.00054>");
    EXPECT_EQ(database.statements(), Lines{"con2: select * from fitemss98 where citemcode=N'77'"});
    expectAllClosed();
}

TEST_F(GridEditing, AnItemGoesIntoTheRowAndItsNameIntoTheNextCell) {
    EXPECT_EQ(typed(1, 4, "02"), "02");
    EXPECT_EQ(cells().TextMatrix(1, 5), "item 02");
    EXPECT_EQ(rows()[0], "2:6001:0:60:02");
    EXPECT_EQ(database.statements(), (Lines{"con2: select * from fitemss98 where citemcode=N'02'",
                                            "own(0,1,3): select citemname from fitemss98 where citemcode=N'02'"}));
}

TEST_F(GridEditing, AnItemWithoutANameIsRefusedSilentlyAfterTheRowHasIt) {
    database.answer("select * from fitemss98 where citemcode=N'03'", one("citemcode", "03"));
    EXPECT_FALSE(cells().type(1, 4, "03"));
    EXPECT_EQ(boxes(), Lines{});
    EXPECT_EQ(cells().TextMatrix(1, 5), "item 01");
    EXPECT_EQ(rows()[0], "2:6001:0:60:03");
}

TEST_F(GridEditing, ALineNumberThatIsNotANumberIsRefusedAndSoIsAnEmptyOne) {
    for (const char* text : {"", "x", "1x"}) {
        expectRefused(1, 6, text, "请输入正确分录行号");
    }
}

TEST_F(GridEditing, ALineNumberGoesIntoTheRowUnseenByTheVoucher) {
    EXPECT_EQ(typed(1, 6, "77"), "77");
    EXPECT_EQ(rows()[0], "77:6001:0:60:01");
    EXPECT_EQ(database.statements(), Lines{});
}

TEST_F(GridEditing, OtherColumnsTakeAnyTextButNeedTheirRow) {
    for (const std::int32_t col : {0, 2, 5}) {
        EXPECT_EQ(typed(1, col, "x"), "x");
    }
    cells().TextMatrix(1, 7, "unknown");
    for (const std::int32_t col : {0, 1, 2, 3, 4, 5, 6, 7}) {
        EXPECT_ERROR(cells().type(1, col, "x"), errors::badArgument) << col;
        cells().Col(0);
    }
}

TEST_F(GridEditing, ALineIsLeftWhenAllItsCellsPassAndItsRowThenHasThem) {
    addLine();
    EXPECT_TRUE(cells().type(3, 1, "6001"));
    EXPECT_TRUE(cells().type(3, 3, "5"));
    EXPECT_TRUE(cells().type(3, 4, "02"));
    EXPECT_TRUE(cells().goToLine(1));
    EXPECT_EQ(rows()[2], "2:6001:0:5.00:02");
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(GridEditing, ALineIsKeptAtItsFirstCellThatDoesNotPass) {
    addLine();
    EXPECT_TRUE(cells().type(3, 1, "6001"));
    EXPECT_TRUE(cells().type(3, 3, "5"));
    forget();
    EXPECT_FALSE(cells().goToLine(1));
    EXPECT_EQ(boxes(), Lines{noticeOf("00052")});
    EXPECT_EQ(factory->journal.back(), "SetFocus ");
    EXPECT_EQ(cells().Row(), 3);
    EXPECT_EQ(cells().Col(), 4);
}

TEST_F(GridEditing, LeavingALineDoesNotRewriteItsAmountCell) {
    cells().TextMatrix(1, 3, "60");
    EXPECT_TRUE(cells().type(1, 4, "02"));
    EXPECT_TRUE(cells().goToLine(2));
    EXPECT_EQ(cells().TextMatrix(1, 3), "60");
    EXPECT_EQ(rows()[0], "2:6001:0:60.00:02");
}

TEST_F(GridEditing, NothingIsValidatedWhileTheCursorIsInTheHeader) {
    cells().Row(0);
    forget();
    std::int32_t cancel = 0;
    std::int32_t col = 3;
    form().events().RowValidate(cancel, 1, col);
    EXPECT_EQ(cancel, 0);
    EXPECT_EQ(col, 3);
    EXPECT_EQ(database.statements(), Lines{});
}

TEST_F(GridEditing, AFailureAtEachStatementOfAnAccountReachesTheControlsCaller) {
    for (std::size_t n = 1; n <= 3; ++n) {
        forget();
        database.failStatement(n, Error(4060, "server", "gone"));
        EXPECT_ERROR(cells().type(1, 1, "6001"), 4060) << n;
        cells().Col(1);
    }
    for (std::size_t n = 1; n <= 2; ++n) {
        forget();
        database.failStatement(n, Error(4060, "server", "gone"));
        EXPECT_ERROR(cells().type(1, 4, "02"), 4060) << n;
        cells().Col(4);
    }
}

TEST_F(GridEditing, AFurtherLineComesWhileTheVouchersCashIsNotCovered) {
    setSum(100.01);
    frmCashFlow other;
    other.LoadData(login, collection, true);
    cells().Row(2);
    cells().goBeyondEnd();
    EXPECT_EQ(cells().Rows(), 4);
    EXPECT_EQ(collection->Count(), 3);
    EXPECT_EQ(cells().Row(), 3);
    EXPECT_EQ(cells().Col(), 1);
}

TEST_F(GridEditing, NoFurtherLineComesOnceTheCashIsCovered) {
    cells().Row(2);
    cells().goBeyondEnd();
    EXPECT_EQ(cells().Rows(), 3);
    EXPECT_EQ(collection->Count(), 2);
}

TEST_F(GridEditing, AVoucherWhoseCashIsNegativeNeverGrantsAFurtherLine) {
    setSum(-500.0);
    collection->Remove(1);
    collection->Remove(1);
    frmCashFlow other;
    other.LoadData(login, collection, true);
    cells().goBeyondEnd();
    EXPECT_EQ(cells().Rows(), 1);
}

TEST_F(GridEditing, AFurtherLineReadsAmountsStrictlyWithTheirCommas) {
    setSum(5000.0);
    cells().TextMatrix(1, 3, "1,234.00");
    frmCashFlow other;
    cells().Row(2);
    cells().goBeyondEnd();
    EXPECT_EQ(cells().Rows(), 3) << "the sum of the first load, 100, is covered";
    cells().TextMatrix(1, 3, "");
    EXPECT_ERROR(cells().goBeyondEnd(), errors::typeMismatch);
}

TEST_F(GridEditing, CreditsCountAsPositiveForAFurtherLine) {
    cells().TextMatrix(1, 3, "60.00");
    cells().TextMatrix(2, 3, "39.99");
    cells().Row(2);
    cells().goBeyondEnd();
    EXPECT_EQ(cells().Rows(), 4);
}

} // namespace
} // namespace z7::cashflow::test
