// OK: refreshes the rows, checks them and closes only if both checks pass.

#include "dialog/DialogTest.h"

namespace z7::cashflow::test {
namespace {

class Confirm : public DialogTest {
protected:
    Confirm() {
        database.answerPrefix("select * from dsign", one("csign", "kind"));
        setVoucher("6001", "6002");
        database.answerPrefix("select ccode from code where", none("ccode"));
    }
    void setVoucher(const std::string& secondAccount, const std::string& thirdAccount) {
        database.answerPrefix(lines, {{"iperiod", "isignseq", "iNo_id", "inid", "ccode", "cdept_id"},
                                      {{std::uint8_t{1}, i16(2), std::int32_t{5}, i16(1), "1001", "D1"},
                                       {std::uint8_t{1}, i16(2), std::int32_t{5}, i16(2), secondAccount, "D2"},
                                       {std::uint8_t{1}, i16(2), std::int32_t{5}, i16(3), thirdAccount, "D3"}},
                                      {}});
    }
    void openWithTwoRows(bool blnCheckCF = true) {
        addTwoRows();
        open(blnCheckCF);
    }
    [[nodiscard]] bool isClosed() { return form().unloads > 0; }
    /// "the n-th statement begins with" of the journal, by session.
    Lines beginnings() const {
        Lines list;
        for (const std::string& text : database.statements()) {
            list.push_back(text.substr(0, 30));
        }
        return list;
    }

    const std::string lines = "select  code.iYear";
};

TEST_F(Confirm, RowsThatFitCloseTheDialogInThisOrderOfStatements) {
    openWithTwoRows();
    form().press("cmdOk");
    EXPECT_EQ(form().unloads, 1) << "without the pass of a Cancel";
    EXPECT_EQ(boxes(), Lines{});
    Lines first = beginnings();
    first.resize(7);
    EXPECT_EQ(first, (Lines{"own(0,1,3): select * from dsig", "con2: select  code.iYear,iPeri",
                            "con2: select  code.iYear,iPeri", "con2: select (sum(md) -sum(mc)",
                            "con2: select  code.iYear,iPeri", "con2: select ccode from code w",
                            "con2: select ccode from code w"}));
    EXPECT_EQ(database.texts()[7], widthsQuery + "cfieldnum") << "the widths come when the checks have passed";
    EXPECT_EQ(dialog.CashFlowCol(), collection);
}

TEST_F(Confirm, RowsAreBroughtUpToDateFromTheVoucherFirst) {
    openWithTwoRows();
    form().press("cmdOk");
    EXPECT_EQ(toText(collection->Item(1)->Item("cdept_id")), "D2");
    EXPECT_EQ(toText(collection->Item(2)->Item("csign")), "kind");
}

TEST_F(Confirm, WaitsForACellThatIsNotSettled) {
    openWithTwoRows();
    cells().finishEditAnswer = 1;
    form().press("cmdOk");
    EXPECT_EQ(factory->journal, (Lines{"FinishEdit ", "SetFocus "}));
    EXPECT_EQ(database.statements(), Lines{});
    EXPECT_FALSE(isClosed());
}

TEST_F(Confirm, TakesTheRowOfALineThatTheGridDroppedAlong) {
    openWithTwoRows();
    form().press("cmdAdd");
    form().press("cmdOk");
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(rows(), (Lines{"2:6001:0:60:01", "3:6002:0:40:01"}));
}

TEST_F(Confirm, AnIncompleteRowIsNamedAndTheCursorGoesToItsCell) {
    addTwoRows();
    collection->Item(2)->SetValue("cCashItem", "");
    open();
    form().press("cmdOk");
    EXPECT_EQ(boxes(), Lines{noticeOf("00020")}) << "without the line and the column";
    EXPECT_EQ(cells().Row(), 2);
    EXPECT_EQ(cells().Col(), 4);
    EXPECT_EQ(factory->journal, (Lines{"FinishEdit ", "SetFocus ", "sendKeys [ ]"}));
    EXPECT_FALSE(isClosed());
    EXPECT_EQ(toText(collection->Item(1)->Item("cdept_id")), "D2") << "the rows stay refreshed";
}

TEST_F(Confirm, AReasonWithoutAPlaceKeepsTheLineAndGoesToTheFirstColumn) {
    openWithTwoRows();
    setVoucher("6009", "6002");
    cells().Row(2);
    form().press("cmdOk");
    EXPECT_EQ(boxes(), Lines{noticeOf("00001")});
    EXPECT_EQ(cells().Row(), 2);
    EXPECT_EQ(cells().Col(), 0);
    EXPECT_FALSE(isClosed());
}

TEST_F(Confirm, ALineWithoutANumberStopsTheSearchForTheCell) {
    addTwoRows();
    collection->Item(2)->SetValue("cCashItem", Null{});
    open();
    cells().TextMatrix(1, 6, "x");
    form().press("cmdOk");
    EXPECT_EQ(boxes(), Lines{noticeOf("00020")});
    EXPECT_EQ(cells().Row(), 1);
    EXPECT_EQ(cells().Col(), 4);
}

TEST_F(Confirm, ALineThatIsNowhereInTheGridLeavesTheCursorsLine) {
    addTwoRows();
    collection->Item(2)->SetValue("cCashItem", Null{});
    open();
    cells().TextMatrix(2, 6, "9");
    cells().Row(1);
    form().press("cmdOk");
    EXPECT_EQ(cells().Row(), 1) << "a row that does not exist is refused by the grid";
    EXPECT_EQ(cells().Col(), 4);
    EXPECT_EQ(factory->journal, (Lines{"FinishEdit ", "SetFocus ", "sendKeys [ ]"}));
}

TEST_F(Confirm, DifferentSumsAreReportedAndKeepTheDialogOpen) {
    openWithTwoRows();
    setSum(99.0);
    form().press("cmdOk");
    EXPECT_EQ(boxes(), Lines{notice("<Z7.CW.GL.CashFlow.00003><Z7.CW.GL.CashFlow.00004>99.00\r\n"
                                    "<Z7.CW.GL.CashFlow.00006><Z7.CW.GL.CashFlow.00004>100.00")});
    EXPECT_FALSE(isClosed());
    EXPECT_EQ(factory->journal, (Lines{"FinishEdit "})) << "the cursor stays";
}

TEST_F(Confirm, AnEmptyGridClosesWithoutASumCheckUnlessTheCallerAsksForIt) {
    open(false);
    form().press("cmdOk");
    EXPECT_EQ(form().unloads, 1) << "without the pass of a Cancel";
    EXPECT_EQ(database.countOf("select (sum(md)"), 0U);
}

TEST_F(Confirm, AnEmptyGridWithTheSumCheckKeepsAVoucherWithCashOpen) {
    open(true);
    form().press("cmdOk");
    EXPECT_FALSE(isClosed());
    EXPECT_EQ(boxes().size(), 1U);
    setSum(0.0);
    form().press("cmdOk");
    EXPECT_TRUE(isClosed());
}

TEST_F(Confirm, RowsAreComparedEvenWhereTheCallerDoesNotAskForIt) {
    openWithTwoRows(false);
    setSum(99.0);
    form().press("cmdOk");
    EXPECT_FALSE(isClosed());
}

TEST_F(Confirm, ARowWithoutALineNumberMakesTheChecksFailSilentlyAndKeepsTheDialogOpen) {
    openWithTwoRows();
    form().press("cmdInsert"); // a blank line before the first
    cells().finishEditAnswer = 2;
    forget();
    form().press("cmdOk");
    EXPECT_FALSE(isClosed());
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(Confirm, AFailingStatementLeavesItsStepAndNeverClosesUnchecked) {
    openWithTwoRows();
    const Error gone(4060, "server", "gone");
    const std::vector<bool> closes{true, true, true, false, false, false, false};
    for (std::size_t n = 1; n <= closes.size();
         ++n) { // the kind and the refresh, a first check, then the check of the sums
        frmCashFlow other;
        factory->journal.clear();
        other.LoadData(login, collection, true);
        forget();
        database.failStatement(n, gone);
        form().press("cmdOk");
        EXPECT_EQ(isClosed(), closes[n - 1]) << n;
        EXPECT_EQ(boxes(), Lines{}) << n;
    }
}

TEST_F(Confirm, ARowThatIsRefusedKeepsTheDialogOpenEvenWhereItsMessageCannotBeShown) {
    addTwoRows();
    collection->Item(2)->SetValue("cCashItem", "");
    open();
    modPublic::context().messageBoxObject = nullptr;
    modPublic::context().createMessageBox = []() -> std::shared_ptr<MessageBox> { throw Error(7, "box", "no box"); };
    form().press("cmdOk");
    EXPECT_FALSE(isClosed());
    EXPECT_EQ(cells().Row(), 2);
    EXPECT_EQ(factory->journal, (Lines{"FinishEdit ", "SetFocus ", "sendKeys [ ]"}));
    EXPECT_EQ(database.countOf("select (sum(md)"), 0U) << "the sums are not looked at";
}

TEST_F(Confirm, AnErrorOfTheGridWhileSettlingLeavesThatStepAlone) {
    openWithTwoRows();
    cells().beforeOperation = [](const std::string& operation) {
        if (operation == "FinishEdit") {
            throw Error(5, "grid", "broken");
        }
    };
    form().press("cmdOk");
    EXPECT_TRUE(isClosed());
}

TEST_F(Confirm, AFailingWidthDoesNotKeepTheDialogOpen) {
    openWithTwoRows();
    database.fail(widthsQuery + "cfieldnum", Error(208, "server", "no such table"));
    form().press("cmdOk");
    EXPECT_TRUE(isClosed());
}

} // namespace
} // namespace z7::cashflow::test
