#include "providers/ProviderTest.h"
#include "z7cashflow/model/schemaDocument.h"

namespace z7::cashflow::test {
namespace {

using namespace ledger;

/// The voucher "OUT" in a table of its own, "mine", which is 1/2/5 in the ledger.
class Outside : public ProviderTest {
protected:
    Outside() { prepare(world); }

    static void prepare(Ledger& on) {
        on.database.answer(outsideKey(), {{"iperiod", "isignseq", "ino_id", "dbill_date"},
                                          {{std::uint8_t{1}, i16(2), std::int32_t{5}, Date(41279.0)}},
                                          {}});
        on.database.answer(
            outsideLines("mine"),
            {{"iYear", "inid", "md", "mc", "ccode", "ccashitem_id", "citem_class", "citem_id", "bCashItem"},
             {{i16(2013), i16(1), 100.0, 0.0, "1001", Null{}, Null{}, Null{}, true},
              {i16(2013), i16(2), 0.0, 100.0, "6001", "55", "98", "01", false}},
             {}});
        on.database.answerPrefix("select * from mine where  iPeriod=1 and iSignSeq=2 and iNo_id=5", {{"inid"}, {}, {}});
    }
    Collection collectionOf(const std::string& xml) {
        auto rows = world.provider.CreateCashFlowCollection();
        rows->Load(xml);
        return rows;
    }
    bool save(std::string* xml, bool* blnCheckCF = nullptr) {
        return world.out.SaveCashFlowCol(world.connection, "mine", "OUT", xml, blnCheckCF);
    }
    static std::string noRows(const std::string& key = "iperiod='0' isignseq='0' ino_id='0'") {
        return "<root " + key + ">" + schemaDocument() + "<rows>\r\n</rows></root>";
    }
    /// Rows for the ledger voucher as XML.
    std::string xmlOf(const Variant& inid, double credit) {
        const Collection rows = hostCollection(world);
        addRow(rows, inid, "6001", 0.0, credit);
        return rows->Save();
    }
    static std::string lineOf(const std::string& inid) {
        return "select * from mine where  iPeriod=1 and iSignSeq=2 and iNo_id=5 and inid=" + inid;
    }

    const std::string deleteStored =
        "delete from gl_cashtable where iyear=2013 and  iperiod=1 and isignseq=2 and ino_id=5";
};

TEST_F(Outside, CreateReturnsTheRowsOfItsLines) {
    const std::string xml = world.out.CreateCashFlowColFromDB(world.connection, "mine", "OUT");
    EXPECT_EQ(rowsOf(collectionOf(xml)), Lines{"2:0:100:55"}) << "the line's own item goes before its item class";
    EXPECT_TRUE(xml.starts_with("<root iperiod='1' isignseq='2' ino_id='5'>"));
    EXPECT_EQ(collectionOf(xml)->Item(1)->Item("dbill_date"), Variant("2013-01-05"));
    EXPECT_EQ(world.statements(), (Lines{run(outsideHaveCash("mine")), run(outsideLines("mine")), open(option("bXJLL")),
                                         own(itemName("55")), own(itemName("55")), run(outsideKey()), own(kind()),
                                         run(keylessLines("mine"))}));
    EXPECT_EQ(debugTexts, (Lines{"111", "222", "itemCode:55"}));
}

TEST_F(Outside, CreateLooksForATemplateOnTheLinesOwnDate) {
    const auto answerWithDate = [&](const Variant& date) {
        world.database.answer(outsideLines("mine"),
                              {{"inid", "md", "mc", "ccode", "bCashItem", "citem_class", "ccashitem_id", "dbill_date"},
                               {{i16(1), 100.0, 0.0, "1001", true, Null{}, Null{}, date},
                                {i16(2), 0.0, 100.0, "6001", false, Null{}, Null{}, date}},
                               {}});
    };
    world.database.answer(itemTemplate("6001", false), {{"cItemCode"}, {{"21"}}, {}});
    answerWithDate(Date(41270.0));
    EXPECT_EQ(rowsOf(collectionOf(world.out.CreateCashFlowColFromDB(world.connection, "mine", "OUT"))),
              Lines{"2:0:100:21"});
    answerWithDate(Null{});
    EXPECT_ERROR(world.out.CreateCashFlowColFromDB(world.connection, "mine", "OUT"), errors::invalidNull);
    errorCameOut();
}

TEST_F(Outside, CreateReturnsTheEmptyTextWithoutACashAccount) {
    world.haveCash(false);
    EXPECT_EQ(world.out.CreateCashFlowColFromDB(world.connection, "mine", "OUT"), "");
    EXPECT_EQ(world.statements(), Lines{run(outsideHaveCash("mine"))});
}

TEST_F(Outside, CreateReturnsNoRowsIfCashCancelsOut) {
    world.database.answer(outsideLines("mine"),
                          {{"inid", "md", "mc", "ccode", "bCashItem"},
                           {{i16(1), 100.0, 0.0, "1001", true}, {i16(2), 0.0, 100.0, "1002", true}},
                           {}});
    EXPECT_EQ(world.out.CreateCashFlowColFromDB(world.connection, "mine", "OUT"), noRows());
    EXPECT_EQ(world.statements(), (Lines{run(outsideHaveCash("mine")), run(outsideLines("mine"))}));
}

TEST_F(Outside, ReadReturnsTheStoredRows) {
    world.setStored({"88"});
    const std::string xml = world.out.GetCashFlowColFromDB(world.connection, "mine", "OUT");
    EXPECT_EQ(rowsOf(collectionOf(xml)), Lines{"2:0:100:88"});
    EXPECT_EQ(collectionOf(xml)->Item(1)->Item("dbill_date"), Variant("2013-01-05"));
    EXPECT_EQ(world.statements(), (Lines{run(outsideHaveCash("mine")), run(outsideKey()), run(outsideKey()),
                                         run(storedRows()), open(option("bXJLL")), own(itemName("88"))}));
}

TEST_F(Outside, ReadGeneratesInTheLedgersWayWhereNothingIsStored) {
    const std::string xml = world.out.GetCashFlowColFromDB(world.connection, "mine", "OUT");
    EXPECT_EQ(rowsOf(collectionOf(xml)), Lines{"2:0:100:01"}) << "the ledger's read does not know the line's own item";
    EXPECT_EQ(world.statements(),
              (Lines{run(outsideHaveCash("mine")), run(outsideKey()), run(outsideKey()), run(storedRows()),
                     run(keylessLines("mine")), open(option("bXJLL")), own(itemName("01")), own(itemName("01")),
                     own(kind()), run(keylessLines("mine"))}));
}

TEST_F(Outside, ReadReturnsNoRowsWithoutACashAccountAndQueriesNoKey) {
    world.haveCash(false);
    EXPECT_EQ(world.out.GetCashFlowColFromDB(world.connection, "mine", "OUT"), noRows());
    EXPECT_EQ(world.statements(), Lines{run(outsideHaveCash("mine"))});
}

TEST_F(Outside, ReadsLeaveYearAndFlagsAlone) {
    modPublic::SetIYear(2012);
    modPublic::context().bCashCode = true;
    world.database.answer(outsideKey("2012"), {{"iperiod"}, {}, {}});
    (void)world.out.GetCashFlowColFromDB(world.connection, "mine", "OUT");
    EXPECT_EQ(modPublic::GetIYear(), 2012);
    EXPECT_TRUE(modPublic::context().bCashCode);
    EXPECT_EQ(world.statements().front(), run(outsideHaveCash("mine"))) << "asked under the login's own year";
}

TEST_F(Outside, TheCheckLooksAtTheLinesAndNotAtTheXml) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, {}, {}, {}}});
    for (const char* xml : {"", "no xml", "<root/>"}) {
        world.database.clearJournal();
        world.setSum(100.0);
        std::string info = "before";
        EXPECT_TRUE(world.out.CheckCFColFromDB(world.connection, "mine", "OUT", xml, &info));
        EXPECT_EQ(world.statements(),
                  (Lines{run(outsideLines("mine")), open(option("bXJLL")), own(itemName("55")), own(itemName("55")),
                         run(outsideSum("mine")), run(keylessLines("mine")), run(isCash("6001"))}));
        world.setSum(50.0);
        EXPECT_FALSE(world.out.CheckCFColFromDB(world.connection, "mine", "OUT", xml, &info));
        EXPECT_EQ(info, "before");
        EXPECT_FALSE(world.out.CheckCFColFromDB(world.connection, "mine", "OUT", xml));
    }
}

TEST_F(Outside, TheCheckOfAVoucherWithoutLinesIsAnError) {
    world.database.answer(outsideLines("mine"), {{"inid"}, {}, {}});
    EXPECT_ERROR(world.out.CheckCFColFromDB(world.connection, "mine", "OUT", ""), errors::objectNotSet);
}

TEST_F(Outside, TheCheckOfXmlEndsInAnError) {
    std::string info = "before";
    EXPECT_ERROR(world.out.CheckCFColFromXml(world.connection, "no xml", "", &info), 1005);
    world.database.acceptPrefix("drop table ");
    world.database.acceptPrefix("select inid,idoc");
    world.database.answerPrefix("select * from tempdb..TempVoucher",
                                {{"ccode", "nc_s", "nd_s", "md", "mc", "md_f", "mc_f", "idoc", "coutno_id"}, {}, {}});
    world.database.failPrefix("select  code.iYear,inid,md,mc, code.ccode,", Error(207, "server", "ccashitem_id"));
    EXPECT_ERROR(world.out.CheckCFColFromXml(world.connection, "<v><e ccode='1' coutno_id='OUT'/></v>", "", &info),
                 207);
    EXPECT_EQ(info, "before");
    EXPECT_EQ(world.database.countOf("Drop table"), 0U);
}

TEST_F(Outside, TheCheckOfXmlWithAWholeKeyFailsOnATableWithoutAName) {
    world.database.failPrefix(keylessLines(""), Error(156, "server", "syntax near as"));
    std::string info = "before";
    const std::string xml = "<v iperiod='1' isignseq='2' ino_id='5'/>";
    EXPECT_ERROR(world.out.CheckCFColFromXml(world.connection, xml, "", &info), 156);
    EXPECT_EQ(world.statements().back(), run(keylessLines("")));
    EXPECT_EQ(world.statements().front().find(
                  "TempVoucher.iperiod=0 and TempVoucher.isignseq=0 and TempVoucher.ino_id=0") == std::string::npos,
              false);
    EXPECT_EQ(world.database.countOf("select  code.iYear,iPeriod,"), 1U);
    EXPECT_EQ(info, "before");
}

TEST_F(Outside, SaveWithoutACashAccountTouchesNothing) {
    world.haveCash(false);
    std::string xml = "no xml";
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(world.statements(), Lines{run(outsideHaveCash("mine"))});
}

TEST_F(Outside, SaveReplacesTheStoredRowsInTheTable) {
    std::string xml = xmlOf(i16(2), 100.0);
    const std::string before = xml;
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(xml, before);
    ASSERT_EQ(world.statements().size(), 8U);
    EXPECT_EQ(Lines(world.statements().begin(), world.statements().begin() + 3),
              (Lines{run(outsideHaveCash("mine")), run(outsideKey()), run(lineOf("2"))}));
    EXPECT_TRUE(
        world.statements()[3].starts_with("main: select (sum(md) -sum(mc)) as mysum  from mine as voucherTemp  inner "
                                          "join CODE on   code.iyear=2013"));
    EXPECT_EQ(world.statements()[4], run(keylessLines("mine")));
    EXPECT_EQ(world.statements()[5], run(isCash("6001")));
    EXPECT_EQ(world.statements()[6], run(deleteStored));
    EXPECT_TRUE(world.statements()[7].starts_with("main: insert into gl_cashtable (RowGuid,iYear,"))
        << world.statements()[7];
    EXPECT_EQ(world.database.countOf("UPDATE"), 0U);
    EXPECT_EQ(world.database.countOf("select * from dsign"), 0U) << "nothing is refreshed on this way";
}

TEST_F(Outside, SaveTakesFieldsOfTheLineButNotItsAccountAmountsAndQuantities) {
    world.database.answer(lineOf("2"),
                          {{"cCashItem", "RowGuid", "ccode", "md", "mc", "md_f", "mc_f", "nd_s", "nc_s", "cDefine1"},
                           {{"line's", "line's guid", "other", 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, Null{}}},
                           {}});
    std::string xml = xmlOf(i16(2), 100.0);
    EXPECT_TRUE(save(&xml));
    const std::string insert = world.statements().back();
    EXPECT_NE(insert.find(" values(N'line's guid',2013,1,2,N'',5,2,N'line's',0,100,N'6001',0,0,0,0,"),
              std::string::npos)
        << insert;
}

TEST_F(Outside, SaveWithoutXmlStoresGeneratedRowsAndHandsThemBack) {
    std::string xml;
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(rowsOf(collectionOf(xml)), Lines{"2:0:100:01"});
    EXPECT_EQ(world.database.countOf("insert into gl_cashtable"), 1U);
    EXPECT_EQ(world.statements()[0], run(outsideHaveCash("mine")));
    EXPECT_EQ(world.statements()[1], run(outsideHaveCash("mine")));
    EXPECT_TRUE(save(nullptr));
    EXPECT_EQ(world.database.countOf("insert into gl_cashtable"), 2U);
}

TEST_F(Outside, SaveOfNoRowsDeletesWhatIsStored) {
    world.setSum(0.0);
    std::string xml = noRows();
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(world.statements().back(), run(deleteStored));
}

TEST_F(Outside, SaveRefusesWhatDoesNotMeetTheVoucher) {
    for (const auto& [inid, credit] : std::vector<std::pair<int, double>>{{2, 99.0}, {9, 100.0}}) {
        std::string xml = xmlOf(i16(inid), credit);
        const Error error = errorOf([&] { (void)save(&xml); });
        EXPECT_EQ(error.number(), 10009);
        EXPECT_EQ(error.source(), "CashFlow");
        EXPECT_EQ(error.description(), inid == 9 ? "<Z7.CW.GL.CashFlow.00002>"
                                                 : "<Z7.CW.GL.CashFlow.00003><Z7.CW.GL.CashFlow.00004>100.00\r\n"
                                                   "<Z7.CW.GL.CashFlow.00006><Z7.CW.GL.CashFlow.00004>99.00");
    }
    EXPECT_EQ(world.database.countOf("delete"), 0U);
}

TEST_F(Outside, SaveWithoutTheCheckStoresARowWhoseLineIsGone) {
    std::string xml = xmlOf(i16(9), 99.0);
    bool check = false;
    EXPECT_TRUE(save(&xml, &check));
    ASSERT_EQ(world.statements().size(), 5U);
    EXPECT_EQ(world.statements()[2], run(lineOf("9")));
    EXPECT_EQ(world.statements()[3], run(deleteStored));
}

TEST_F(Outside, SaveAsksTheTemporaryTableForCashAlone) {
    world.out.VoucherTempTable("temp");
    std::string xml;
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(world.statements()[0], run(outsideHaveCash("temp")));
    EXPECT_EQ(world.statements()[1], run(outsideHaveCash("mine")));
    for (std::size_t i = 1; i < world.statements().size(); ++i) {
        EXPECT_EQ(world.statements()[i].find(" temp "), std::string::npos) << world.statements()[i];
    }
}

TEST_F(Outside, SaveNeitherSetsTheYearNorReadsOptions) {
    modPublic::SetIYear(2012);
    modPublic::context().bCashCode = true;
    world.database.answer(outsideKey("2012"), {{"iperiod", "isignseq", "ino_id", "dbill_date"},
                                               {{std::uint8_t{1}, i16(2), std::int32_t{5}, Date(41279.0)}},
                                               {}});
    std::string xml = xmlOf(i16(2), 100.0);
    bool check = false;
    EXPECT_TRUE(save(&xml, &check));
    EXPECT_EQ(modPublic::GetIYear(), 2012);
    EXPECT_TRUE(modPublic::context().bCashCode);
    EXPECT_EQ(world.database.countOf("select cvalue"), 0U);
    EXPECT_EQ(world.database.countOf("select iyear,iid"), 0U);
    EXPECT_EQ(world.statements()[3],
              run("delete from gl_cashtable where iyear=2012 and  iperiod=1 and isignseq=2 and ino_id=5"));
}

TEST_F(Outside, SaveOfTextThatIsNotXmlIsRefused) {
    std::string xml = "no xml";
    const Error error = errorOf([&] { (void)save(&xml); });
    EXPECT_EQ(error.number(), 1002);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(world.database.countOf("delete"), 0U);
}

TEST_F(Outside, SaveFailsUnderTheSystemsNameAtEveryStatement) {
    for (std::size_t n = 1; n <= 8; ++n) {
        Ledger fresh;
        prepare(fresh);
        std::string xml = xmlOf(i16(2), 100.0);
        fresh.database.failStatement(n, Error(547, "server", "constraint"));
        const Error error = errorOf([&] { (void)fresh.out.SaveCashFlowCol(fresh.connection, "mine", "OUT", &xml); });
        EXPECT_EQ(error.number(), 547) << n;
        EXPECT_EQ(error.source(), "CashFlow") << n;
        EXPECT_EQ(error.description(), "constraint") << n;
        EXPECT_EQ(fresh.statements().size(), n);
        EXPECT_EQ(fresh.database.openRecordsets(), Lines{});
    }
}

TEST_F(Outside, SaveKeepsAccountAmountsAndQuantitiesOfTheXml) {
    world.database.answer(lineOf("2"), {{"ccode", "md", "mc", "md_f", "mc_f", "nd_s", "nc_s", "cdept_id", "inid"},
                                        {{"line", 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, "line's", i16(2)}},
                                        {}});
    const Collection rows = hostCollection(world);
    const auto row = addRow(rows, i16(2), "6001", 21.0, 121.0);
    double amount = 23.0;
    for (const char* name : {"md_f", "mc_f", "nd_s", "nc_s"}) {
        row->SetValue(name, amount++);
    }
    std::string xml = rows->Save();
    EXPECT_TRUE(save(&xml));
    const std::string insert = world.statements().back();
    EXPECT_NE(insert.find(",N'01',21,121,N'6001',23,24,25,26,N'line's',"), std::string::npos) << insert;
}

TEST_F(Outside, SaveKeepsTheKeyAndTheDateThatTheRowsOfTheXmlHave) {
    const Collection rows = hostCollection(world);
    rows->UpdateCol(9, 8, 7, Date(41000.0));
    addRow(rows, i16(2), "6001", 0.0, 100.0);
    std::string xml = rows->Save();
    bool check = false;
    EXPECT_TRUE(save(&xml, &check));
    ASSERT_EQ(world.statements().size(), 5U);
    EXPECT_EQ(world.statements()[3], run(deleteStored)) << "what goes is told by the ledger voucher's key";
    const std::string insert = world.statements()[4];
    EXPECT_NE(insert.find("',2013,9,8,N'',7,2,N'01',"), std::string::npos) << insert;
    EXPECT_NE(insert.find(",N'2012-04-01',"), std::string::npos) << insert;
}

class OutsideDraft : public Outside {
protected:
    OutsideDraft() {
        world.gl.bFromDraft(true);
        world.database.answer(draft, {{"cCashItem"}, {{"33"}}, {}});
    }

    const std::string draft = "select cCashItem from GL_VouchDraft where cUserId=N'u1' and inid=2";
};

TEST_F(OutsideDraft, SuppliesItemsForGeneratedRows) {
    EXPECT_EQ(rowsOf(collectionOf(world.out.CreateCashFlowColFromDB(world.connection, "mine", "OUT"))),
              Lines{"2:0:100:33"});
}

TEST_F(OutsideDraft, SuppliesItemsForStoredRowsWithoutOne) {
    world.setStored({""});
    EXPECT_EQ(rowsOf(collectionOf(world.out.GetCashFlowColFromDB(world.connection, "mine", "OUT"))),
              Lines{"2:0:100:33"});
}

TEST_F(OutsideDraft, SuppliesItemsForTheRowsOfBothChecks) {
    EXPECT_TRUE(world.out.CheckCFColFromDB(world.connection, "mine", "OUT", ""));
    EXPECT_EQ(world.database.countOf(draft), 1U);
    world.database.failPrefix(keylessLines(""), Error(156, "server", "syntax near as"));
    EXPECT_ERROR(world.out.CheckCFColFromXml(world.connection, "<v iperiod='1' isignseq='2' ino_id='5'/>", ""), 156);
    EXPECT_EQ(world.database.countOf(draft), 2U);
}

TEST_F(Outside, TheCheckReadsTheSumBeforeItMissesItsRows) {
    world.database.answer(outsideLines("mine"), {{"inid"}, {}, {}});
    EXPECT_ERROR(world.out.CheckCFColFromDB(world.connection, "mine", "OUT", ""), errors::objectNotSet);
    EXPECT_EQ(world.statements(), (Lines{run(outsideLines("mine")), open(option("bXJLL")), run(outsideSum("mine"))}));
}

TEST_F(Outside, TheCheckOfXmlByAnOutsideKeyReadsLinesAndSumOfItsTable) {
    world.database.acceptPrefix("drop table ");
    world.database.acceptPrefix("select inid,idoc");
    world.database.answerPrefix("select * from tempdb..TempVoucher",
                                {{"ccode", "nc_s", "nd_s", "md", "mc", "md_f", "mc_f", "idoc", "coutno_id"}, {}, {}});
    // On a server whose table does have the item column, it gets as far as the row check.
    const std::string table = "tempdb..TempVoucher" + GuidSequence::text(1);
    world.database.answer(
        outsideLines(table),
        {{"inid", "md", "mc", "ccode", "ccashitem_id", "bCashItem"}, {{i16(2), 0.0, 100.0, "6001", "55", false}}, {}});
    world.database.failPrefix(keylessLines(""), Error(156, "server", "syntax near as"));
    const std::string xml = "<v dbill_date='2013-01-05'><e ccode='1' coutno_id='OUT'/></v>";
    EXPECT_ERROR(world.out.CheckCFColFromXml(world.connection, xml, ""), 156);
    const Lines& all = world.statements();
    ASSERT_EQ(all.size(), 9U);
    EXPECT_EQ(Lines(all.begin() + 3, all.end()),
              (Lines{run(outsideLines(table)), run(outsideSum(table)), open(option("bXJLL")), own(itemName("55")),
                     own(itemName("55")), run(keylessLines(""))}));
}

TEST_F(Outside, TheCheckOfXmlWithoutAnyOutsideKeyReadsItsTableWhole) {
    world.database.acceptPrefix("drop table ");
    world.database.acceptPrefix("select inid,idoc");
    world.database.answerPrefix("select * from tempdb..TempVoucher", {{"ccode"}, {}, {}});
    world.database.failPrefix(keylessLines(""), Error(156, "server", "syntax near as"));
    modPublic::context().guidSource = [] { return std::nullopt; };
    EXPECT_ERROR(world.out.CheckCFColFromXml(world.connection, "<v ino_id='5'/>", ""), 156);
    const Lines& all = world.statements();
    ASSERT_EQ(all.size(), 9U);
    EXPECT_EQ(all[3], run(keylessLines("tempdb..TempVoucher")));
    EXPECT_TRUE(all[4].starts_with("main: select (sum(md) -sum(mc)) as mysum  from tempdb..TempVoucher as voucherTemp  "
                                   "inner join CODE on   code.iyear=2013"));
    EXPECT_EQ(all[5], open(option("bXJLL")));
    EXPECT_EQ(all.back(), run(keylessLines("")));
    EXPECT_EQ(world.database.countOf("Drop table"), 0U);
}

} // namespace
} // namespace z7::cashflow::test
