#include "providers/ProviderTest.h"

namespace z7::cashflow::test {
namespace {

using namespace ledger;

/// Updating rows with the voucher's present fields, observed by saving a collection that the host created.
class Refresh : public ProviderTest {
protected:
    void save(const Collection& rows, const std::string& table = "gl_accvouch") {
        Collection argument = rows;
        bool checkSum = false;
        EXPECT_TRUE(world.gl.SaveCashFlowCol(world.connection, table, 1, 2, 5, &argument, &checkSum));
    }
};

TEST_F(Refresh, BringsTheVouchersFieldsAndSparesTheUsers) {
    const Collection rows = hostCollection(world);
    const auto row = addRow(rows, i16(2), "6001", 1.0, 60.0, "77");
    row->SetValue("cdept_id", "old");
    row->SetValue("cDefine1", "kept");
    row->SetValue("md_f", 1.0);
    const Variant guid = row->Item("RowGuid");
    save(rows);
    EXPECT_EQ(row->Item("cdept_id"), Variant("D2"));
    EXPECT_EQ(row->Item("md_f"), Variant(7.5)) << "foreign amounts follow the voucher";
    EXPECT_EQ(row->Item("csign"), Variant("V"));
    EXPECT_EQ(row->Item("citem_id"), Variant("01"));
    EXPECT_EQ(row->Item("iYear"), Variant(i16(2013)));
    EXPECT_EQ(row->Item("cDefine1"), Variant("kept")) << "the lines have no such column";
    EXPECT_EQ(row->Item("RowGuid"), guid);
    EXPECT_EQ(row->Item("cCashItem"), Variant("77"));
    EXPECT_EQ(row->Item("md"), Variant(1.0));
    EXPECT_EQ(row->Item("mc"), Variant(60.0));
    EXPECT_EQ(row->Item("ccode"), Variant("6001"));
}

TEST_F(Refresh, SparesWhatWasDecidedAlsoWhereTheLinesHaveThoseColumns) {
    world.database.answerPrefix(
        "select  code.iYear,iPeriod,",
        {{"iPeriod", "iSignSeq", "iNo_id", "inid", "RowGuid", "cCashItem", "md", "mc", "ccode", "csign", "mc_f"},
         {{std::uint8_t{1}, i16(2), std::int32_t{5}, i16(2), "line's", "99", 7.0, 8.0, "6001", "V", 9.0}},
         {}});
    const Collection rows = hostCollection(world);
    const auto row = addRow(rows, i16(2), "6001", 1.0, 60.0, "77");
    const Variant guid = row->Item("RowGuid");
    save(rows);
    EXPECT_EQ(rowsOf(rows), Lines{"2:1:60:77"});
    EXPECT_EQ(row->Item("RowGuid"), guid);
    EXPECT_EQ(row->Item("mc_f"), Variant(9.0));
}

TEST_F(Refresh, KeepsANullOfTheVoucherAsNull) {
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, {}, {}, {}}});
    const Collection rows = hostCollection(world);
    const auto row = addRow(rows, i16(2), "6001", 0.0, 100.0);
    row->SetValue("cdept_id", "old");
    save(rows);
    EXPECT_TRUE(row->Item("cdept_id").isNull());
}

TEST_F(Refresh, FiltersTheLinesByTheCollectionsKey) {
    const Collection rows = hostCollection(world);
    addRow(rows, i16(2), "6001", 0.0, 100.0);
    save(rows);
    const auto& trace = world.database.trace();
    EXPECT_EQ(std::count(trace.begin(), trace.end(), "Filter iperiod=1 and isignseq=2 and iNo_id=5 and inid=2"), 2);
}

TEST_F(Refresh, FiltersAKeylessTableByTheLineAlone) {
    const Collection rows = hostCollection(world);
    addRow(rows, "2", "6001", 0.0, 100.0);
    save(rows, "mine");
    const auto& trace = world.database.trace();
    EXPECT_EQ(std::count(trace.begin(), trace.end(), "Filter inid=2"), 2);
    EXPECT_EQ(rows->VoucherTable(), "mine");
}

TEST_F(Refresh, ReadsTheKindOnASessionOfItsOwn) {
    const Collection rows = hostCollection(world);
    addRow(rows, i16(2), "6001", 0.0, 100.0);
    save(rows);
    EXPECT_EQ(world.statements()[2], own(kind()));
    EXPECT_EQ(world.statements()[3], run(lines()));
}

class RefreshOfTheKind : public Refresh {
protected:
    /// The value left in csign of a row whose line has another account, and which is not updated otherwise. The
    /// save refuses such a row.
    Variant kindOf(const Variant& before) {
        const Collection rows = hostCollection(world);
        const auto row = addRow(rows, i16(2), "other", 0.0, 100.0);
        row->SetValue("csign", before);
        row->SetValue("cdept_id", "old");
        Collection argument = rows;
        EXPECT_ERROR(world.gl.SaveCashFlowCol(world.connection, "gl_accvouch", 1, 2, 5, &argument),
                     errors::rowsDoNotFit);
        EXPECT_EQ(row->Item("cdept_id"), Variant("old"));
        return row->Item("csign");
    }
};

TEST_F(RefreshOfTheKind, FillsAMissingOneAndNothingElseOnAnotherAccount) {
    EXPECT_EQ(kindOf(Null{}), Variant("kind"));
    EXPECT_EQ(kindOf(""), Variant("kind"));
    EXPECT_EQ(kindOf("mine"), Variant("mine"));
}

TEST_F(RefreshOfTheKind, IsEmptyWhereTheKindIsUnknown) {
    world.database.answerPrefix("select * from dsign", {{"isignseq", "csign"}, {}, {}});
    EXPECT_EQ(kindOf(Null{}), Variant(""));
    world.database.answerPrefix("select * from dsign", {{"isignseq", "csign"}, {{i16(2), Null{}}}, {}});
    EXPECT_EQ(kindOf(Null{}), Variant(""));
}

TEST_F(RefreshOfTheKind, DoesNotReachARowWithoutALine) {
    const Collection rows = hostCollection(world);
    const auto row = addRow(rows, i16(99), "6001", 0.0, 100.0);
    Collection argument = rows;
    EXPECT_ERROR(world.gl.SaveCashFlowCol(world.connection, "gl_accvouch", 1, 2, 5, &argument), errors::rowsDoNotFit);
    EXPECT_TRUE(row->Item("csign").isNull());
    EXPECT_TRUE(row->Item("cdept_id").isNull());
}

TEST_F(Refresh, RefusesARowThatBelongsToNoLine) {
    const Collection rows = hostCollection(world);
    addRow(rows, Null{}, "6001", 0.0, 100.0);
    Collection argument = rows;
    const Error error =
        errorOf([&] { (void)world.gl.SaveCashFlowCol(world.connection, "gl_accvouch", 1, 2, 5, &argument); });
    EXPECT_EQ(error.number(), errors::invalidArgument);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(world.database.countOf("delete"), 0U);
    errorCameOut();
}

} // namespace
} // namespace z7::cashflow::test
