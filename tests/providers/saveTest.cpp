#include "providers/ProviderTest.h"
#include "z7cashflow/statements/rowStatements.h"

namespace z7::cashflow::test {
namespace {

using namespace ledger;

class Save : public ProviderTest {
protected:
    bool save(Collection* rows, bool* blnCheckCF = nullptr) {
        return world.gl.SaveCashFlowCol(world.connection, "gl_accvouch", 1, 2, 5, rows, blnCheckCF);
    }
    bool saveEx(Date date, Collection* rows, const std::string& table = "gl_accvouch") {
        return world.gl.SaveCashFlowColEx(world.connection, table, 1, 2, 5, date, rows);
    }
    /// A collection with two rows that match the voucher.
    Collection fitting() {
        Collection rows = hostCollection(world);
        addRow(rows, i16(2), "6001", 0.0, 60.0);
        addRow(rows, i16(2), "6001", 0.0, 40.0, "02");
        return rows;
    }
};

TEST_F(Save, OfAHostsCollection) {
    Collection rows = fitting();
    const Collection given = rows;
    EXPECT_TRUE(saveEx(Date(41279.0), &rows));
    EXPECT_EQ(rows, given);
    EXPECT_EQ(world.statements(),
              (Lines{open(option("bCashCode")), openStatic(period()), run(haveCash()), own(kind()), run(lines()),
                     run(lines()), run(cashSum()), run(lines()), run(isCash("6001")), run(isCash("6001")),
                     run(deleteRows()), run(insertRow(*rows, 1)), run(insertRow(*rows, 2)), run(currencyNames())}));
    EXPECT_EQ(world.database.openRecordsets(), Lines{});
    EXPECT_EQ(rows->VoucherTable(), "gl_accvouch");
}

TEST_F(Save, WithoutADateLeavesTheYearAndAsksNoPeriod) {
    Collection rows = fitting();
    modPublic::SetIYear(2011);
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(modPublic::GetIYear(), 2011);
    EXPECT_EQ(world.statements(),
              (Lines{open(option("bCashCode")), run(haveCash("gl_accvouch", "2011")), own(kind()),
                     run(lines("gl_accvouch", "2011")), run(lines("gl_accvouch", "2011")),
                     run(cashSum("gl_accvouch", "2011")), run(lines("gl_accvouch", "2011")),
                     run(isCash("6001", "2011")), run(isCash("6001", "2011")), run(deleteRows()),
                     run(insertRow(*rows, 1)), run(insertRow(*rows, 2)), run(currencyNames("2011"))}));
}

TEST_F(Save, WithADateSetsTheYearForWhatFollows) {
    world.database.answerPrefix("select iyear,iid", {{"iyear", "iid"}, {{i16(2012), std::uint8_t{12}}}, {}});
    Collection rows = fitting();
    EXPECT_TRUE(saveEx(Date(41279.0), &rows));
    EXPECT_EQ(modPublic::GetIYear(), 2012);
    EXPECT_EQ(world.statements()[2], run(haveCash("gl_accvouch", "2012")));
    EXPECT_EQ(world.statements().back(), run(currencyNames("2012")));
}

TEST_F(Save, OnADateInNoPeriodWorksUnderTheYear1900) {
    world.database.answerPrefix("select iyear,iid", {{"iyear", "iid"}, {}, {}});
    world.haveCash(false);
    Collection rows;
    EXPECT_TRUE(saveEx(Date(41279.0), &rows));
    EXPECT_EQ(modPublic::GetIYear(), 1900);
}

TEST_F(Save, OfADateThatIsNoneLeavesTheYear) {
    modPublic::SetIYear(2011);
    Collection rows = fitting();
    EXPECT_TRUE(saveEx(Date(2.0), &rows));
    EXPECT_EQ(world.database.countOf("select iyear,iid"), 0U);
    EXPECT_TRUE(saveEx(Date(2958466.0), &rows));
    EXPECT_EQ(world.database.countOf("select iyear,iid"), 0U);
    EXPECT_EQ(modPublic::GetIYear(), 2011);
}

TEST_F(Save, WithoutACollectionGeneratesTestsAndStoresTheRows) {
    Collection rows;
    EXPECT_TRUE(save(&rows));
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:01"});
    EXPECT_EQ(world.statements(), (Lines{open(option("bCashCode")), run(haveCash()), run(voucherDate()),
                                         // nothing is stored
                                         openStatic(period()), run(storedRows()), open(option("bXJLL")),
                                         // generation
                                         run(lines()), open(option("bXJLL")), own(itemName("01")), own(itemName("01")),
                                         own(kind()), run(lines()),
                                         // checks
                                         run(lines()), run(cashSum()), run(lines()), run(isCash("6001")),
                                         // storing
                                         run(deleteRows()), run(insertRow(*rows, 1)), run(currencyNames())}));
    EXPECT_EQ(rows->dbill_date(), Date(41279.0));
}

TEST_F(Save, WithoutACollectionReadsRefreshesAndStoresTheStoredRowsAgain) {
    world.setStored({"88"});
    Collection rows;
    EXPECT_TRUE(save(&rows));
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:88"});
    EXPECT_EQ(rows->Item(1)->Item("csign"), Variant("V")) << "refreshed from the voucher";
    EXPECT_EQ(rows->Item(1)->Item("RowGuid"), Variant(GuidSequence::text(1)));
    EXPECT_EQ(
        world.statements(),
        (Lines{open(option("bCashCode")), run(haveCash()), run(voucherDate()), openStatic(period()), run(storedRows()),
               open(option("bXJLL")), own(itemName("88")), own(kind()), run(lines()), run(lines()), run(cashSum()),
               run(lines()), run(isCash("6001")), run(deleteRows()), run(insertRow(*rows, 1)), run(currencyNames())}));
}

TEST_F(Save, WithoutAPlaceForTheRowsSavesThemAllTheSame) {
    EXPECT_TRUE(save(nullptr));
    EXPECT_EQ(world.database.countOf("insert into gl_v_cashtable"), 1U);
}

TEST_F(Save, WithADateDoesNotReadItFromTheVoucher) {
    Collection rows;
    EXPECT_TRUE(saveEx(Date(367.0), &rows));
    EXPECT_EQ(world.database.countOf("select  dBill_date"), 0U);
    EXPECT_EQ(rows->dbill_date(), Date(367.0));
    EXPECT_EQ(world.database.countOf(period("1901-01-01")), 2U);
}

TEST_F(Save, OfADateBefore1901SetsTheYearAndYetReadsTheVouchersDate) {
    Collection rows;
    EXPECT_TRUE(saveEx(Date(366.0), &rows));
    EXPECT_EQ(world.statements()[1], openStatic(period("1900-12-31")));
    EXPECT_EQ(world.statements()[3], run(voucherDate()));
    EXPECT_EQ(world.statements()[4], openStatic(period()));
    EXPECT_EQ(rows->dbill_date(), Date(41279.0));
}

TEST_F(Save, OfAVoucherWithoutADateIsRefused) {
    world.database.answerPrefix("select  dBill_date from ", {{"dBill_date"}, {}, {}});
    Collection rows;
    const Error error = errorOf([&] { (void)save(&rows); });
    EXPECT_EQ(error.number(), 10010);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(error.description(), "<Z7.CW.GL.CashFlow.00009>");
    EXPECT_EQ(rows, nullptr);
    EXPECT_EQ(world.statements().back(), run(voucherDate()));
    EXPECT_EQ(world.database.openRecordsets(), Lines{});
}

TEST_F(Save, ReadsTheVoucherFromTheTemporaryTableAndItsDateFromTheOther) {
    world.gl.VoucherTempTable("gl_v_accvouch");
    Collection rows;
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(rows->VoucherTable(), "gl_v_accvouch");
    const std::string temp = "gl_v_accvouch";
    EXPECT_EQ(world.statements(),
              (Lines{open(option("bCashCode")), run(haveCash(temp)), run(voucherDate()), openStatic(period()),
                     run(storedRows()), open(option("bXJLL")), run(lines(temp)), open(option("bXJLL")),
                     own(itemName("01")), own(itemName("01")), own(kind()), run(lines(temp)), run(lines(temp)),
                     run(cashSum(temp)), run(lines(temp)), run(isCash("6001")), run(deleteRows()),
                     run(insertRow(*rows, 1)), run(currencyNames())}));
}

TEST_F(Save, SetsTheTableOfTheSaveInAGivenCollection) {
    Collection rows = fitting();
    rows->VoucherTable("elsewhere");
    world.gl.VoucherTempTable("mine");
    EXPECT_TRUE(saveEx(Date(41279.0), &rows));
    EXPECT_EQ(rows->VoucherTable(), "mine");
    EXPECT_EQ(world.database.countOf(keylessLines("mine")), 3U);
}

TEST_F(Save, SetsTheSideFromTheOptionAndLeavesItBehind) {
    world.setOption("bCashCode", "true");
    world.setLines({{1, "1001", 100.0, 0.0, "98", "07", {}}, {2, "6001", 0.0, 100.0, "98", "01", {}}});
    Collection rows;
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(rowsOf(rows), Lines{"1:100:0:07"});
    EXPECT_TRUE(modPublic::context().bCashCode);
    EXPECT_EQ(rowsOf(create(world)), Lines{"1:100:0:07"});
    world.setOption("bCashCode", "1");
    rows = nullptr;
    EXPECT_TRUE(save(&rows));
    EXPECT_FALSE(modPublic::context().bCashCode);
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:01"});
}

TEST_F(Save, DoesNotReadTheOptionThatKeepsRowsWithoutAnItem) {
    world.setOption("bAutoDisplay", "TRUE");
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, {}, {}, {}}});
    Collection rows;
    EXPECT_ERROR(save(&rows), errors::sumsDiffer);
    EXPECT_EQ(world.database.countOf(option("bAutoDisplay")), 0U);
    modPublic::context().bAutoDisplay = true;
    rows = nullptr;
    EXPECT_ERROR(save(&rows), errors::rowsDoNotFit);
}

TEST_F(Save, RefusesARowThatDoesNotFit) {
    Collection rows = fitting();
    rows->Item(2)->SetValue("cCashItem", "");
    bool checkSum = false;
    const Error error = errorOf([&] { (void)save(&rows, &checkSum); });
    EXPECT_EQ(error.number(), 10008);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(error.description(), "<Z7.CW.GL.CashFlow.00020>\t2\t4");
    EXPECT_EQ(world.database.countOf("delete"), 0U);
    EXPECT_EQ(world.database.countOf("insert"), 0U);
}

TEST_F(Save, RefusesASumThatDiffers) {
    world.setSum(50.0);
    Collection rows = fitting();
    const Error error = errorOf([&] { (void)save(&rows); });
    EXPECT_EQ(error.number(), 10009);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(error.description(), "<Z7.CW.GL.CashFlow.00003><Z7.CW.GL.CashFlow.00004>50.00\r\n"
                                   "<Z7.CW.GL.CashFlow.00006><Z7.CW.GL.CashFlow.00004>100.00");
    EXPECT_EQ(world.database.countOf("delete"), 0U);
    bool checkSum = true;
    EXPECT_ERROR(save(&rows, &checkSum), 10009);
}

TEST_F(Save, WithoutTheSumCheckStoresWhatDiffers) {
    world.setSum(50.0);
    Collection rows = fitting();
    bool checkSum = false;
    EXPECT_TRUE(save(&rows, &checkSum));
    EXPECT_FALSE(checkSum);
    EXPECT_EQ(world.statements(),
              (Lines{open(option("bCashCode")), run(haveCash()), own(kind()), run(lines()), run(lines()),
                     run(deleteRows()), run(insertRow(*rows, 1)), run(insertRow(*rows, 2)), run(currencyNames())}));
}

TEST_F(Save, OfAnEmptyCollectionDeletesAndInsertsNothing) {
    world.setSum(0.0);
    Collection rows = hostCollection(world);
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(world.statements(),
              (Lines{open(option("bCashCode")), run(haveCash()), own(kind()), run(lines()), run(lines()),
                     run(cashSum()), run(lines()), run(deleteRows()), run(currencyNames())}));
}

TEST_F(Save, OfAVoucherWhoseCashLinesCancelStoresNothing) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "1002", 0.0, 100.0, {}, {}, {}}});
    world.setSum(0.0);
    Collection rows;
    EXPECT_TRUE(save(&rows));
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->Count(), 0);
    EXPECT_EQ(world.database.countOf("insert"), 0U);
    EXPECT_EQ(world.database.countOf(deleteRows()), 1U);
}

TEST_F(Save, RowsOfAnotherVoucherInTheCollectionAreStoredUnderTheirOwnKey) {
    Collection rows = fitting();
    rows->Item(2)->SetValue("iPeriod", std::uint8_t{3});
    EXPECT_TRUE(save(&rows));
    EXPECT_NE(insertRow(*rows, 2).find("values("), std::string::npos);
    EXPECT_EQ(rows->Item(2)->Item("iPeriod"), Variant(std::uint8_t{1})) << "the voucher's line brings its own key";
    const Collection keyless = fitting();
    keyless->Item(2)->SetValue("iPeriod", std::uint8_t{3});
    Collection argument = keyless;
    world.database.clearJournal();
    EXPECT_TRUE(saveEx(Date(2.0), &argument, "mine"));
    EXPECT_EQ(keyless->Item(2)->Item("iPeriod"), Variant(std::uint8_t{3}));
    EXPECT_EQ(world.database.countOf(insertRow(*keyless, 2)), 1U);
}

TEST_F(Save, UnderANewNumberKeepsTheRowsOfAFormerNumberThatIsStillInUse) {
    world.database.answer(countLines(7), {{""}, {{std::int32_t{1}}}, {}});
    Collection rows = fitting();
    rows->ibackno_id(7);
    EXPECT_TRUE(save(&rows));
    const auto& ran = world.statements();
    EXPECT_EQ(std::count(ran.begin(), ran.end(), open(countLines(7))), 1);
    EXPECT_EQ(world.database.countOf("delete"), 0U) << "none for the new number either";
    EXPECT_EQ(world.database.countOf("insert"), 2U);
}

TEST_F(Save, UnderANewNumberRemovesTheRowsOfAFormerNumberThatIsFree) {
    world.database.answer(countLines(7), {{""}, {{std::int32_t{0}}}, {}});
    Collection rows = fitting();
    rows->ibackno_id(7);
    bool checkSum = false;
    EXPECT_TRUE(save(&rows, &checkSum));
    EXPECT_EQ(world.statements(), (Lines{open(option("bCashCode")), run(haveCash()), own(kind()), run(lines()),
                                         run(lines()), open(countLines(7)), run(deleteRows("7")),
                                         run(insertRow(*rows, 1)), run(insertRow(*rows, 2)), run(currencyNames())}));
    EXPECT_EQ(world.database.openRecordsets(), Lines{});
}

TEST_F(Save, UnderItsOwnFormerNumberReplacesAsUsual) {
    Collection rows = fitting();
    rows->ibackno_id(5);
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(world.database.countOf("Select Count(*)"), 0U);
    EXPECT_EQ(world.database.countOf(deleteRows("5")), 1U);
}

TEST_F(Save, ReplacesUnderTheCollectionsKeyAndNotTheArguments) {
    Collection rows = hostCollection(world);
    rows->UpdateCol(1, 2, 9, Date(41279.0));
    world.setSum(0.0);
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(world.database.countOf(deleteRows("9")), 1U);
    EXPECT_EQ(world.statements().back(), run(currencyNames()));
}

TEST_F(Save, WithoutACashAccountDeletesTheRowsOfACollectionThatKeptItsNumber) {
    world.haveCash(false);
    Collection rows = hostCollection(world);
    rows->ibackno_id(5);
    addRow(rows, i16(2), "wrong", 0.0, 1.0);
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(world.statements(), (Lines{open(option("bCashCode")), run(haveCash()), run(deleteRows())}));
}

TEST_F(Save, WithoutACashAccountDeletesUnderTheArguments) {
    world.haveCash(false);
    Collection rows = world.provider.CreateCashFlowCollection();
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(world.statements().back(), run(deleteRows("5")));
}

TEST_F(Save, WithoutACashAccountAndANewNumberCleansUpUnderTheFormerOne) {
    world.haveCash(false);
    world.gl.SetOldVouchNoID(70000);
    Collection rows = hostCollection(world);
    rows->ibackno_id(7);
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(world.statements(),
              (Lines{open(option("bCashCode")), run(haveCash()), run(deleteRowsOfFreeNumber(70000))}));
    rows = nullptr;
    world.database.clearJournal();
    EXPECT_TRUE(save(&rows));
    EXPECT_TRUE(save(nullptr));
    EXPECT_EQ(world.statements(),
              (Lines{open(option("bCashCode")), run(haveCash()), run(deleteRowsOfFreeNumber(70000)),
                     open(option("bCashCode")), run(haveCash()), run(deleteRowsOfFreeNumber(70000))}))
        << "the former number stays from voucher to voucher";
}

TEST_F(Save, WithoutACashAccountAndAFormerNumberDoesNothing) {
    world.haveCash(false);
    Collection rows = hostCollection(world);
    rows->ibackno_id(7);
    EXPECT_TRUE(save(&rows));
    rows = nullptr;
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(rows, nullptr);
    EXPECT_EQ(world.statements(),
              (Lines{open(option("bCashCode")), run(haveCash()), open(option("bCashCode")), run(haveCash())}));
}

TEST_F(Save, TheNumberThatTheHostNamesServesVouchersWithoutACashAccountAlone) {
    world.gl.SetOldVouchNoID(7);
    Collection rows = fitting();
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(world.database.countOf("if not exists("), 0U);
    EXPECT_EQ(world.database.countOf("delete"), 1U);
    EXPECT_EQ(world.database.countOf(deleteRows("5")), 1U);
}

TEST_F(Save, OfANumberBeyondSixteenBitsOverflows) {
    world.haveCash(true);
    Collection rows = hostCollection(world);
    rows->UpdateCol(1, 2, 40000, Date(41279.0));
    const Error error = errorOf([&] { (void)save(&rows); });
    EXPECT_EQ(error.number(), errors::overflow);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(world.database.countOf("delete"), 0U);
    Collection none;
    const Error generated = errorOf(
        [&] { (void)world.gl.SaveCashFlowColEx(world.connection, "gl_accvouch", 1, 2, 40000, Date(41279.0), &none); });
    EXPECT_EQ(generated.number(), errors::overflow);
    EXPECT_EQ(generated.source(), "CashFlow");
}

TEST_F(Save, OfACashLineWithoutAnAmountIsRefused) {
    world.setLines({{1, "1001", Null{}, 100.0, {}, {}, {}}, {2, "6001", 100.0, 0.0, "98", "01", {}}});
    Collection rows;
    const Error error = errorOf([&] { (void)save(&rows); });
    EXPECT_EQ(error.number(), errors::invalidNull);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(rows, nullptr);
    errorCameOut();
}

TEST_F(Save, StoredRowsWithoutADateLeaveTheCollectionWithoutAKey) {
    Table stored{{"iperiod", "isignseq", "ino_id", "dbill_date", "inid", "cCashItem", "md", "mc", "ccode"}, {}, {}};
    stored.rows = {{std::uint8_t{1}, i16(2), std::int32_t{5}, Null{}, i16(2), "01", 0.0, 100.0, "6001"}};
    world.database.answerPrefix("select table1.*,", stored);
    Collection rows;
    EXPECT_ERROR(save(&rows), errors::rowsDoNotFit);
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->iNo_id(), 0);
}

TEST_F(Save, HostileValuesGoDownAsTheyCome) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "60'; drop table x --", 0.0, 100.0, {}, {}, {}}});
    Collection rows = hostCollection(world);
    addRow(rows, i16(2), "60'; drop table x --", 0.0, 100.0, "0'1");
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(world.database.countOf("select ccode from code where iyear=2013 and  ccode=N'60'; drop table x --' and"),
              1U);
    EXPECT_NE(insertRow(*rows, 1).find("N'0'1'"), std::string::npos);
}

TEST_F(Save, WithoutACashAccountAndWithTheFormerNumberZeroDeletesNothing) {
    world.haveCash(false);
    Collection rows = hostCollection(world);
    rows->ibackno_id(0);
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(world.statements(), (Lines{open(option("bCashCode")), run(haveCash())}));
}

TEST_F(Save, WithoutACashAccountTakesOneForAFormerNumber) {
    world.haveCash(false);
    world.gl.SetOldVouchNoID(1);
    EXPECT_TRUE(save(nullptr));
    EXPECT_EQ(world.statements().back(), run(deleteRowsOfFreeNumber(1)));
}

TEST_F(Save, WithoutACashAccountOverflowsBeyondSixteenBitsOnlyWithACollection) {
    world.haveCash(false);
    Collection rows = hostCollection(world);
    rows->UpdateCol(1, 2, 40000, Date(41279.0));
    const Error error = errorOf([&] { (void)save(&rows); });
    EXPECT_EQ(error.number(), errors::overflow);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(world.database.countOf("delete"), 0U);
    EXPECT_TRUE(world.gl.SaveCashFlowCol(world.connection, "gl_accvouch", 1, 2, 40000, nullptr));
}

TEST_F(Save, InStateTwoGeneratesTheRowsAnewAndInStateThreeKeepsTheStoredOnes) {
    world.setStored({"88"});
    world.database.answer(statements::noStoredRows.fill(statements::LiteralPolicy::asGiven, 2013, {1, 2, 5}),
                          {{"inid"}, {}, {}});
    modPublic::context().VouchState = 2;
    Collection rows;
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:01"});
    modPublic::context().VouchState = 3;
    rows = nullptr;
    EXPECT_TRUE(save(&rows));
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:88"});
}

TEST_F(Save, OfTheDateZeroSetsTheYearOfThatDayAndReadsTheVouchersDate) {
    Collection rows;
    EXPECT_TRUE(saveEx(Date(0.0), &rows));
    EXPECT_EQ(world.statements()[1], openStatic(period("1899-12-30")));
    EXPECT_EQ(world.statements()[3], run(voucherDate()));
    EXPECT_EQ(rows->dbill_date(), Date(41279.0));
}

TEST_F(Save, RefusedWithAReasonThatTheCatalogueCannotSayShowsOneBoxAndSaysNothing) {
    world.database.answerPrefix("select  dBill_date from ", {{"dBill_date"}, {}, {}});
    login->texts->failure = Error(7, "catalogue", "no such text");
    Collection rows;
    const Error error = errorOf([&] { (void)save(&rows); });
    EXPECT_EQ(error.number(), 10010);
    EXPECT_EQ(error.description(), "");
    EXPECT_EQ(std::count_if(messages->log.begin(), messages->log.end(),
                            [](const std::string& entry) { return entry.starts_with("Show "); }),
              1);
}

TEST_F(Save, OfTwoRowsOnOneLineNumberOfAKeylessTableFollowsTheFirstLineOfIt) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}},
                    {2, "6001", 0.0, 60.0, "98", "01", "D1"},
                    {2, "6001", 0.0, 40.0, "98", "02", "D2"}});
    Collection rows;
    EXPECT_TRUE(saveEx(Date(41279.0), &rows, "mine"));
    ASSERT_EQ(rowsOf(rows), (Lines{"2:0:60:01", "2:0:40:02"}));
    EXPECT_EQ(rows->Item(1)->Item("cdept_id"), Variant("D1"));
    EXPECT_EQ(rows->Item(2)->Item("cdept_id"), Variant("D1")) << "the refresh finds the first line of that number";
}

} // namespace
} // namespace z7::cashflow::test
