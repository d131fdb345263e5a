// The widths of the grid's columns: read when the grid is loaded, written when the dialog closes.

#include "dialog/DialogTest.h"

namespace z7::cashflow::test {
namespace {

class ColumnWidths : public DialogTest {
protected:
    std::vector<Variant> defaults() const { return {3000.0, 1600.0, 500.0, 1500.0, 1200.0, 4000.0, 1000.0, 0.0}; }
    std::string shownWidths() {
        std::string text;
        for (std::int32_t col = 0; col < cells().Cols(); ++col) {
            text += (col == 0 ? "" : " ") + std::to_string(cells().ColWidth(col));
        }
        return text;
    }
    void save() { dialog.SaveMyColWidth(cells(), "frmCashFlow"); }
    Lines written() const {
        Lines lines;
        for (const std::string& entry : database.statements()) {
            if (entry.find("select") == std::string::npos) {
                lines.push_back(entry);
            }
        }
        return lines;
    }
    Lines allWritten(const std::vector<int>& widths) const {
        Lines lines{"con2: BeginTrans", "con2: Delete from GL_myoutput where cauth=N'frmCashFlow' and csqrmode=10 and "
                                        "LocaleId=N'2052'"};
        for (std::size_t i = 0; i < widths.size(); ++i) {
            lines.push_back(
                "con2: insert into GL_myoutput (cauth,csqrmode,cfieldnum,ilength,LocaleId) values('frmCashFlow',10," +
                std::to_string(i) + "," + std::to_string(widths[i]) + ",'2052')");
        }
        lines.push_back("con2: CommitTrans");
        return lines;
    }

    const std::string question = "<Z7.GL.USZZPUB.00571:1>|260|<Z7.GL.USZZPUB.00004>";
};

TEST_F(ColumnWidths, WithoutARecordTheDefaultsStayAndTheFirstCloseStoresAllWithoutAQuestion) {
    open();
    EXPECT_EQ(shownWidths(), "3000 1600 500 1500 1200 4000 1000 0");
    save();
    EXPECT_EQ(database.statements().front(), "con2(2,3): " + widthsQuery + "cfieldnum");
    EXPECT_EQ(written(), allWritten({3000, 1600, 500, 1500, 1200, 4000, 1000, 0}));
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(ColumnWidths, StoredWidthsAreShownInTheOrderOfTheirRecords) {
    setWidths({100.0, 200.0, 300.0, 400.0, 500.0, 600.0, 700.0, i16(0)});
    open();
    EXPECT_EQ(shownWidths(), "100 200 300 400 500 600 700 0");
    EXPECT_EQ(database.droppedRecordsets(), Lines{}) << "closed once it was read";
}

TEST_F(ColumnWidths, ColumnsWithoutARecordGetTheWidthZeroAndTheNextCloseStoresAllWithoutAQuestion) {
    setWidths({100.0, 200.0});
    open();
    EXPECT_EQ(shownWidths(), "100 200 0 0 0 0 0 0");
    save();
    EXPECT_EQ(written(), allWritten({100, 200, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(ColumnWidths, RecordsBeyondTheColumnsAreNotUsedAndTheNextCloseStoresAllWithoutAQuestion) {
    for (const std::size_t records : {std::size_t{9}, std::size_t{150}}) {
        setWidths(std::vector<Variant>(records, 700.0));
        frmCashFlow other;
        other.LoadData(login, collection, true);
        EXPECT_EQ(shownWidths(), "700 700 700 700 700 700 700 700");
        forget();
        other.SaveMyColWidth(cells(), "frmCashFlow");
        EXPECT_EQ(written().size(), 11U) << records;
        EXPECT_EQ(boxes(), Lines{});
    }
}

TEST_F(ColumnWidths, AChangeOf60TwipsIsNoneAndOf61AsksOnce) {
    setWidths(defaults());
    open();
    for (const int change : {60, -60}) {
        forget();
        cells().ColWidth(0, i16(3000 + change));
        save();
        EXPECT_EQ(written(), Lines{}) << change;
        EXPECT_EQ(boxes(), Lines{});
        EXPECT_EQ(database.trace().back(), "Close");
    }
    for (const int change : {61, -61}) {
        forget();
        messages->answers = {6};
        cells().ColWidth(0, i16(3000 + change));
        save();
        EXPECT_EQ(written(), allWritten({3000 + change, 1600, 500, 1500, 1200, 4000, 1000, 0}));
        EXPECT_EQ(boxes(), Lines{question});
        EXPECT_EQ(database.droppedRecordsets(), Lines{}) << "closed before anything is written";
    }
    EXPECT_EQ(login->formattedTexts->asked.front(),
              (std::pair<std::string, std::vector<Variant>>("Z7.GL.USZZPUB.00571", {Variant("")})));
}

TEST_F(ColumnWidths, TwoChangedColumnsGiveOneQuestion) {
    setWidths(defaults());
    open();
    cells().ColWidth(1, 2000);
    cells().ColWidth(5, 100);
    messages->answers = {1}; // any answer except no
    save();
    EXPECT_EQ(boxes(), Lines{question});
    EXPECT_EQ(written().size(), 11U);
}

TEST_F(ColumnWidths, AnAnswerOfNoStoresNothing) {
    setWidths(defaults());
    open();
    cells().ColWidth(1, 2000);
    messages->answers = {7};
    save();
    EXPECT_EQ(boxes(), Lines{question});
    EXPECT_EQ(written(), Lines{});
}

TEST_F(ColumnWidths, ALanguageHasItsOwnWidthsReadAnewForEachStatement) {
    open();
    login->calls.clear();
    login->localeId = 1033;
    database.answerPrefix("select * from GL_myoutput where cauth=N'frmCashFlow' and csqrmode=10 and LocaleId=N'1033'",
                          none("ilength"));
    save();
    EXPECT_EQ(database.countOf("Delete from GL_myoutput where cauth=N'frmCashFlow' and csqrmode=10 and "
                               "LocaleId=N'1033'"),
              1U);
    EXPECT_EQ(std::count(login->calls.begin(), login->calls.end(), "LocaleId"), 10);
}

TEST_F(ColumnWidths, AnyGridAndAnyNameServe) {
    open();
    Lines journal;
    RecordingGrid other(form().events(), journal);
    database.answerPrefix("select * from GL_myoutput where cauth=N'other'", none("ilength"));
    dialog.SaveMyColWidth(other, "other");
    EXPECT_EQ(database.statements(), Lines{}) << "a grid without columns";
    other.Cols(2);
    other.ColWidth(0, 5);
    dialog.SaveMyColWidth(other, "other");
    EXPECT_EQ(
        written()[2],
        "con2: insert into GL_myoutput (cauth,csqrmode,cfieldnum,ilength,LocaleId) values('other',10,0,5,'2052')");
    EXPECT_EQ(written().size(), 5U);
}

TEST_F(ColumnWidths, AFailureWhileDecidingWritesNothingAndSaysNothing) {
    open();
    database.fail(widthsQuery + "cfieldnum", Error(208, "server", "no such table"));
    save();
    EXPECT_EQ(written(), Lines{});
    EXPECT_EQ(boxes(), Lines{});
    std::vector<Variant> broken = defaults();
    broken[3] = Null{};
    setWidths(broken);
    save();
    EXPECT_EQ(written(), Lines{});
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(ColumnWidths, AFailureAtEachStatementOfWritingShowsOneMessageAndRollsBack) {
    open();
    for (std::size_t n = 2; n <= 12; ++n) { // the first one decides
        forget();
        database.failStatement(n, Error(1205, "server", "deadlock"));
        save();
        EXPECT_EQ(boxes(), Lines{"1205  deadlock|0|<Z7.GL.USZZPUB.00004>"}) << n;
        EXPECT_EQ(database.texts().size(), n + 1) << n;
        EXPECT_EQ(database.texts().back(), "RollbackTrans") << n;
    }
}

TEST_F(ColumnWidths, AFailedRollbackIsIgnored) {
    open();
    database.fail("BeginTrans", Error(1, "server", "busy"));
    database.fail("RollbackTrans", Error(2, "server", "no transaction"));
    save();
    EXPECT_EQ(boxes(), Lines{"1  busy|0|<Z7.GL.USZZPUB.00004>"});
}

TEST_F(ColumnWidths, ABrokenRecordLeavesAllDefaults) {
    setWidths({100.0, Null{}, 300.0});
    open();
    EXPECT_EQ(shownWidths(), "3000 1600 500 1500 1200 4000 1000 0");
}

} // namespace
} // namespace z7::cashflow::test
