// The buttons and keys except OK: their effect on the grid, the collection and the database.

#include "dialog/DialogTest.h"

namespace z7::cashflow::test {
namespace {

class Commands : public DialogTest {
protected:
    void openWithTwoRows(bool blnCheckCF = true) {
        addTwoRows();
        open(blnCheckCF);
    }
    /// What generation reads of the voucher: line 1 on cash, debit 100, and line 2 with the item 01.
    void setGeneration() {
        database.answerPrefix("select cvalue,cdefault from accinformation",
                              {{"cvalue", "cdefault"}, {{"False", "x"}}, {}});
        database.answerPrefix("select * from dsign", none("csign"));
        database.answerPrefix("select  code.iYear", {{"iPeriod", "iSignSeq", "isignseq", "iNo_id", "dbill_date", "inid",
                                                      "ccode", "md", "mc", "citem_class", "citem_id", "bCashItem"},
                                                     {{std::uint8_t{1}, i16(2), i16(2), std::int32_t{5}, Date(41279.0),
                                                       i16(1), "1001", 100.0, 0.0, Null{}, Null{}, true},
                                                      {std::uint8_t{1}, i16(2), i16(2), std::int32_t{5}, Date(41279.0),
                                                       i16(2), "6001", 0.0, 100.0, "98", "02", false}},
                                                     {}});
    }
    void setTemplates(bool exists) {
        const Table table{{"bDataStyle", "cDataSource", "bDir", "cItemCode", "dStartDate", "dEndDate", "iID"},
                          exists ? std::vector<std::vector<Variant>>{{i16(0), "6001", i16(0), "09", Date(3.0), Null{},
                                                                      std::int32_t{4}}}
                                 : std::vector<std::vector<Variant>>{},
                          {}};
        database.answerPrefix("select * from GL_V_CashItemDataSource", table);
    }
    Lines keysInGrid() {
        Lines keys;
        for (std::int32_t row = 1; row < cells().Rows(); ++row) {
            keys.push_back(cells().TextMatrix(row, 7));
        }
        return keys;
    }
    Lines keysOfRows() const {
        Lines keys;
        for (const auto& row : *dialog.CashFlowCol()) {
            keys.push_back(row->key());
        }
        return keys;
    }
    Lines templateEvents() const {
        Lines events;
        for (const std::string& entry : database.trace()) {
            if (entry == "AddNew" || entry == "Update" ||
                (entry.find(" = ") != std::string::npos && entry.find(':') == std::string::npos)) {
                events.push_back(entry);
            }
        }
        return events;
    }

    const std::string removeQuestion = "<Z7.CW.GL.CashFlow.00025>|292|<Z7.CW.GL.CashFlow.00013>";
    const std::string regenerateQuestion = "<Z7.CW.GL.CashFlow.00023>|292|<Z7.CW.GL.CashFlow.00013>";
};

// Adding

TEST_F(Commands, AddPutsAnEmptyLineAtTheEndAndTheCursorInItsAccount) {
    openWithTwoRows();
    form().press("cmdAdd");
    EXPECT_EQ(factory->journal, (Lines{"FinishEdit ", "AddItem end", "ColSel 1"}));
    EXPECT_EQ(cells().line(3), "|||||||" + collection->Item(3)->key());
    EXPECT_NE(cells().text().find("> *||*|||*||" + collection->Item(3)->key() + "\nat 3,1"), std::string::npos)
        << cells().text();
    EXPECT_EQ(rows()[2], "::::");
    EXPECT_EQ(toText(collection->Item(3)->Item("iNo_id")), "5") << "with the voucher's key";
    EXPECT_EQ(database.statements(), Lines{});
}

TEST_F(Commands, AddWaitsForACellThatIsNotSettled) {
    openWithTwoRows();
    for (const std::int32_t answer : {0, 1, 3}) {
        forget();
        cells().finishEditAnswer = answer;
        form().press("cmdAdd");
        EXPECT_EQ(factory->journal, (Lines{"FinishEdit ", "SetFocus "})) << answer;
        EXPECT_EQ(collection->Count(), 2);
    }
}

TEST_F(Commands, AddTakesTheRowOfALineThatTheGridDroppedAlong) {
    openWithTwoRows();
    form().press("cmdAdd");
    const std::string dropped = collection->Item(3)->key();
    form().press("cmdAdd"); // the grid drops the line that has no account
    EXPECT_EQ(collection->Count(), 3);
    EXPECT_NE(collection->Item(3)->key(), dropped);
    EXPECT_EQ(keysInGrid(), keysOfRows());
}

TEST_F(Commands, AddOnAReopenedEmptyGridWorks) {
    open();
    form().press("cmdAdd");
    EXPECT_EQ(cells().Row(), 1);
    EXPECT_EQ(cells().Col(), 1);
    EXPECT_EQ(keysInGrid(), keysOfRows());
}

TEST_F(Commands, AnUnknownPendingRowIsAnErrorForTheControlsCaller) {
    openWithTwoRows();
    cells().RemoveItem(2);
    EXPECT_ERROR(form().press("cmdAdd"), errors::badArgument);
    EXPECT_ERROR(form().press("cmdInsert"), errors::badArgument);
}

// Inserting

TEST_F(Commands, InsertNeedsALine) {
    open();
    form().press("cmdInsert");
    EXPECT_EQ(factory->journal, Lines{});
    EXPECT_EQ(collection->Count(), 0);
}

TEST_F(Commands, InsertWaitsForACellThatIsNotSettled) {
    openWithTwoRows();
    cells().finishEditAnswer = 1;
    form().press("cmdInsert");
    EXPECT_EQ(factory->journal, (Lines{"FinishEdit ", "SetFocus "}));
    EXPECT_EQ(collection->Count(), 2);
}

TEST_F(Commands, InsertBeforeTheFirstLineAddsABlankOneWithoutAStatement) {
    openWithTwoRows();
    form().press("cmdInsert");
    EXPECT_EQ(cells().line(1), "|||||||" + collection->Item(1)->key());
    EXPECT_EQ(rows(), (Lines{"::::", "2:6001:0:60:01", "3:6002:0:40:01"}));
    EXPECT_EQ(keysInGrid(), keysOfRows());
    EXPECT_EQ(database.statements(), Lines{});
    EXPECT_EQ(cells().Row(), 1);
    EXPECT_EQ(cells().Col(), 1);
    EXPECT_EQ(factory->journal, (Lines{"FinishEdit ", "AddItem 1", "ColSel 1"}));
}

TEST_F(Commands, InsertTakesTheLineAboveAsItsPatternAndProposesWhatRemains) {
    setLine("6001", 2, 0.0, 75.5);
    openWithTwoRows();
    cells().Row(2);
    form().press("cmdInsert");
    EXPECT_EQ(database.statements(),
              Lines{"con2: select * from gl_accvouch where ccode=N'6001'" + keyCondition + " And inid = 2"});
    EXPECT_EQ(cells().line(2), "digest|6001|贷|15.50|||2|" + collection->Item(2)->key());
    EXPECT_EQ(rows(), (Lines{"2:6001:0:60:01", "::0:15.50:", "3:6002:0:40:01"})) << "account and number come later";
    EXPECT_EQ(keysInGrid(), keysOfRows());
    EXPECT_NE(cells().text().find("> *digest|6001|*贷|15.50||*|2|"), std::string::npos);
    expectAllClosed();
    EXPECT_TRUE(cells().type(2, 4, "02"));
    EXPECT_TRUE(cells().goToLine(3));
    EXPECT_EQ(rows()[1], "2:6001:0:15.50:02") << "the row is whole once its line was left";
}

TEST_F(Commands, InsertBelowADebitLineProposesItsDebit) {
    addRow(i16(1), "1001", 30.0, 0.0, "01");
    addRow(i16(2), "6001", 0.0, 60.0, "01");
    open();
    cells().Row(2);
    form().press("cmdInsert");
    EXPECT_EQ(cells().line(2), "digest|1001|借|70.00|||1|" + collection->Item(2)->key());
    EXPECT_EQ(rows()[1], "::70.00:0:");
}

TEST_F(Commands, InsertBelowALineThatIsGoneFromTheVoucherProposesZero) {
    openWithTwoRows();
    database.answer("select * from gl_accvouch where ccode=N'6001'" + keyCondition + " And inid = 2", noLine());
    cells().Row(2);
    form().press("cmdInsert");
    EXPECT_EQ(cells().TextMatrix(2, 3), "0.00");
    EXPECT_EQ(rows()[1], "::0:0:");
    expectAllClosed();
}

TEST_F(Commands, InsertInAKeylessTableLooksByAccountAndNumber) {
    collection->VoucherTable("sales");
    addTwoRows();
    database.answer("select * from sales where ccode=N'6001' and inid=2", voucherLine("6001", i16(2), 0.0, 80.0));
    open();
    cells().Row(2);
    form().press("cmdInsert");
    EXPECT_EQ(database.statements(), Lines{"con2: select * from sales where ccode=N'6001' and inid=2"});
    EXPECT_EQ(cells().TextMatrix(2, 3), "20.00");
}

TEST_F(Commands, InsertBelowALineWithoutANumberEndsInTheServersErrorWithTheLineAndRowThere) {
    openWithTwoRows();
    cells().TextMatrix(1, 6, "");
    database.fail("select * from gl_accvouch where ccode=N'6001'" + keyCondition + " And inid = ",
                  Error(102, "server", "syntax"));
    cells().Row(2);
    EXPECT_ERROR(form().press("cmdInsert"), 102);
    EXPECT_EQ(cells().Rows(), 4);
    EXPECT_EQ(collection->Count(), 3);
    EXPECT_EQ(cells().TextMatrix(2, 7), "") << "the line has no key yet";
}

TEST_F(Commands, InsertTakesTheRowOfALineThatTheGridDroppedAlong) {
    openWithTwoRows();
    form().press("cmdAdd");
    form().press("cmdInsert"); // drops the third line; the second is the selected one then
    EXPECT_EQ(collection->Count(), 3);
    EXPECT_EQ(rows()[2], "3:6002:0:40:01");
    EXPECT_EQ(keysInGrid(), keysOfRows());
}

// Deleting

TEST_F(Commands, DeleteInTheHeaderRemovesNothingAndStillMovesTheCursor) {
    openWithTwoRows();
    cells().Row(0);
    form().press("cmdDel");
    EXPECT_EQ(collection->Count(), 2);
    EXPECT_EQ(cells().Rows(), 3);
    EXPECT_EQ(cells().Col(), 1);
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(Commands, DeleteAsksAndRemovesLineAndRow) {
    openWithTwoRows();
    messages->answers = {6};
    form().press("cmdDel");
    EXPECT_EQ(boxes(), Lines{removeQuestion});
    EXPECT_EQ(rows(), Lines{"3:6002:0:40:01"});
    EXPECT_EQ(keysInGrid(), keysOfRows());
    EXPECT_EQ(cells().Col(), 1);
    EXPECT_EQ(factory->journal, (Lines{"RemoveItem 1", "ColSel 1"})) << "without settling the cell first";
}

TEST_F(Commands, DeleteAnsweredNoLeavesTheCursorAsItWas) {
    openWithTwoRows();
    messages->answers = {7};
    form().press("cmdDel");
    EXPECT_EQ(collection->Count(), 2);
    EXPECT_EQ(cells().Col(), 4);
    EXPECT_EQ(factory->journal, Lines{});
}

TEST_F(Commands, DeleteOfALineWithoutAnAccountDoesNotAsk) {
    openWithTwoRows();
    form().press("cmdAdd");
    form().press("cmdDel");
    EXPECT_EQ(boxes(), Lines{});
    EXPECT_EQ(collection->Count(), 2);
    EXPECT_EQ(cells().Rows(), 3);
}

TEST_F(Commands, DeletingALineWithoutAKeyRemovesOnlyTheLine) {
    openWithTwoRows();
    cells().TextMatrix(1, 7, "");
    form().press("cmdDel");
    EXPECT_EQ(collection->Count(), 2);
    EXPECT_EQ(cells().Rows(), 2);
    cells().TextMatrix(1, 7, "unknown");
    EXPECT_ERROR(form().press("cmdDel"), errors::badArgument);
    EXPECT_EQ(cells().Rows(), 2);
}

// Regenerating

TEST_F(Commands, RegenerationAsksAndReplacesTheRows) {
    setGeneration();
    openWithTwoRows();
    messages->answers = {6};
    form().press("cmdAutoGetData");
    EXPECT_EQ(boxes(), Lines{regenerateQuestion});
    EXPECT_EQ(rows(), Lines{"2:6001:0:100:02"});
    EXPECT_NE(dialog.CashFlowCol(), collection) << "another object";
    EXPECT_EQ(keysInGrid(), keysOfRows());
    EXPECT_TRUE(dialog.CashFlowCol()->Changed());
    EXPECT_EQ(collection->Count(), 2) << "the collection that was handed in stays";
    EXPECT_EQ(connections->made, 4) << "loading opens two connections anew";
    EXPECT_EQ(factory->forms, 1);
}

TEST_F(Commands, RegenerationAnsweredNoDoesNothing) {
    openWithTwoRows();
    messages->answers = {7};
    form().press("cmdAutoGetData");
    EXPECT_EQ(dialog.CashFlowCol(), collection);
    EXPECT_EQ(database.statements(), Lines{});
    EXPECT_EQ(factory->journal, Lines{});
}

TEST_F(Commands, RegenerationOfAnEmptyGridDoesNotAsk) {
    setGeneration();
    open();
    form().press("cmdAutoGetData");
    EXPECT_EQ(boxes(), Lines{});
    EXPECT_EQ(rows(), Lines{"2:6001:0:100:02"});
}

TEST_F(Commands, ARegenerationWithoutRowsCountsAsAChange) {
    setGeneration();
    database.answerPrefix("select  code.iYear", {{"inid", "md", "mc", "bCashItem"}, {}, {}});
    openWithTwoRows();
    form().press("cmdAutoGetData");
    EXPECT_EQ(rows(), Lines{});
    EXPECT_EQ(cells().Rows(), 1);
    EXPECT_TRUE(dialog.CashFlowCol()->Changed());
}

TEST_F(Commands, AfterRegenerationCancelReturnsToTheGeneratedRows) {
    setGeneration();
    openWithTwoRows();
    form().press("cmdAutoGetData");
    EXPECT_TRUE(cells().type(1, 4, "01"));
    form().press("cmdCancel");
    EXPECT_EQ(rows(), Lines{"2:6001:0:100:02"});
    EXPECT_FALSE(dialog.CashFlowCol()->Changed());
}

TEST_F(Commands, RegenerationKeepsTheCashSumOfTheFirstLoad) {
    setGeneration();
    openWithTwoRows();
    setSum(5000.0);
    form().press("cmdAutoGetData");
    EXPECT_EQ(database.countOf("select (sum(md)"), 0U);
    cells().goBeyondEnd();
    EXPECT_EQ(cells().Rows(), 2) << "100 are covered";
}

TEST_F(Commands, RegenerationOfAnOutsideVoucherLeavesTheNewCollectionWithoutATable) {
    setGeneration();
    addTwoRows();
    collection->coutNo_id("OUT");
    open();
    database.answerPrefix("select iperiod,isignseq,ino_id,dbill_date from gl_accvouch",
                          {{"iperiod", "isignseq", "ino_id", "dbill_date"},
                           {{std::uint8_t{1}, i16(2), std::int32_t{5}, Date(41279.0)}},
                           {}});
    database.answerPrefix("select code.ccode from ", one("ccode", "1001"));
    database.failPrefix("select cdigest from  where inid =", Error(156, "server", "no table"));
    EXPECT_ERROR(form().press("cmdAutoGetData"), 156);
    EXPECT_NE(dialog.CashFlowCol(), collection);
    EXPECT_EQ(dialog.CashFlowCol()->VoucherTable(), "");
    EXPECT_EQ(dialog.CashFlowCol()->coutNo_id(), "");
    EXPECT_EQ(dialog.CashFlowCol()->iPeriod(), 1);
    EXPECT_EQ(dialog.CashFlowCol()->isignseq(), 2);
    EXPECT_EQ(dialog.CashFlowCol()->iNo_id(), 5);
    EXPECT_EQ(dialog.CashFlowCol()->dbill_date(), Date(41279.0));
    EXPECT_EQ(rows(), Lines{"2:6001:0:100:02"});
}

TEST_F(Commands, AFailureAtEachStatementOfRegenerationReachesTheControlsCaller) {
    setGeneration();
    openWithTwoRows();
    form().press("cmdAutoGetData");
    const std::size_t count = database.statements().size();
    EXPECT_GT(count, 5U);
    std::size_t failures = 0;
    for (std::size_t n = 1; n <= count; ++n) {
        frmCashFlow other;
        other.LoadData(login, collection, true);
        forget();
        database.failStatement(n, Error(4060, "server", "gone"));
        failures += errorNumberOf([&] { form().press("cmdAutoGetData"); }) == 4060 ? 1U : 0U;
    }
    EXPECT_EQ(failures, count - 1) << "a name looked up while the item is searched may fail unnoticed";
}

// Templates

TEST_F(Commands, ATemplateNeedsALine) {
    open();
    form().press("cmdTemplate");
    EXPECT_EQ(factory->journal, Lines{});
    EXPECT_EQ(database.statements(), Lines{});
}

TEST_F(Commands, ANewTemplateTakesAccountSideItemAndDateOfTheLine) {
    setTemplates(false);
    openWithTwoRows();
    form().press("cmdTemplate");
    EXPECT_EQ(templateEvents(), (Lines{"AddNew", "bDataStyle = 0", "cDataSource = 6001", "bDir = 0", "cItemCode = 01",
                                       "dStartDate = 2013-01-05", "Update"}));
    EXPECT_EQ(boxes(), Lines{noticeOf("00064")});
    EXPECT_EQ(rows()[0], "2:6001:0:60.00:01") << "the check of the cells has stored them";
}

TEST_F(Commands, ATemplateStartsOnTheDateOfItsRowWhateverTheVouchersIs) {
    setTemplates(false);
    addTwoRows();
    collection->Item(1)->SetValue("dbill_date", Date(41280.0));
    open();
    form().press("cmdTemplate");
    EXPECT_EQ(templateEvents()[5], "dStartDate = 2013-01-06");
}

TEST_F(Commands, ATemplateOfADebitLineHasTheDebitSide) {
    setTemplates(false);
    addRow(i16(1), "1001", 100.0, 0.0, "02");
    open();
    form().press("cmdTemplate");
    EXPECT_EQ(templateEvents()[3], "bDir = 1");
}

TEST_F(Commands, ATemplateThatExistsIsReplacedAfterAQuestion) {
    setTemplates(true);
    openWithTwoRows();
    messages->answers = {6};
    form().press("cmdTemplate");
    EXPECT_EQ(boxes(), (Lines{"<Z7.CW.GL.CashFlow.00065><Z7.CW.GL.CashFlow.00038>|36|<Z7.CW.GL.CashFlow.00013>",
                              noticeOf("00064")}));
    EXPECT_EQ(templateEvents(),
              (Lines{"bDataStyle = 0", "cDataSource = 6001", "bDir = 0", "cItemCode = 01", "Update"}));
}

TEST_F(Commands, AnAnswerOfNoSavesNoTemplateAndShowsNothingMore) {
    setTemplates(true);
    openWithTwoRows();
    messages->answers = {7};
    form().press("cmdTemplate");
    EXPECT_EQ(boxes().size(), 1U);
    EXPECT_EQ(templateEvents(), Lines{});
}

TEST_F(Commands, ATemplateWantsEveryLineValidAndLeadsToTheFirstCellThatIsNot) {
    openWithTwoRows();
    cells().TextMatrix(2, 4, "");
    form().press("cmdTemplate");
    EXPECT_EQ(boxes(), Lines{noticeOf("00052")});
    EXPECT_EQ(cells().Row(), 2);
    EXPECT_EQ(cells().Col(), 4);
    EXPECT_EQ(factory->journal, (Lines{"SetFocus ", "sendKeys [ ]"}));
    EXPECT_EQ(database.countOf("select * from GL_V_CashItemDataSource"), 0U);
}

TEST_F(Commands, AFailureAtEachStatementOfATemplateReachesTheControlsCaller) {
    setTemplates(true);
    openWithTwoRows();
    const auto press = [&] { form().press("cmdTemplate"); };
    press();
    const std::size_t count = database.statements().size();
    EXPECT_EQ(count, 2U * 5U + 1U);
    for (std::size_t n = 1; n <= count; ++n) {
        forget();
        database.failStatement(n, Error(4060, "server", "gone"));
        EXPECT_ERROR(press(), 4060) << n;
    }
    forget();
    database.failUpdate(Error(2627, "server", "duplicate"));
    EXPECT_ERROR(press(), 2627);
}

// Keys

TEST_F(Commands, KeysStandForThreeButtonsWhateverTheShiftState) {
    openWithTwoRows();
    EXPECT_EQ(form().key(116, 7), 116) << "the code is not cleared";
    EXPECT_EQ(cells().Rows(), 4);
    EXPECT_EQ(form().key(46), 46);
    EXPECT_EQ(cells().Rows(), 3);
    forget();
    cells().finishEditAnswer = 1;
    EXPECT_EQ(form().key(117, 1), 117);
    EXPECT_EQ(factory->journal, (Lines{"FinishEdit ", "SetFocus "})) << "as OK does with an unsettled cell";
    forget();
    for (const std::int32_t code : {0, 13, 27, 45, 112, 115, 118}) {
        EXPECT_EQ(form().key(code), code);
    }
    EXPECT_EQ(factory->journal, Lines{});
    EXPECT_EQ(database.statements(), Lines{});
}

TEST_F(Commands, DeleteInAnOpenEditorIsATextKey) {
    openWithTwoRows();
    EXPECT_TRUE(cells().beginTyping(1, 4, "02"));
    form().key(46);
    EXPECT_EQ(cells().Rows(), 3);
    EXPECT_EQ(boxes(), Lines{});
    EXPECT_TRUE(cells().leaveCell());
    messages->answers = {6, 6};
    form().key(46);
    EXPECT_EQ(cells().Rows(), 2);
    cells().hasEditor = false;
    form().key(46);
    EXPECT_EQ(cells().Rows(), 1);
}

TEST_F(Commands, KeysDoNothingWhereTheButtonsAreDisabled) {
    dialog.ReadOnly(true);
    openWithTwoRows();
    for (const std::int32_t code : {116, 117, 46}) {
        form().key(code);
    }
    EXPECT_EQ(factory->journal, Lines{});
    EXPECT_EQ(boxes(), Lines{});
    EXPECT_EQ(collection->Count(), 2);
}

} // namespace
} // namespace z7::cashflow::test
