#include "providers/ProviderTest.h"
#include "z7cashflow/model/ItemSource.h"
#include "z7cashflow/providers/rowGeneration.h"

namespace z7::cashflow::test {
namespace {

using namespace ledger;

class Generation : public ProviderTest {};

TEST_F(Generation, CreatesARowForEachOtherLine) {
    const Collection rows = create(world);
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:01"});
    EXPECT_EQ(world.statements(), (Lines{run(lines()), open(option("bXJLL")), own(itemName("01")), own(itemName("01")),
                                         own(kind()), run(lines())}));
    EXPECT_EQ(debugTexts, (Lines{"111", "222", "itemCode:01"}));
    const auto row = rows->Item(1);
    EXPECT_EQ(row->Item("ccode"), Variant("6001"));
    EXPECT_EQ(row->Item("cCashItemName"), Variant("item 01"));
    EXPECT_EQ(row->Item("cdept_id"), Variant("D2"));
    EXPECT_EQ(row->Item("csign"), Variant("V"));
    EXPECT_EQ(row->Item("iYear"), Variant(i16(2013)));
    EXPECT_EQ(row->Item("dbill_date"), Variant(Date(41279.0)));
    EXPECT_EQ(row->Item("RowGuid"), Variant(GuidSequence::text(1)));
    EXPECT_EQ(row->Item("md_f"), Variant(7.5));
    EXPECT_TRUE(row->Item("cDefine1").isNull());
    EXPECT_EQ(rows->iPeriod(), 1);
    EXPECT_EQ(rows->isignseq(), 2);
    EXPECT_EQ(rows->iNo_id(), 5);
    EXPECT_EQ(rows->dbill_date(), Date(41279.0));
    EXPECT_EQ(rows->VoucherTable(), "gl_accvouch");
    EXPECT_EQ(rows->coutNo_id(), "");
    EXPECT_TRUE(rows->Changed());
}

TEST_F(Generation, CreatesARowForEachCashLineIfTheOptionSaysSo) {
    modPublic::context().bCashCode = true;
    world.setLines({{1, "1001", 100.0, 0.0, "98", "07", {}}, {2, "6001", 0.0, 100.0, "98", "01", {}}});
    EXPECT_EQ(rowsOf(create(world)), Lines{"1:100:0:07"});
}

TEST_F(Generation, KeepsTheOrderOfTheLines) {
    world.setLines({{9, "6001", 0.0, 30.0, "98", "01", {}},
                    {1, "1001", 100.0, 0.0, {}, {}, {}},
                    {4, "6002", 0.0, 50.0, "98", "02", {}},
                    {2, "6001", 0.0, 20.0, "98", "01", {}}});
    EXPECT_EQ(rowsOf(create(world)), (Lines{"9:0:30:01", "4:0:50:02", "2:0:20:01"}));
}

TEST_F(Generation, CreatesNoRowsIfTheCashLinesCancelOut) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}},
                    {2, "1002", 0.0, 100.0, {}, {}, {}},
                    {3, "6001", 0.0, 100.0, "98", "01", {}}});
    const Collection rows = create(world);
    EXPECT_EQ(rows->Count(), 0);
    EXPECT_EQ(rows->iNo_id(), 5);
    EXPECT_EQ(rows->dbill_date(), Date(41279.0));
    EXPECT_EQ(rows->VoucherTable(), "gl_accvouch");
    EXPECT_EQ(world.statements(), (Lines{run(lines()), own(kind()), run(lines())}));
    EXPECT_FALSE(rows->Changed());
}

TEST_F(Generation, ComparesTheCashSumWithZeroExactly) {
    world.setLines({{1, "1001", 0.1, 0.0, {}, {}, {}},
                    {2, "1001", 0.2, 0.0, {}, {}, {}},
                    {3, "1001", 0.0, 0.3, {}, {}, {}},
                    {4, "6001", 0.0, 0.0, "98", "01", {}}});
    EXPECT_EQ(create(world)->Count(), 1);
}

TEST_F(Generation, CountsTheDebitOfALineThatHasBoth) {
    world.setLines({{1, "1001", 100.0, 100.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, "98", "01", {}}});
    EXPECT_EQ(create(world)->Count(), 1);
}

TEST_F(Generation, TakesANullCashFlagAsFalseInTheSumAndPassesTheLineOver) {
    Table table{{"inid", "md", "mc", "ccode", "bCashItem"}, {}, {}};
    table.rows = {{i16(1), 100.0, 0.0, "1001", true}, {i16(2), 0.0, 100.0, "6001", Null{}}};
    world.database.answerPrefix("select  code.iYear,iPeriod,", table);
    modPublic::context().bAutoDisplay = true;
    EXPECT_EQ(create(world)->Count(), 0);
    table.rows = {{i16(1), 100.0, 0.0, "1001", Null{}}};
    world.database.answerPrefix("select  code.iYear,iPeriod,", table);
    world.database.clearJournal();
    EXPECT_EQ(create(world)->Count(), 0);
    EXPECT_EQ(world.database.countOf(option("bXJLL")), 0U) << "the cash sum is 0";
}

TEST_F(Generation, FailsOnACashLineWithoutAnAmount) {
    for (const Line& cash : {Line{1, "1001", Null{}, 100.0, {}, {}, {}}, Line{1, "1001", 100.0, Null{}, {}, {}, {}},
                             Line{1, "1001", 0.0, Null{}, {}, {}, {}}}) {
        world.setLines({cash, {2, "6001", 0.0, 100.0, "98", "01", {}}});
        EXPECT_ERROR(create(world), errors::invalidNull);
    }
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", Null{}, 100.0, "98", "01", {}}});
    EXPECT_EQ(rowsOf(create(world)), Lines{"2::100:01"}) << "other lines may lack one";
    errorCameOut();
}

TEST_F(Generation, WithoutLinesCreatesNoRows) {
    world.setLines({});
    EXPECT_EQ(create(world)->Count(), 0);
}

TEST_F(Generation, LeavesTheYearAlone) {
    modPublic::SetIYear(2011);
    (void)create(world);
    EXPECT_EQ(modPublic::GetIYear(), 2011);
    EXPECT_EQ(world.statements().front(), run(lines("gl_accvouch", "2011")));
    EXPECT_EQ(world.database.countOf("select iyear,iid"), 0U);
}

TEST_F(Generation, DropsALineWithoutAnItem) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, {}, "01", {}}});
    EXPECT_EQ(create(world)->Count(), 0);
    EXPECT_EQ(world.statements(),
              (Lines{run(lines()), open(option("bXJLL")), own(itemName("")), own(itemTemplate("6001", false)),
                     own(itemName("")), own(kind()), run(lines())}));
    EXPECT_EQ(debugTexts, (Lines{"222", "itemCode:"}));
}

TEST_F(Generation, KeepsALineWithoutAnItemWhereTheOptionSaysSo) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, {}, {}, {}}});
    modPublic::context().bAutoDisplay = true;
    EXPECT_EQ(rowsOf(create(world)), Lines{"2:0:100:"});
}

TEST_F(Generation, TakesTheItemOfTheTemplateOfTheLinesSide) {
    world.setLines({{1, "1001", 100.0, 200.0, {}, {}, {}},
                    {2, "6001", 0.0, 100.0, {}, {}, {}},
                    {3, "6002", 5.0, 0.0, "97", "x", {}},
                    {4, "6003", Null{}, 5.0, {}, {}, {}}});
    world.database.answer(itemTemplate("6001", false), {{"cItemCode"}, {{"21"}, {"22"}}, {}});
    world.database.answer(itemTemplate("6002", true), {{"cItemCode"}, {{"23"}}, {}});
    world.database.answer(itemTemplate("6003", false), {{"cItemCode"}, {{"24"}}, {}});
    const Collection rows = create(world);
    EXPECT_EQ(rowsOf(rows), (Lines{"2:0:100:21", "3:5:0:23", "4::5:24"}));
    EXPECT_EQ(rows->Item(1)->Item("cCashItemName"), Variant("item 21"));
    EXPECT_EQ(
        world.statements(),
        (Lines{run(lines()), open(option("bXJLL")), own(itemName("")), own(itemTemplate("6001", false)),
               own(itemName("21")), own(itemName("")), own(itemTemplate("6002", true)), own(itemName("23")),
               own(itemName("")), own(itemTemplate("6003", false)), own(itemName("24")), own(kind()), run(lines())}));
    EXPECT_EQ(debugTexts, (Lines{"222", "itemCode:", "111", "222", "itemCode:", "222", "itemCode:"}));
}

TEST_F(Generation, TakesAnAuxiliaryItemWhoseClassIsNotAColumnForACashItem) {
    Table table{{"inid", "md", "mc", "ccode", "citem_id", "bCashItem"}, {}, {}};
    table.rows = {{i16(1), 100.0, 0.0, "1001", Null{}, true}, {i16(2), 0.0, 100.0, "6001", "44", false}};
    world.database.answerPrefix("select  code.iYear,inid,", table);
    const Collection rows = world.gl.CreateCashFlowColFromDB(world.connection, "mine", 1, 2, 5, Date(41279.0));
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:44"});
    EXPECT_EQ(debugTexts, (Lines{"111", "222", "itemCode:44"}));
}

TEST_F(Generation, TakesTheDraftsItemBeforeTheLinesOwn) {
    world.gl.bFromDraft(true);
    const std::string draft = "select cCashItem from GL_VouchDraft where cUserId=N'u1' and inid=2";
    world.database.answer(draft, {{"cCashItem"}, {{"33"}}, {}});
    EXPECT_EQ(rowsOf(create(world)), Lines{"2:0:100:33"});
    EXPECT_EQ(world.statements(), (Lines{run(lines()), open(option("bXJLL")), own(draft), own(itemName("33")),
                                         own(itemName("33")), own(kind()), run(lines())}));
    EXPECT_EQ(debugTexts, Lines{});
}

TEST_F(Generation, GoesOnToTheLineWhereTheDraftHoldsNoItem) {
    world.provider.IGlVoucherProvider_bFromDraft(true);
    const std::string draft = "select cCashItem from GL_VouchDraft where cUserId=N'u1' and inid=2";
    world.database.answerInTurn(draft, {{{"cCashItem"}, {{Null{}}}, {}}, {{"cCashItem"}, {}, {}}});
    EXPECT_EQ(rowsOf(create(world)), Lines{"2:0:100:01"});
    EXPECT_EQ(world.statements(), (Lines{run(lines()), open(option("bXJLL")), own(draft), own(itemName("")),
                                         own(itemName("01")), own(itemName("01")), own(kind()), run(lines())}));
    EXPECT_EQ(rowsOf(create(world)), Lines{"2:0:100:01"});
}

TEST_F(Generation, DoesNotAskTheDraftOfAVoucherThatIsNotFromOne) {
    (void)create(world);
    world.gl.bFromDraft(true);
    world.gl.bFromDraft(false);
    (void)create(world);
    EXPECT_EQ(world.database.countOf("select cCashItem from GL_VouchDraft"), 0U);
}

TEST_F(Generation, ADraftNeedsTheNumberOfTheLine) {
    world.gl.bFromDraft(true);
    Table table{{"inid", "md", "mc", "ccode", "bCashItem"}, {}, {}};
    table.rows = {{i16(1), 100.0, 0.0, "1001", true}, {Null{}, 0.0, 100.0, "6001", false}};
    world.database.answerPrefix("select  code.iYear,iPeriod,", table);
    EXPECT_ERROR(create(world), errors::invalidNull);
    table.rows = {{i16(1), 100.0, 0.0, "1001", true}, {std::int32_t{40000}, 0.0, 100.0, "6001", false}};
    world.database.answerPrefix("select  code.iYear,iPeriod,", table);
    EXPECT_ERROR(create(world), errors::overflow);
    errorCameOut();
}

TEST_F(Generation, AFailingNameIsIgnoredOnlyIfTheItemIsOnTheLine) {
    world.database.failStatement(3, Error(1205, "server", "deadlock"));
    const Collection rows = create(world);
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:01"});
    EXPECT_EQ(rows->Item(1)->Item("cCashItemName"), Variant("item 01"));
    world.database.failStatement(4, Error(1205, "server", "deadlock"));
    const Error error = errorOf([&] { (void)create(world); });
    EXPECT_EQ(error.number(), 1205);
    EXPECT_EQ(error.source(), "server");
    errorCameOut();
}

TEST_F(Generation, AFailingNameOfALineWithoutAnItemIsIgnoredAndThatOfItsTemplateIsNot) {
    const std::vector<Line> voucher{{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, {}, "01", {}}};
    for (const std::size_t n : {3U, 4U, 5U}) {
        Ledger fresh;
        fresh.setLines(voucher);
        fresh.database.failStatement(n, Error(1205, "server", "deadlock"));
        if (n == 3) {
            EXPECT_EQ(create(fresh)->Count(), 0);
            EXPECT_EQ(fresh.statements(),
                      (Lines{run(lines()), open(option("bXJLL")), own(itemName("")), own(itemTemplate("6001", false)),
                             own(itemName("")), own(kind()), run(lines())}));
        } else {
            const Error error = errorOf([&] { (void)create(fresh); });
            EXPECT_EQ(error.number(), 1205) << n;
            EXPECT_EQ(error.source(), "server");
            EXPECT_EQ(fresh.statements().size(), n);
        }
    }
}

TEST_F(Generation, AFailingDebugSinkHasNoEffect) {
    modPublic::context().debugSink = [](const std::string&) { throw Error(5, "host", "the log is full"); };
    EXPECT_EQ(rowsOf(create(world)), Lines{"2:0:100:01"});
}

TEST_F(Generation, EveryOtherFailureIsTheCallers) {
    for (const std::size_t n : {1U, 2U, 4U, 5U, 6U}) {
        Ledger fresh;
        fresh.database.failStatement(n, Error(1205, "server", "deadlock"));
        EXPECT_ERROR(create(fresh), 1205) << n;
        EXPECT_EQ(fresh.statements().size(), n);
        EXPECT_EQ(fresh.database.openRecordsets(), Lines{});
    }
}

TEST_F(Generation, NotesTheOptionThatNobodyReads) {
    world.setOption("bXJLL", "tRuE");
    (void)create(world);
    EXPECT_TRUE(modPublic::context().bXJLL);
    world.setOption("bXJLL", Null{});
    (void)create(world);
    EXPECT_FALSE(modPublic::context().bXJLL);
    EXPECT_FALSE(modPublic::context().bCashCode);
}

TEST_F(Generation, UsesTheFlagsThatWereLeftBehind) {
    modPublic::context().bCashCode = true;
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, "98", "01", {}}});
    EXPECT_EQ(create(world)->Count(), 0);
    modPublic::context().bAutoDisplay = true;
    EXPECT_EQ(rowsOf(create(world)), Lines{"1:100:0:"});
    EXPECT_EQ(world.database.countOf(option("bCashCode")), 0U);
    EXPECT_EQ(world.database.countOf(option("bAutoDisplay")), 0U);
}

TEST_F(Generation, ReadsAKeylessTableWhole) {
    const Collection rows = world.gl.CreateCashFlowColFromDB(world.connection, "mine", 1, 2, 5, Date(41279.0));
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:01"});
    EXPECT_EQ(rows->Item(1)->Item("csign"), Variant("kind")) << "such a table has no kind of its own";
    EXPECT_EQ(rows->Item(1)->Item("iNo_id"), Variant(std::int32_t{5}));
    EXPECT_EQ(world.statements(), (Lines{run(keylessLines("mine")), open(option("bXJLL")), own(itemName("01")),
                                         own(itemName("01")), own(kind()), run(keylessLines("mine"))}));
    EXPECT_EQ(std::count(world.database.trace().begin(), world.database.trace().end(), "Filter inid=2"), 1);
}

TEST_F(Generation, TakesATableNamedLikeStoredRowsAsStoredRows) {
    modPublic::context().bAutoDisplay = true;
    const Collection rows = world.gl.CreateCashFlowColFromDB(world.connection, "old_GL_CashTable", 1, 2, 5, Date(2.0));
    EXPECT_EQ(rows->Count(), 2);
}

TEST_F(Generation, OverflowsOnANumberBeyondSixteenBits) {
    const auto createBeyond = [&] {
        return world.gl.CreateCashFlowColFromDB(world.connection, "gl_accvouch", 1, 2, 40000, Date(41279.0));
    };
    EXPECT_ERROR(createBeyond(), errors::overflow);
    EXPECT_EQ(world.statements().front(), run(lines("gl_accvouch", "2013", "40000")));
    world.setLines({});
    EXPECT_ERROR(createBeyond(), errors::overflow);
}

class RowsOfRecords : public Generation {
protected:
    Collection rowsOfRecords(const Table& table, const std::string& coutNo_id) {
        world.database.answer("records", table);
        const auto records = world.connection.Execute("records");
        const Collection rows = GetCashFlowColFromRs(world.connection, *records, Date(), {coutNo_id}, false);
        EXPECT_EQ(records->State(), ObjectState::closed);
        return rows;
    }
    const Table withoutKey{
        {"inid", "md", "mc", "ccode", "ccashitem_id", "bCashItem"}, {{i16(2), 0.0, 100.0, "6001", "55", false}}, {}};
};

TEST_F(RowsOfRecords, AnOutsideKeyGoesToTheCollectionAndNoDateToTheRows) {
    const Collection rows = rowsOfRecords(withoutKey, "OUT");
    EXPECT_EQ(rows->coutNo_id(), "OUT");
    EXPECT_EQ(rowsOf(rows), Lines{"2:0:100:55"});
    EXPECT_EQ(rows->Item(1)->Item("dbill_date"), Variant(Date()));
    EXPECT_EQ(rows->VoucherTable(), "") << "whoever asked for the rows names their table";
    rows->UpdateCol(1, 2, 5, Date(41279.0));
    EXPECT_EQ(rows->Item(1)->Item("dbill_date"), Variant(Date(41279.0)));
    EXPECT_EQ(rowsOfRecords(withoutKey, "")->coutNo_id(), "");
}

TEST_F(RowsOfRecords, TheFirstRecordDefinesTheKeyOnlyIfItIsComplete) {
    Table table{
        {"iperiod", "isignseq", "ino_id", "dbill_date", "inid", "md", "mc", "ccode", "ccashitem_id", "bCashItem"},
        {},
        {}};
    const std::vector<Variant> first{
        std::uint8_t{3}, i16(4), std::int32_t{70000}, Date(41279.0), i16(1), 0.0, 1.0, "6001", "55", false};
    table.rows = {first, first};
    table.rows[1][0] = std::uint8_t{9};
    const Collection whole = rowsOfRecords(table, "");
    EXPECT_EQ(whole->iPeriod(), 3);
    EXPECT_EQ(whole->isignseq(), 4);
    EXPECT_EQ(whole->dbill_date(), Date(41279.0));
    for (std::size_t column = 0; column < 4; ++column) {
        table.rows = {first};
        table.rows[0][column] = Null{};
        const Collection rows = rowsOfRecords(table, "");
        EXPECT_EQ(rows->iPeriod(), 0) << column;
        EXPECT_EQ(rows->isignseq(), 0) << column;
        EXPECT_EQ(rows->iNo_id(), 0) << column;
        EXPECT_EQ(rows->dbill_date(), Date()) << column;
        EXPECT_EQ(rows->Count(), 1) << column;
    }
}

TEST_F(RowsOfRecords, ARowOfAVoucherLineKeepsItsOwnIdentity) {
    const Collection rows = rowsOfRecords({{"RowGuid", "inid", "md", "mc", "ccode", "ccashitem_id", "bCashItem"},
                                           {{"line's", i16(2), 0.0, 100.0, "6001", "55", false}},
                                           {}},
                                          "OUT");
    EXPECT_EQ(rows->Item(1)->Item("RowGuid"), Variant(GuidSequence::text(1)));
}

TEST_F(RowsOfRecords, WithoutRecordsItReturnsNothingAndStillReadsTheOption) {
    world.setOption("bXJLL", "TRUE");
    EXPECT_EQ(rowsOfRecords({{"inid"}, {}, {}}, "OUT"), nullptr);
    EXPECT_TRUE(modPublic::context().bXJLL);
    EXPECT_EQ(world.statements(), (Lines{run("records"), open(option("bXJLL"))}));
}

TEST_F(Generation, OfAVoucherThatPaysCashHasANegativeSumAndCreatesRows) {
    world.setLines({{1, "1001", 0.0, 100.0, {}, {}, {}}, {2, "6001", 100.0, 0.0, "98", "01", {}}});
    EXPECT_EQ(rowsOf(create(world)), Lines{"2:100:0:01"});
}

TEST_F(Generation, TakesANegativeDebitForTheDebitSide) {
    world.setLines({{1, "1001", -50.0, 0.0, {}, {}, {}}, {2, "6602", -50.0, 0.0, {}, {}, {}}});
    world.database.answer(itemTemplate("6602", true), {{"cItemCode"}, {{"03"}}, {}});
    EXPECT_EQ(rowsOf(create(world)), Lines{"2:-50:0:03"});
}

TEST_F(Generation, ARowThatFindsNoItemEndsWithTheEmptyText) {
    modPublic::context().bAutoDisplay = true;
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, {}, {}, {}}});
    const Collection rows = create(world);
    ASSERT_EQ(rows->Count(), 1);
    EXPECT_EQ(rows->Item(1)->Item("cCashItem"), Variant(""));
    EXPECT_EQ(rows->Item(1)->Item("cCashItemName"), Variant(""));
}

/// What generation reports about the item of each row: line number and source.
class Observed : public Generation {
protected:
    Observed() {
        modPublic::context().itemObserver = [this](const CashFlow& row, const ItemSource& source) {
            static constexpr const char* kinds[] = {"record", "draft", "line", "auxiliary", "template", "none"};
            told.push_back(toText(row.Item("inid")) + " " + kinds[static_cast<int>(source.kind)] + " " + source.user +
                           source.account + (source.debit ? " debit" : "") +
                           (source.start ? " " + dayText(*source.start) : std::string()));
        };
    }
    ~Observed() override { modPublic::context().itemObserver = nullptr; }

    Lines told;
};

TEST_F(Observed, LearnsWhetherTheItemIsFromTheLineOrATemplate) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}},
                    {2, "6001", 0.0, 100.0, "98", "01", {}},
                    {3, "6002", 5.0, 0.0, {}, {}, {}},
                    {4, "6003", 0.0, 5.0, {}, {}, {}}});
    world.database.answer(itemTemplate("6002", true), {{"cItemCode", "dStartDate"}, {{"23", Date(41275.0)}}, {}});
    world.database.answer(itemTemplate("6003", false), {{"cItemCode", "dStartDate"}, {{"24", Null{}}}, {}});
    (void)create(world);
    EXPECT_EQ(told, (Lines{"2 auxiliary ", "3 template 6002 debit 2013-01-01", "4 template 6003"}));
}

TEST_F(Observed, LearnsOfTheUsersDraft) {
    world.gl.bFromDraft(true);
    world.database.answer("select cCashItem from GL_VouchDraft where cUserId=N'u1' and inid=2",
                          {{"cCashItem"}, {{"33"}}, {}});
    (void)create(world);
    EXPECT_EQ(told, Lines{"2 draft u1"});
}

TEST_F(Observed, LearnsOfTheItemEnteredOnTheLine) {
    world.database.answer("records",
                          {{"inid", "md", "mc", "ccode", "citem_class", "citem_id", "ccashitem_id", "bCashItem"},
                           {{i16(2), 0.0, 100.0, "6001", "98", "44", "55", false}},
                           {}});
    (void)GetCashFlowColFromRs(world.connection, *world.connection.Execute("records"), Date(), {"OUT"}, false);
    EXPECT_EQ(told, Lines{"2 line "});
}

TEST_F(Observed, LearnsOfAStoredRowAsItIs) {
    world.setStored({"01", "02"});
    (void)world.gl.GetCashFlowColFromDB(world.connection, "gl_accvouch", 1, 2, 5, Date(41279.0));
    EXPECT_EQ(told, (Lines{"2 record ", "2 record "}));
}

TEST_F(Observed, LearnsOfARowWithoutAnItemOnlyIfItIsKept) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, {}, {}, {}}});
    (void)create(world);
    EXPECT_EQ(told, Lines{});
    modPublic::context().bAutoDisplay = true;
    world.database.answerPrefix("select * from GL_CashItemDataSource", {{"cItemCode", "dStartDate"}, {}, {}});
    (void)create(world);
    EXPECT_EQ(told, Lines{"2 none "});
}

TEST_F(Observed, SendsTheStatementsThatAreSentWithoutAnObserver) {
    (void)create(world);
    const Lines observed = world.statements();
    modPublic::context().itemObserver = nullptr;
    Ledger other;
    (void)create(other);
    EXPECT_EQ(observed, other.statements());
}

} // namespace
} // namespace z7::cashflow::test
