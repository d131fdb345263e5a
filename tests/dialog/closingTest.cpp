// How the dialog closes: by OK, by Cancel, by its close box, and the state afterwards.

#include "dialog/DialogTest.h"

namespace z7::cashflow::test {
namespace {

class DialogClosing : public DialogTest {
protected:
    // Two lines that were added without an account, and one with an account.
    void openWithAnUnfinishedLine() {
        addTwoRows();
        open();
        form().press("cmdAdd");
        cells().finishEditAnswer = 2; // a grid that keeps the line
        forget();
    }
    void acceptChecks() {
        database.answerPrefix("select * from dsign", none("csign"));
        database.answerPrefix("select  code.iYear", {{"iperiod", "isignseq", "iNo_id", "inid", "ccode"},
                                                     {{std::uint8_t{1}, i16(2), std::int32_t{5}, i16(2), "6001"},
                                                      {std::uint8_t{1}, i16(2), std::int32_t{5}, i16(3), "6002"}},
                                                     {}});
        database.answerPrefix("select ccode from code where", none("ccode"));
    }
};

TEST_F(DialogClosing, CancelRestoresTheRowsClearsChangedAndClosesTheConnection) {
    addTwoRows();
    open();
    collection->Item(1)->SetValue("mc", 7.0);
    collection->Remove(2);
    form().press("cmdCancel");
    EXPECT_EQ(rows(), (Lines{"2:6001:0:60:01", "3:6002:0:40:01"}));
    EXPECT_FALSE(collection->Changed());
    EXPECT_EQ(form().unloads, 1);
    EXPECT_EQ(database.trace().back(), "con2: Close");
    EXPECT_EQ(dialog.CashFlowCol(), collection) << "the same collection";
}

TEST_F(DialogClosing, CancelOfADialogThatWasOpenedEmptyLeavesAnEmptyCollectionUnchanged) {
    open();
    form().press("cmdAdd");
    EXPECT_EQ(collection->Count(), 1);
    form().press("cmdCancel");
    EXPECT_EQ(collection->Count(), 0);
    EXPECT_FALSE(collection->Changed());
}

TEST_F(DialogClosing, CancelStoresTheWidthsBeforeItUnloads) {
    open();
    form().press("cmdCancel");
    EXPECT_EQ(database.countOf("insert into GL_myoutput"), 8U);
    EXPECT_EQ(database.texts().front(), widthsQuery + "cfieldnum");
}

TEST_F(DialogClosing, TheCloseBoxCancelsAndItsOwnPassFindsNoConnectionToStoreWidthsOn) {
    addTwoRows();
    open();
    collection->Remove(1);
    std::size_t readsOfWidths = 0;
    cells().beforeOperation = [&](const std::string& operation) { readsOfWidths += operation == "ColWidth" ? 1 : 0; };
    form().closeBox();
    EXPECT_EQ(rows(), (Lines{"2:6001:0:60:01", "3:6002:0:40:01"}));
    EXPECT_FALSE(collection->Changed());
    EXPECT_EQ(form().unloads, 2) << "the pass of Cancel and the outer one";
    EXPECT_EQ(readsOfWidths, 16U) << "both passes go about the widths";
    EXPECT_EQ(database.countOf(widthsQuery), 1U) << "and the outer one gets no further";
    EXPECT_EQ(database.countOf("insert into GL_myoutput"), 8U);
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(DialogClosing, ALineLeftWithoutAnAccountDisappearsOnOk) {
    openWithAnUnfinishedLine();
    acceptChecks();
    EXPECT_EQ(collection->Count(), 3);
    collection->Item(3)->SetValue("inid", i16(2)); // so that the checks do not stop at it
    collection->Item(3)->SetValue("ccode", "6001");
    collection->Item(3)->SetValue("cCashItem", "01");
    collection->Item(3)->SetValue("mc", 0.0);
    form().press("cmdOk");
    EXPECT_EQ(form().unloads, 1);
    EXPECT_EQ(rows(), (Lines{"2:6001:0:60:01", "3:6002:0:40:01"}));
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(DialogClosing, ALineLeftWithoutAnAccountIsRestoredAwayOnCancel) {
    openWithAnUnfinishedLine();
    form().press("cmdCancel");
    EXPECT_EQ(rows(), (Lines{"2:6001:0:60:01", "3:6002:0:40:01"}));
    EXPECT_EQ(cells().TextMatrix(3, 1), "") << "the line itself was still there";
}

TEST_F(DialogClosing, ARowWithoutAnAccountFromTheBeginningSurvivesCancel) {
    addRow(i16(2), Null{}, 0.0, 60.0, "01");
    open();
    form().press("cmdCancel");
    EXPECT_EQ(rows(), Lines{"2::0:60:01"});
}

TEST_F(DialogClosing, ReadOnlyStillClosesByCancelAndStoresTheWidths) {
    dialog.ReadOnly(true);
    addTwoRows();
    open();
    form().press("cmdCancel");
    EXPECT_EQ(form().unloads, 1);
    EXPECT_EQ(database.countOf("insert into GL_myoutput"), 8U);
    EXPECT_EQ(rows(), (Lines{"2:6001:0:60:01", "3:6002:0:40:01"}));
}

TEST_F(DialogClosing, FailuresOfUnloadingAreIgnored) {
    openWithAnUnfinishedLine();
    acceptChecks();
    cells().TextMatrix(3, 7, "unknown");
    cells().TextMatrix(2, 1, "");
    for (const auto& row : *collection) {
        row->SetValue("inid", i16(2));
        row->SetValue("ccode", "6001");
        row->SetValue("cCashItem", "01");
        row->SetValue("md", 0.0);
        row->SetValue("mc", 0.0);
    }
    setSum(0.0);
    form().press("cmdOk");
    EXPECT_EQ(form().unloads, 1);
    EXPECT_EQ(collection->Count(), 2) << "line 2 lost its row, an unknown key did no harm";
}

TEST_F(DialogClosing, AClosedConnectionIsNotClosedAgain) {
    addTwoRows();
    open();
    setWidths({3000.0, 1600.0, 500.0, 1500.0, 1200.0, 4000.0, 1000.0, 0.0});
    form().press("cmdCancel");
    form().closeBox();
    EXPECT_EQ(std::count(database.trace().begin(), database.trace().end(), "con2: Close"), 1);
}

TEST_F(DialogClosing, AnOriginalThatCannotBeReadBackKeepsTheDialogOpen) {
    addTwoRows();
    for (const auto& row : *collection) {
        row->SetValue("cDefine1", std::string("\x01"));
    }
    open();
    EXPECT_ERROR(form().closeBox(), errors::badCollectionXml);
    EXPECT_EQ(form().unloads, 0);
}

TEST_F(DialogClosing, AnErrorOfAnEventIsShownUnderTheDialogsTitle) {
    open();
    form().events().eventFailed(Error(102, "server", "what went wrong"));
    EXPECT_EQ(boxes(), Lines{"what went wrong|16|<Z7.CW.GL.CashFlow.00013>"});
}

} // namespace
} // namespace z7::cashflow::test
