// Opening the dialog: the parts of the form, the contents of the grid, the queries and their order.

#include "dialog/DialogTest.h"

namespace z7::cashflow::test {
namespace {

class DialogLoad : public DialogTest {
protected:
    const ControlDesign& control(const std::string& name) {
        for (const ControlDesign& design : form().design.controls) {
            if (design.name == name) {
                return design;
            }
        }
        ADD_FAILURE() << "no control " << name;
        return form().design.controls.front();
    }
    static std::string place(const ControlDesign& design) {
        return std::to_string(design.left) + "," + std::to_string(design.top) + " " + std::to_string(design.width) +
               "x" + std::to_string(design.height) + " tab " + std::to_string(design.tabOrder) + " " + design.caption +
               " " + design.fontName + " " + toText(design.fontPoints);
    }
};

TEST_F(DialogLoad, FormHasItsSizeAndItsControlsAtTheirPlaces) {
    load();
    EXPECT_EQ(form().design.name, "frmCashFlow");
    EXPECT_EQ(form().design.caption, "现金流录入修改");
    EXPECT_EQ(form().design.width, 10125);
    EXPECT_EQ(form().design.height, 5505);
    Lines places;
    for (const ControlDesign& design : form().design.controls) {
        places.push_back(design.name + " " + place(design));
    }
    EXPECT_EQ(
        places,
        (Lines{"SuperGrid1 120,120 9855x4815 tab 0  宋体 9", "cmdTemplate 120,5040 1245x330 tab 1 另存取数关系 宋体 9",
               "cmdAutoGetData 1460,5040 1125x330 tab 2 重新取数 宋体 9", "cmdAdd 2680,5040 1125x330 tab 3 增行 宋体 9",
               "cmdInsert 3900,5040 1125x330 tab 4 插行 宋体 9", "cmdDel 5120,5040 1125x330 tab 5 删行 宋体 9",
               "cmdOk 6340,5040 1125x330 tab 6 确定 宋体 9", "cmdCancel 7560,5040 1125x330 tab 7 取消 宋体 9",
               "ZQKeyHookCtrl1 3060,4500 0x0 tab -1   0",
               "ZQFrmCaptionMgr 2130,4410 0x0 tab -1 现金流录入修改 宋体 8.25"}));
    EXPECT_EQ(control("SuperGrid1").controlClass, ControlClass::superGrid);
    EXPECT_EQ(control("cmdOk").controlClass, ControlClass::commandButton);
    EXPECT_EQ(control("ZQKeyHookCtrl1").controlClass, ControlClass::keyHook);
    EXPECT_EQ(control("ZQFrmCaptionMgr").controlClass, ControlClass::frmCaption);
    EXPECT_EQ(static_cast<std::uint32_t>(control("SuperGrid1").foreColorFixed), 0x80000012U);
    EXPECT_EQ(static_cast<std::uint32_t>(control("SuperGrid1").backColorFixed), 0x8000000FU);
    EXPECT_TRUE(control("SuperGrid1").redraw);
    EXPECT_EQ(control("SuperGrid1").editBorderStyle, 0);
}

TEST_F(DialogLoad, CaptionsAreSetInTheUsersLanguageAndEveryControlThatWritesTakesItsFont) {
    login->texts->asked.clear();
    load();
    EXPECT_EQ(form().buttons.at("cmdOk").caption, "<Z7.GL.ZZPZ.00192>");
    EXPECT_EQ(form().buttons.at("cmdCancel").caption, "<Z7.GL.ZZPZ.00352>");
    EXPECT_EQ(form().buttons.at("cmdDel").caption, "<Z7.CW.APAR.ARAPMain.Delete_Row>");
    EXPECT_EQ(form().buttons.at("cmdAdd").caption, "<Z7.CW.APAR.ARAPMain.Add_Line>");
    EXPECT_EQ(form().buttons.at("cmdInsert").caption, "<Z7.CW.GL.CashFlow.Z790.00001>");
    EXPECT_EQ(form().buttons.at("cmdAutoGetData").caption, "<Z7.CW.GL.CashFlow.00207>");
    EXPECT_EQ(form().buttons.at("cmdTemplate").caption, "<Z7.CW.GL.CashFlow.00208>");
    EXPECT_EQ(form().title.title, "<Z7.CW.GL.CashFlow.00209>");
    EXPECT_EQ(
        login->texts->asked,
        (Lines{"Z7.GL.ZZPZ.00192", "Z7.GL.ZZPZ.00352", "Z7.CW.APAR.ARAPMain.Delete_Row", "Z7.CW.APAR.ARAPMain.Add_Line",
               "Z7.CW.GL.CashFlow.Z790.00001", "Z7.CW.GL.CashFlow.00207", "Z7.CW.GL.CashFlow.00208",
               "Z7.CW.GL.CashFlow.00209", "Z7.CW.GL.ZWSQL.EndItem.frmXmDlmx.Picture1.Toolbar1.Button7_7.Caption",
               "Z7.CW.GL.CashFlow.00032", "Z7.CW.GL.CashFlow.00033", "Z7.CW.GL.CashFlow.00034",
               "Z7.CW.GL.CashFlow.00035", "Z7.CW.GL.CashFlow.00036", "Z7.CW.GL.CashFlow.00037"}));
    EXPECT_EQ(factory->journal.front(), "font Tahoma"); // of the grid, although the key hook before it has no font
    EXPECT_EQ(form().title.font, "Tahoma");
    for (const auto& [name, button] : form().buttons) {
        EXPECT_EQ(button.font, "Tahoma") << name;
    }
}

TEST_F(DialogLoad, GridIsSetUpInItsOrder) {
    load();
    EXPECT_EQ(factory->journal, (Lines{"font Tahoma",
                                       "GridMode 1",
                                       "SetDefaultColor 15263976",
                                       "FixedRows 1",
                                       "FixedCols 0",
                                       "ColAlignment 0 1",
                                       "ColAlignment 1 1",
                                       "ColAlignment 4 1",
                                       "SetColumnEdit 0,120,0,1",
                                       "SetColumnEdit 1,40,1,1",
                                       "SetColumnEdit 2,8,0,1",
                                       "SetColumnEdit 3,15,2,4,2",
                                       "SetColumnEdit 4,80,1,1",
                                       "SetColumnEdit 5,255,0,1",
                                       "GridReadOnly false",
                                       "BackColorSel 10446406",
                                       "ForeColorSel 16777215",
                                       "BackColorBkg 16777215",
                                       "GridColor 11447982",
                                       "GridColorFixed 8947848",
                                       "ColSel 4"}));
    EXPECT_EQ(cells().line(0), "<Z7.CW.GL.ZWSQL.EndItem.frmXmDlmx.Picture1.Toolbar1.Button7_7.Caption>"
                               "|<Z7.CW.GL.CashFlow.00032>|<Z7.CW.GL.CashFlow.00033>|<Z7.CW.GL.CashFlow.00034>"
                               "|<Z7.CW.GL.CashFlow.00035>|<Z7.CW.GL.CashFlow.00036>|<Z7.CW.GL.CashFlow.00037>|guid");
    Lines widths;
    for (std::int32_t col = 0; col < 8; ++col) {
        widths.push_back(toText(cells().ColWidth(col)));
    }
    EXPECT_EQ(widths, (Lines{"3000", "1600", "500", "1500", "1200", "4000", "1000", "0"}));
}

TEST_F(DialogLoad, AnEmptyCollectionShowsOnlyTheHeaderAndTheCursorInTheItemsColumn) {
    load();
    EXPECT_EQ(cells().Rows(), 1);
    EXPECT_EQ(cells().Row(), 0);
    EXPECT_EQ(cells().Col(), 4);
    form().press("cmdCancel"); // without a document of the rows there is nothing to read back
    EXPECT_EQ(rows(), Lines{});
}

TEST_F(DialogLoad, RowsShowWithTheSummaryOfTheirLines) {
    addRow(i16(1), "1001", 1100.0, 0.0, "01");
    addRow(i16(2), "6001", 0.0, 60.0, "99");
    load();
    EXPECT_EQ(cells().text().substr(cells().text().find('\n') + 1),
              "> *digest|1001|*借|1,100.00|01|*item 01|1|" + collection->Item(1)->key() +
                  "\n  *digest|6001|*贷|60.00|99|*|2|" + collection->Item(2)->key() + "\nat 1,4");
}

TEST_F(DialogLoad, DirectionIsInTheUsersLanguage) {
    login->answers.languageTag = "en";
    addRow(i16(1), "1001", 100.0, 0.0, "01");
    addRow(i16(2), "6001", Null{}, 60.0, "01");
    load();
    EXPECT_EQ(cells().TextMatrix(1, 2), "<Z7.GL.USZZPUB.00011>");
    EXPECT_EQ(cells().TextMatrix(2, 2), "<Z7.GL.USZZPUB.00012>");
}

TEST_F(DialogLoad, ARowWithoutAmountsIsACreditOfZeroOrOfNothing) {
    addRow(i16(1), "1001", 0.0, 0.0, "01");
    addRow(i16(2), "6001", Null{}, Null{}, "01");
    load();
    EXPECT_EQ(cells().TextMatrix(1, 2), "贷");
    EXPECT_EQ(cells().TextMatrix(1, 3), "0.00");
    EXPECT_EQ(cells().TextMatrix(2, 2), "贷");
    EXPECT_EQ(cells().TextMatrix(2, 3), "");
}

TEST_F(DialogLoad, AmountsThatAreTextsShowAsTheirNumbers) {
    addRow("1", "1001", "1234.5", "0", "01");
    load();
    EXPECT_EQ(cells().TextMatrix(1, 2), "借");
    EXPECT_EQ(cells().TextMatrix(1, 3), "1,234.50");
}

TEST_F(DialogLoad, FieldsThatAreNullLeaveTheirCellsEmptyAndAskForNoItem) {
    addRow(i16(1), Null{}, 5.0, Null{}, Null{});
    load();
    EXPECT_EQ(cells().line(1), "digest||借|5.00|||1|" + collection->Item(1)->key());
    EXPECT_EQ(database.countOf("select citemname"), 0U);
}

TEST_F(DialogLoad, ALineWithoutAnItemDoesNotKeepTheOneThatStoodThereBefore) {
    addTwoRows();
    load();
    collection = CashFlowCollection::Create();
    collection->UpdateCol(1, 2, 5, Date(41279.0));
    collection->VoucherTable("gl_accvouch");
    addRow(i16(2), "6001", 0.0, 60.0, Null{});
    load();
    EXPECT_EQ(cells().line(1), "digest|6001|贷|60.00|||2|" + collection->Item(1)->key());
    EXPECT_EQ(cells().Rows(), 2);
}

TEST_F(DialogLoad, StatementsRunOnTheirSessionsInOrder) {
    modPublic::SetIYear(2011);
    addRow(i16(1), "1001", 100.0, 0.0, "01");
    addRow(i16(2), "6001", 0.0, 60.0, "02");
    load();
    const std::string summary = "con1(2,3): select cdigest from gl_accvouch where iyear=2011 and iperiod=1 and "
                                "isignseq=2 and ino_id=5 and inid=";
    EXPECT_EQ(database.statements(),
              (Lines{"con1: Open", "con2: Open", "con2: " + widthsQuery + "cFieldNum",
                     "con2: select (sum(md) -sum(mc)) as mysum  from gl_accvouch as voucherTemp  inner join CODE on  "
                     "code.iyear=2011 and   voucherTemp.iYear=CODE.iYear and   voucherTemp.ccode=CODE.ccode where "
                     "voucherTemp.iperiod=1 and voucherTemp.isignseq =2 and voucherTemp.ino_id=5  and CODE.bend=1 and "
                     "CODE.bclose=0 and CODE.bcashitem=1 group by voucherTemp.iperiod,isignseq,ino_id",
                     "own(0,1,3): select citemname from fitemss98 where citemcode=N'01'", summary + "1",
                     "own(0,1,3): select citemname from fitemss98 where citemcode=N'02'", summary + "2"}));
    EXPECT_EQ(database.trace().back(), "con1: Close");
    EXPECT_EQ(database.openRecordsets(), Lines{});
}

TEST_F(DialogLoad, AKeylessTableIsAskedByLineNumberAlone) {
    collection->VoucherTable("sales");
    addRow(i16(7), "1001", 100.0, 0.0, "01");
    load();
    EXPECT_EQ(database.countOf("select cdigest from sales where inid =7"), 1U);
}

TEST_F(DialogLoad, ALineThatIsGoneLeavesTheSummaryEmptyAndTheRowShows) {
    database.answerPrefix("select cdigest from ", none("cdigest"));
    addRow(i16(1), "1001", 100.0, 0.0, "01");
    load();
    EXPECT_EQ(cells().line(1), "|1001|借|100.00|01|item 01|1|" + collection->Item(1)->key());
}

TEST_F(DialogLoad, ASummaryThatIsNullShowsEmpty) {
    database.answerPrefix("select cdigest from ", one("cdigest", Null{}));
    addRow(i16(1), "1001", 100.0, 0.0, "01");
    load();
    EXPECT_EQ(cells().TextMatrix(1, 0), "");
}

TEST_F(DialogLoad, ARowWithoutALineNumberInAKeylessTableEndsInTheServersError) {
    collection->VoucherTable("sales");
    addRow(Null{}, "1001", 100.0, 0.0, "01");
    database.fail("select cdigest from sales where inid =", Error(102, "server", "syntax"));
    EXPECT_ERROR(load(), 102);
}

TEST_F(DialogLoad, ARowWithoutALineNumberInAKeyedTableLeavesItsPlaceEmpty) {
    addRow(Null{}, "1001", 100.0, 0.0, "01");
    database.fail("select cdigest from gl_accvouch where iyear=2013" + keyCondition + " and inid=",
                  Error(102, "server", "syntax"));
    EXPECT_ERROR(load(), 102);
}

TEST_F(DialogLoad, NothingHappensWithoutACollection) {
    dialog.LoadData(login, nullptr, true);
    EXPECT_EQ(factory->forms, 0);
    EXPECT_EQ(connections->made, 0);
    EXPECT_EQ(dialog.CashFlowCol(), nullptr);
}

TEST_F(DialogLoad, ReadOnlyDisablesEveryButtonButCancelAndEveryEdit) {
    dialog.ReadOnly(true);
    EXPECT_TRUE(dialog.ReadOnly());
    addTwoRows();
    load();
    for (const auto& [name, button] : form().buttons) {
        EXPECT_EQ(button.enabled, name == "cmdCancel") << name;
    }
    EXPECT_FALSE(cells().type(1, 4, "02"));
    EXPECT_EQ(cells().TextMatrix(1, 4), "01");
}

TEST_F(DialogLoad, WithoutReadOnlyEveryButtonIsEnabled) {
    factory->onCreate = [](RecordingForm& made) { made.buttons.at("cmdOk").enabled = false; };
    load();
    for (const auto& [name, button] : form().buttons) {
        EXPECT_TRUE(button.enabled) << name;
    }
}

TEST_F(DialogLoad, AGridOfAnotherTypeKeepsItsColours) {
    for (const char* type : {"MSFlexGrid", "MSHFlexGrid", "ZQFlexGridCtl", "SUPERGRID", "TrueDBGrid"}) {
        frmCashFlow other;
        factory->onCreate = [&](RecordingForm& made) { made.cells.type_ = type; };
        factory->journal.clear();
        other.LoadData(login, collection, true);
        const auto& journal = factory->journal;
        EXPECT_EQ(std::find(journal.begin(), journal.end(), "GridColor 11447982") != journal.end(),
                  std::string(type) != "TrueDBGrid")
            << type;
    }
}

TEST_F(DialogLoad, AColourThatTheGridRefusesIsIgnored) {
    factory->onCreate = [](RecordingForm& made) {
        made.cells.beforeOperation = [](const std::string& operation) {
            if (operation == "BackColorSel") {
                throw Error(438, "grid", "no such colour");
            }
        };
    };
    load();
    EXPECT_NE(std::find(factory->journal.begin(), factory->journal.end(), "GridColorFixed 8947848"),
              factory->journal.end());
}

TEST_F(DialogLoad, AFailingStatementReachesTheCallerAndNothingIsShown) {
    addTwoRows();
    std::vector<int> numbers;
    for (std::size_t n = 1; n <= 8; ++n) {
        frmCashFlow other;
        database.clearJournal();
        database.failStatement(n, Error(4060, "server", "gone"));
        numbers.push_back(errorNumberOf([&] { other.LoadData(login, collection, true); }));
    }
    EXPECT_EQ(numbers, (std::vector<int>{4060, 4060, 0, 4060, 4060, 4060, 4060, 4060})) << "the third reads widths";
    EXPECT_EQ(std::find(factory->journal.begin(), factory->journal.end(), "showModal"), factory->journal.end());
}

TEST_F(DialogLoad, WidthsThatCannotBeReadDoNotStopIt) {
    database.failPrefix("select * from GL_myoutput", Error(208, "server", "no such table"));
    database.fail(widthsQuery + "cFieldNum", Error(208, "server", "no such table"));
    load();
    EXPECT_EQ(cells().ColWidth(5), 4000);
}

TEST_F(DialogLoad, WithoutFactoriesOrALoginAnObjectIsMissing) {
    modPublic::context().dialogFactory = nullptr;
    EXPECT_ERROR(load(), errors::objectNotSet);
    modPublic::context().connectionFactory = nullptr;
    EXPECT_ERROR(load(), errors::objectNotSet);
    modPublic::context().connectionFactory = connections;
    modPublic::SetLogin(nullptr);
    EXPECT_ERROR(load(), errors::objectNotSet);
}

TEST_F(DialogLoad, AVoucherNumberBeyond16BitsOverflows) {
    collection->UpdateCol(1, 2, 40000, Date(41279.0));
    EXPECT_ERROR(load(), errors::overflow);
}

} // namespace
} // namespace z7::cashflow::test
