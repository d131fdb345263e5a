#include "providers/ProviderTest.h"
#include "z7cashflow/model/schemaDocument.h"

namespace z7::cashflow::test {
namespace {

using namespace ledger;

class ReadPath : public ProviderTest {
protected:
    Collection read(const std::string& table = "gl_accvouch") {
        return world.gl.GetCashFlowColFromDB(world.connection, table, 1, 2, 5, Date(41279.0));
    }
    /// The XML of a voucher without rows.
    static std::string noRows(const std::string& key) {
        return "<root " + key + ">" + schemaDocument() + "<rows>\r\n</rows></root>";
    }
    /// Accepts the temporary table of a voucher given as XML.
    void takeTemporaryTables() {
        Table table{{"inid", "ccode", "md", "mc", "nc_s", "nd_s", "md_f", "mc_f", "idoc", "coutno_id"}, {}, {}};
        world.database.acceptPrefix("drop table ");
        world.database.acceptPrefix("Drop table ");
        world.database.acceptPrefix("select inid,idoc");
        world.database.answerPrefix("select * from tempdb..TempVoucher", table);
        world.database.answerPrefix("select iperiod,isignseq,ino_id,dbill_date", {{"iperiod"}, {}, {}});
    }

    const std::string wholeKey = "<v iperiod='1' isignseq='2' ino_id='5' dbill_date='2013-01-05'/>";
    const std::string outsideVoucher = "<v><e ccode='1001' inid='1' md='100' coutno_id='OUT'/></v>";
};

TEST_F(ReadPath, ReturnsTheStoredRows) {
    world.setStored({"88", "89"});
    const Collection rows = read();
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rowsOf(rows), (Lines{"2:0:100:88", "2:0:100:89"}));
    EXPECT_EQ(world.statements(), (Lines{openStatic(period()), run(storedRows()), open(option("bXJLL")),
                                         own(itemName("88")), own(itemName("89"))}));
    const auto row = rows->Item(1);
    EXPECT_EQ(row->Item("cCashItemName"), Variant("item 88")) << "the name is read afresh";
    EXPECT_EQ(row->Item("RowGuid"), Variant(GuidSequence::text(1))) << "the row keeps its new identity";
    EXPECT_EQ(row->Item("dbill_date"), Variant(Date(41279.0))) << "the date that was asked for";
    EXPECT_EQ(row->Item("ccode_name"), Variant("sales"));
    EXPECT_EQ(row->Item("csign"), Variant("S"));
    EXPECT_EQ(rows->dbill_date(), Date(41270.0)) << "the date that is stored";
    EXPECT_EQ(rows->iNo_id(), 5);
    EXPECT_EQ(rows->VoucherTable(), "gl_accvouch");
    EXPECT_EQ(debugTexts, Lines{});
}

TEST_F(ReadPath, ReturnsStoredRowsOfBothSides) {
    world.setStored({"88"});
    modPublic::context().bCashCode = true;
    EXPECT_EQ(read()->Count(), 1);
}

TEST_F(ReadPath, LooksForAnItemWhereAStoredRowHasNone) {
    world.setStored({""});
    EXPECT_EQ(read()->Count(), 0);
    EXPECT_EQ(debugTexts, (Lines{"111", "222", "itemCode:"})) << "missing columns count as present";
    modPublic::context().bAutoDisplay = true;
    EXPECT_EQ(read()->Count(), 1);
}

TEST_F(ReadPath, CopiesTheIdentityOfRowsOfTheView) {
    Table stored{{"RowGuid", "iperiod", "isignseq", "ino_id", "dbill_date", "inid", "cCashItem", "md", "mc", "ccode",
                  "bCashItem"},
                 {},
                 {}};
    stored.rows = {
        {"stored", std::uint8_t{1}, i16(2), std::int32_t{5}, Date(41270.0), i16(1), "88", 5.0, 0.0, "1001", true}};
    world.database.answerPrefix("select  code.iYear", stored);
    const Collection rows =
        world.gl.CreateCashFlowColFromDB(world.connection, "GL_V_CashTable", 1, 2, 5, Date(41279.0));
    ASSERT_EQ(rows->Count(), 1);
    EXPECT_EQ(rows->Item(1)->Item("RowGuid"), Variant("stored"));
}

TEST_F(ReadPath, ReturnsNothingIfNothingIsStoredAndLeavesTheYearSet) {
    world.database.answerPrefix("select iyear,iid", {{"iyear", "iid"}, {{i16(2012), std::uint8_t{3}}}, {}});
    EXPECT_EQ(read(), nullptr);
    EXPECT_EQ(modPublic::GetIYear(), 2012);
    EXPECT_EQ(world.statements(), (Lines{openStatic(period()), run(storedRows("2012")), open(option("bXJLL"))}));
    world.database.clearJournal();
    (void)create(world);
    EXPECT_EQ(world.statements().front(), run(lines("gl_accvouch", "2012"))) << "the year leaks into the next call";
}

TEST_F(ReadPath, GeneratesRowsOfADraft) {
    world.gl.bFromDraft(true);
    world.database.answerPrefix("select cCashItem from GL_VouchDraft", {{"cCashItem"}, {{"33"}}, {}});
    const Collection rows = read();
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:33"});
    EXPECT_EQ(rows->VoucherTable(), "gl_accvouch");
    world.setStored({"88"});
    EXPECT_EQ(rowsOf(read()), Lines{"2:0:100:88"});
}

TEST_F(ReadPath, ReturnsNoRowsInsteadOfNothingForADraftWithoutCash) {
    world.gl.bFromDraft(true);
    world.setLines({});
    const Collection rows = read();
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->Count(), 0);
}

TEST_F(ReadPath, OnADateInNoPeriodWorksUnderTheYear1900) {
    world.database.answerPrefix("select iyear,iid", {{"iyear", "iid"}, {}, {}});
    EXPECT_EQ(read(), nullptr);
    EXPECT_EQ(modPublic::GetIYear(), 1900);
    EXPECT_EQ(world.statements()[1], run(storedRows("1900")));
}

TEST_F(ReadPath, ReturnsNothingForTheStateThatRequestsAnEmptySet) {
    modPublic::context().VouchState = 2;
    EXPECT_EQ(read(), nullptr);
    EXPECT_TRUE(world.statements()[1].ends_with(" Where 1=-1"));
}

TEST_F(ReadPath, DoesNotLookAtTheTemporaryTable) {
    world.gl.VoucherTempTable("temp");
    world.setStored({"88"});
    EXPECT_EQ(read("mine")->VoucherTable(), "mine");
}

TEST_F(ReadPath, PassesEveryFailureThrough) {
    for (std::size_t n = 1; n <= 4; ++n) {
        Ledger fresh;
        fresh.setStored({"88"});
        fresh.database.failStatement(n, Error(1205, "server", "deadlock"));
        const Error error = errorOf(
            [&] { (void)fresh.gl.GetCashFlowColFromDB(fresh.connection, "gl_accvouch", 1, 2, 5, Date(41279.0)); });
        EXPECT_EQ(error.number(), 1205) << n;
        EXPECT_EQ(error.source(), "server") << n;
        EXPECT_EQ(fresh.statements().size(), n);
        EXPECT_EQ(fresh.database.openRecordsets(), Lines{});
    }
}

TEST_F(ReadPath, OfXmlWithACompleteKeyReturnsTheStoredRowsAndDoesNotUseTheView) {
    world.setStored({"88"});
    const std::string xml = world.gl.GetCashFlowColFromXml(world.connection, wholeKey);
    const auto loaded = world.provider.CreateCashFlowCollection();
    loaded->Load(xml);
    EXPECT_EQ(rowsOf(loaded), Lines{"2:0:100:88"});
    EXPECT_EQ(loaded->Item(1)->Item("dbill_date"), Variant("2013-01-05")) << "the date of the XML, not the stored one";
    EXPECT_TRUE(xml.starts_with("<root iperiod='1' isignseq='2' ino_id='5'><struct>"));
    EXPECT_EQ(world.statements(), (Lines{run(storedRows()), open(option("bXJLL")), own(itemName("88"))}));
}

TEST_F(ReadPath, OfXmlWithoutStoredRowsReturnsNoRows) {
    EXPECT_EQ(world.gl.GetCashFlowColFromXml(world.connection, wholeKey),
              noRows("iperiod='0' isignseq='0' ino_id='0'"));
    EXPECT_EQ(world.database.countOf("Drop"), 0U);
    EXPECT_EQ(world.out.GetCashFlowColFromXml(world.connection, wholeKey),
              noRows("iperiod='0' isignseq='0' ino_id='0'"));
}

TEST_F(ReadPath, OfXmlLeavesTheYearAlone) {
    modPublic::SetIYear(2011);
    (void)world.gl.GetCashFlowColFromXml(world.connection, wholeKey);
    EXPECT_EQ(modPublic::GetIYear(), 2011);
    EXPECT_EQ(world.statements().front(), run(storedRows("2011")));
}

TEST_F(ReadPath, OfXmlThroughTheOutsideContractSetsTheOptionsFirst) {
    world.setOption("bCashCode", "True");
    world.setOption("bAutoDisplay", "TRUE");
    (void)world.out.GetCashFlowColFromXml(world.connection, wholeKey);
    EXPECT_EQ(world.statements(), (Lines{open(option("bCashCode")), open(option("bAutoDisplay")), run(storedRows()),
                                         open(option("bXJLL"))}));
    EXPECT_TRUE(modPublic::context().bCashCode);
    EXPECT_TRUE(modPublic::context().bAutoDisplay);
    (void)world.gl.GetCashFlowColFromXml(world.connection, wholeKey);
    EXPECT_TRUE(modPublic::context().bAutoDisplay) << "left behind";
    world.setOption("bCashCode", "yes");
    world.setOption("bAutoDisplay", "");
    (void)world.out.GetCashFlowColFromXml(world.connection, wholeKey);
    EXPECT_FALSE(modPublic::context().bCashCode);
    EXPECT_FALSE(modPublic::context().bAutoDisplay);
}

TEST_F(ReadPath, OfXmlWithoutAKeyReadsStoredRowsByTheOutsideKeyAndDropsTheTable) {
    takeTemporaryTables();
    EXPECT_EQ(world.gl.GetCashFlowColFromXml(world.connection, outsideVoucher),
              noRows("iperiod='0' isignseq='0' ino_id='0'"));
    const std::string table = "tempdb..TempVoucher" + GuidSequence::text(1);
    ASSERT_EQ(world.statements().size(), 7U);
    EXPECT_EQ(world.statements()[0], run("drop table " + table));
    EXPECT_EQ(world.statements()[3], run(outsideKey()));
    EXPECT_TRUE(world.statements()[4].starts_with("main: select table1.*,"));
    EXPECT_EQ(world.statements()[5], open(option("bXJLL")));
    EXPECT_EQ(world.statements()[6], run("Drop table " + table));
}

TEST_F(ReadPath, OfXmlAFailingDropStaysUnnoticed) {
    takeTemporaryTables();
    world.database.failPrefix("Drop table ", Error(3701, "server", "cannot drop"));
    EXPECT_NE(world.gl.GetCashFlowColFromXml(world.connection, outsideVoucher), "");
    EXPECT_EQ(world.database.countOf("Drop table "), 1U);
}

TEST_F(ReadPath, OfXmlToBeGeneratedWithoutAnOutsideKeyOnItsLinesReturnsNoRows) {
    takeTemporaryTables();
    world.haveCash(false);
    EXPECT_EQ(world.gl.GetCashFlowColFromXml(
                  world.connection, "<v iperiod='1' isignseq='2' ino_id='5'><e ccode='1001' md='1'/></v>", true),
              noRows("iperiod='0' isignseq='0' ino_id='0'"));
    EXPECT_TRUE(world.statements().back().starts_with("main: Drop table tempdb..TempVoucher"));
}

TEST_F(ReadPath, OfXmlThatIsToBeGeneratedFailsOnTheItemColumnAndLeavesTheTable) {
    takeTemporaryTables();
    world.database.failPrefix("select  code.iYear,inid,md,mc, code.ccode,", Error(207, "server", "ccashitem_id"));
    const Error error = errorOf([&] { (void)world.gl.GetCashFlowColFromXml(world.connection, outsideVoucher, true); });
    EXPECT_EQ(error.number(), 207);
    EXPECT_EQ(error.source(), "server");
    EXPECT_EQ(world.statements().back(), run(outsideLines("tempdb..TempVoucher" + GuidSequence::text(1))));
    EXPECT_EQ(world.database.countOf("Drop table "), 0U);
}

TEST_F(ReadPath, OfTextThatIsNotXmlIsRefused) {
    for (IGlVoucherProvider* contract : {&world.gl}) {
        const Error error = errorOf([&] { (void)contract->GetCashFlowColFromXml(world.connection, "no xml"); });
        EXPECT_EQ(error.number(), 1005);
        EXPECT_EQ(error.source(), "CashFlow");
    }
    EXPECT_ERROR(world.out.GetCashFlowColFromXml(world.connection, "no xml"), 1005);
}

TEST_F(ReadPath, OfXmlWithAWholeKeyRowsGetTheDateOfTheXml) {
    world.setStored({"88"});
    EXPECT_NE(world.gl.GetCashFlowColFromXml(world.connection, wholeKey).find("dbill_date='2013-01-05'"),
              std::string::npos);
    const std::string withoutDate = "<v iperiod='1' isignseq='2' ino_id='5'/>";
    EXPECT_NE(world.gl.GetCashFlowColFromXml(world.connection, withoutDate).find("dbill_date='1899-12-30'"),
              std::string::npos);
}

TEST_F(ReadPath, OfXmlWithAnOutsideKeyRowsGetNoDate) {
    takeTemporaryTables();
    world.setStored({"88"});
    const std::string xml = world.gl.GetCashFlowColFromXml(
        world.connection, "<v dbill_date='2013-01-05'><e ccode='1001' inid='1' coutno_id='OUT'/></v>");
    EXPECT_NE(xml.find("dbill_date='1899-12-30'"), std::string::npos) << xml;
    EXPECT_TRUE(xml.starts_with("<root iperiod='1' isignseq='2' ino_id='5'>")) << "the key is the stored row's";
}

TEST_F(ReadPath, OfXmlOfADraftSuppliesItemsForRowsWithoutOne) {
    takeTemporaryTables();
    world.setStored({""});
    world.gl.bFromDraft(true);
    world.database.answerPrefix("select cCashItem from GL_VouchDraft", {{"cCashItem"}, {{"33"}}, {}});
    for (const std::string& voucher : {wholeKey, outsideVoucher}) {
        EXPECT_NE(world.gl.GetCashFlowColFromXml(world.connection, voucher).find("cCashItem='33'"), std::string::npos);
        EXPECT_NE(world.out.GetCashFlowColFromXml(world.connection, voucher).find("cCashItem='33'"), std::string::npos);
    }
}

/// No outside key can be generated, so a voucher whose lines have none has none.
class ReadPathWithoutGuids : public ReadPath {
protected:
    ReadPathWithoutGuids() {
        takeTemporaryTables();
        modPublic::context().guidSource = [] { return std::nullopt; };
    }
    const std::string table = "tempdb..TempVoucher";
};

TEST_F(ReadPathWithoutGuids, GeneratesInTheLedgersWayUnderTheKeyOfTheXml) {
    const std::string voucher = "<v iperiod='1' isignseq='2' ino_id='70' dbill_date='2013-01-05'/>";
    const std::string xml = world.gl.GetCashFlowColFromXml(world.connection, voucher, true);
    EXPECT_TRUE(xml.starts_with("<root iperiod='1' isignseq='2' ino_id='70'>")) << xml;
    EXPECT_NE(xml.find("cCashItem='01'"), std::string::npos) << xml;
    EXPECT_NE(xml.find("dbill_date='2013-01-05'"), std::string::npos) << xml;
    const Lines& all = world.statements();
    ASSERT_EQ(all.size(), 10U);
    EXPECT_EQ(Lines(all.begin() + 3, all.end()),
              (Lines{run(keylessLines(table)), open(option("bXJLL")), own(itemName("01")), own(itemName("01")),
                     own(kind()), run(keylessLines(table)), run("Drop table " + table)}));
}

TEST_F(ReadPathWithoutGuids, ReadsStoredRowsUnderTheKeyOfTheXml) {
    world.setStored({"88"});
    const std::string voucher = "<v iperiod='0' isignseq='2' ino_id='5' dbill_date='2013-01-05'/>";
    const std::string xml = world.gl.GetCashFlowColFromXml(world.connection, voucher);
    EXPECT_NE(xml.find("dbill_date='2013-01-05'"), std::string::npos) << xml;
    const Lines& all = world.statements();
    ASSERT_EQ(all.size(), 7U);
    EXPECT_NE(all[3].find(" and iperiod=0 and isignseq=2 and ino_id=5"), std::string::npos) << all[3];
    EXPECT_EQ(all.back(), run("Drop table " + table));
}

TEST_F(ReadPath, OfXmlThatIsToBeGeneratedTakesTheRowsButNotTheKeyOfTheOutsideContract) {
    takeTemporaryTables();
    const std::string table = "tempdb..TempVoucher" + GuidSequence::text(1);
    world.database.answer(outsideLines(table),
                          {{"inid", "md", "mc", "ccode", "ccashitem_id", "bCashItem"},
                           {{i16(1), 100.0, 0.0, "1001", "54", true}, {i16(2), 0.0, 100.0, "6001", "55", false}},
                           {}});
    world.database.answer(outsideKey(), {{"iperiod", "isignseq", "ino_id", "dbill_date"},
                                         {{std::uint8_t{1}, i16(2), std::int32_t{5}, Date(41279.0)}},
                                         {}});
    const std::string xml = world.gl.GetCashFlowColFromXml(world.connection, outsideVoucher, true);
    EXPECT_TRUE(xml.starts_with("<root iperiod='0' isignseq='0' ino_id='0'>")) << xml;
    EXPECT_NE(xml.find(" iPeriod='1' iSignSeq='2' "), std::string::npos) << xml;
    EXPECT_NE(xml.find("cCashItem='55'"), std::string::npos) << xml;
    EXPECT_EQ(world.statements().back(), run("Drop table " + table));
}

} // namespace
} // namespace z7::cashflow::test
