#include "adapters/conformance/DatabaseUnderTest.h"

#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::conformance {
namespace {

class ViewCases : public DatabaseCase {
protected:
    void SetUp() override {
        DatabaseCase::SetUp();
        Z7_NEEDS(database_->writesToView());
    }
    void addRow(int year, int number, int inid, const std::string& item) const {
        run("insert into gl_cashtable (iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,ccode) values(" +
            std::to_string(year) + ",1,2,N''," + std::to_string(number) + "," + std::to_string(inid) + ",N'" + item +
            "',N'1001')");
    }
};

TEST_P(ViewCases, ShowsTheYearOfItsSession) {
    addRow(2013, 5, 1, "A");
    addRow(2014, 5, 1, "B");
    run("insert into code (iyear,ccode,bend) values(2013,N'1001',1); insert into code (iyear,ccode,bend) "
        "values(2014,N'1001',0)");
    const auto other = open(std::int16_t{2014});
    const auto none = open(std::nullopt);
    EXPECT_EQ(first("select cCashItem from gl_v_cashtable"), Variant("A"));
    EXPECT_EQ(other->Execute("select cCashItem from gl_v_cashtable")->Fields().Item(0), Variant("B"));
    EXPECT_EQ(none->Execute("select cCashItem from gl_v_cashtable")->RecordCount(), 0);
    EXPECT_EQ(first("select bend from gl_v_code"), Variant(true));
    EXPECT_EQ(other->Execute("select bend from gl_v_code")->Fields().Item(0), Variant(false));
    EXPECT_FALSE(run("select * from gl_v_code")->Fields().has("iyear"));
    EXPECT_TRUE(run("select * from gl_v_accvouch")->Fields().has("iyear"));
    for (const char* line : {"2013,1,2,5,1", "2014,1,2,5,1", "2014,1,2,5,2"}) {
        run(std::string("insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,ccode) values(") + line +
            ",N'1001')");
    }
    const std::string lines = "Select Count(*) From gl_v_accvouch Where iperiod=1 and isignseq=2 and ino_id=5";
    EXPECT_EQ(first(lines), Variant(std::int32_t{1}));
    EXPECT_EQ(other->Execute(lines)->Fields().Item(0), Variant(std::int32_t{2}));
    EXPECT_EQ(none->Execute(lines)->Fields().Item(0), Variant(std::int32_t{0}));
}

TEST_P(ViewCases, InsertTakesADefaultOnlyForAColumnThatIsLeftOut) {
    const std::string begin = "insert into gl_v_cashtable (iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,ccode";
    const std::string values = ") values(1,2,N'',5,1,N'A',N'1001'";
    for (const char* column : {"md", "mc", "md_f", "mc_f", "nd_s", "nc_s", "iYear"}) {
        const Error error = errorOf([&] { run(begin + "," + column + values + ",null)"); });
        EXPECT_EQ(error.sqlState(), "23000") << column << ": " << error.description();
    }
    EXPECT_EQ(count("select * from gl_cashtable"), 0);
    run(begin + values + ")");
    EXPECT_EQ(count("select * from gl_cashtable where md=0 and mc=0 and md_f=0 and iYear=2013"), 1);
    EXPECT_EQ(errorOf([&] {
                  run("insert into GL_V_CashItemDataSource (cDataSource,bdir,bDataStyle) values(N'1001',1,null)");
              }).sqlState(),
              "23000");
    run("insert into GL_V_CashItemDataSource (cDataSource,bdir) values(N'1001',1)");
    EXPECT_EQ(count("select * from GL_CashItemDataSource where bDataStyle=0 and iyear=2013"), 1);
}

TEST_P(ViewCases, DeletesInItsYearOnly) {
    addRow(2013, 5, 1, "A");
    addRow(2013, 6, 1, "A");
    addRow(2014, 5, 1, "B");
    run("delete from gl_v_cashtable where iperiod=1 and isignseq=2 and ino_id=5");
    EXPECT_EQ(count("select * from gl_cashtable where iyear=2013 and ino_id=5"), 0);
    EXPECT_EQ(count("select * from gl_cashtable"), 2);
}

TEST_P(ViewCases, UpdatesTheVeryRowsThatMatch) {
    addRow(2013, 5, 1, "A");
    addRow(2013, 5, 1, "B");
    addRow(2014, 5, 1, "A");
    run("update gl_v_cashtable set cCashItem=N'C', md=5 where cCashItem=N'a'");
    EXPECT_EQ(count("select * from gl_cashtable where cCashItem=N'C' and md=5 and iyear=2013"), 1);
    EXPECT_EQ(count("select * from gl_cashtable where cCashItem=N'B' and md=0"), 1);
    EXPECT_EQ(count("select * from gl_cashtable where cCashItem=N'A' and iyear=2014"), 1);
    run("delete from gl_v_cashtable where cCashItem=N'C'");
    EXPECT_EQ(count("select * from gl_cashtable"), 2);
}

TEST_P(ViewCases, RowsThatDifferInOneColumnAreKeptApart) {
    const std::string columns =
        "RowGuid,csign,cCashItem,md,mc,ccode,md_f,mc_f,nd_s,nc_s,cdept_id,cperson_id,ccus_id,csup_id,citem_class,citem_"
        "id,"
        "cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,"
        "cDefine12,cDefine13,cDefine14,cDefine15,dbill_date,cDefine16,cexch_name,inid,";
    for (std::size_t begin = 0; begin < columns.size();) {
        const std::size_t end = columns.find(',', begin);
        const std::string column = columns.substr(begin, end - begin);
        begin = end + 1;
        SCOPED_TRACE(column);
        const bool isDate = column == "cDefine4" || column == "cDefine6" || column == "dbill_date";
        const std::string other = isDate ? "'2013-01-06'" : "'7'";
        addRow(2013, 5, 1, "A");
        addRow(2013, 5, 1, "A");
        run("update gl_cashtable set iNo_id=6, " + column + "=" + other + " where iNo_id=5");
        addRow(2013, 6, 1, "A");
        run("delete from gl_v_cashtable where " + column + "=" + other);
        EXPECT_EQ(count("select * from gl_cashtable"), 1);
        run("delete from gl_cashtable");
    }
}

TEST_P(ViewCases, InsertedRowsLandInTheTableWithItsDefaults) {
    run("insert into gl_v_cashtable (iPeriod,iSignSeq,csign,iNo_id,cCashItem,ccode) values(1,2,N'',5,N'A',N'1001')");
    const auto row = run("select * from gl_cashtable");
    EXPECT_EQ(row->Fields().Item("iyear"), Variant(std::int16_t{2013}));
    EXPECT_EQ(row->Fields().Item("md"), Variant(0.0));
    EXPECT_EQ(row->Fields().Item("nc_s"), Variant(0.0));
    EXPECT_EQ(row->Fields().Item("inid"), Variant());
    run("insert into gl_v_cashtable (iYear,iPeriod,iSignSeq,csign,iNo_id,cCashItem,ccode) "
        "values(2014,1,2,N'',5,N'A',N'1001')");
    EXPECT_EQ(count("select * from gl_v_cashtable"), 1);
    EXPECT_EQ(count("select * from gl_cashtable where iyear=2014"), 1) << "a row may name its year";
}

TEST_P(ViewCases, WithoutAYearAnInsertThatNamesNoneFails) {
    const auto none = open(std::nullopt);
    const Error error = errorOf([&] {
        none->Execute(
            "insert into gl_v_cashtable (iPeriod,iSignSeq,csign,iNo_id,cCashItem,ccode) values(1,2,N'',5,N'A',N'1')");
    });
    EXPECT_NE(asciiLower(error.description()).find("year"), std::string::npos) << error.description();
    EXPECT_EQ(count("select * from gl_cashtable"), 0);
}

TEST_P(ViewCases, TemplatesNumberThemselves) {
    const std::string insert = "insert into GL_V_CashItemDataSource (cDataSource,bdir,cItemCode) values(N'1001',1,N'";
    run(insert + "A')");
    run(insert + "B')");
    const auto rows = run("select * from GL_V_CashItemDataSource order by iID desc");
    EXPECT_EQ(rows->Fields().Item("cItemCode"), Variant("B"));
    const Variant highest = rows->Fields().Item("iID");
    ASSERT_TRUE(highest.is<std::int32_t>());
    EXPECT_EQ(rows->Fields().Item("iyear"), Variant(std::int16_t{2013}));
    EXPECT_EQ(rows->Fields().Item("bDataStyle"), Variant(std::uint8_t{0}));
    run("delete from GL_V_CashItemDataSource where cItemCode=N'B'");
    run(insert + "C')");
    const Variant next = first("select iID from GL_V_CashItemDataSource where cItemCode=N'C'");
    EXPECT_GT(*next.get<std::int32_t>(), *highest.get<std::int32_t>()) << "numbers rise and are not used again";
}

TEST_P(ViewCases, TemplatesAreDeletedOneByOneAndInTheirYear) {
    run("insert into GL_V_CashItemDataSource (cDataSource,bdir,cItemCode) values(N'1001',1,N'A')");
    run("insert into GL_V_CashItemDataSource (cDataSource,bdir,cItemCode) values(N'1001',1,N'B')");
    run("insert into GL_CashItemDataSource (iyear,cDataSource,bdir,cItemCode) values(2014,N'1001',1,N'B')");
    run("delete from GL_V_CashItemDataSource where cItemCode=N'B'");
    EXPECT_EQ(count("select * from GL_CashItemDataSource where cItemCode=N'A' and iyear=2013"), 1);
    EXPECT_EQ(count("select * from GL_CashItemDataSource where cItemCode=N'B' and iyear=2014"), 1);
    EXPECT_EQ(count("select * from GL_CashItemDataSource"), 2);
}

TEST_P(ViewCases, TemplatesAreSavedThroughARecordset) {
    const std::string statement = "select * from GL_V_CashItemDataSource where bDataStyle=0 and cDataSource=N'1001' "
                                  "and bdir =1 order by iID desc";
    auto records = connection_->createRecordset();
    records->Open(statement, connection_->ConnectionString(), CursorType::dynamic, LockType::pessimistic);
    ASSERT_TRUE(records->atEnd());
    records->AddNew();
    records->Fields().Item("bDataStyle", Variant(std::int32_t{0}));
    records->Fields().Item("cDataSource", Variant("1001"));
    records->Fields().Item("bDir", Variant(std::int32_t{1}));
    records->Fields().Item("cItemCode", Variant("0101"));
    records->Fields().Item("dStartDate", Variant(Date::fromCivil(2013, 1, 5)));
    records->Update();
    records->Close();

    records->Open(statement, connection_->ConnectionString(), CursorType::dynamic, LockType::pessimistic);
    ASSERT_FALSE(records->atEnd());
    EXPECT_EQ(count("select * from GL_CashItemDataSource"), 1);
    EXPECT_EQ(records->Fields().Item("dStartDate"), Variant(Date::fromCivil(2013, 1, 5)));
    EXPECT_EQ(records->Fields().Item("bdir"), Variant(true));
    records->Fields().Item("bDataStyle", Variant(std::int32_t{0}));
    records->Fields().Item("cItemCode", Variant("0102"));
    records->Update();
    records->Close();
    EXPECT_EQ(first("select cItemCode from GL_CashItemDataSource"), Variant("0102"));
    EXPECT_EQ(count("select * from GL_CashItemDataSource where dStartDate='2013-01-05' and dEndDate is null"), 1);
}

TEST_P(ViewCases, ATemplateThatChangedMeanwhileIsNotOverwritten) {
    run("insert into GL_V_CashItemDataSource (cDataSource,bdir,cItemCode) values(N'1001',1,N'A')");
    const auto records = openRecords("select * from GL_V_CashItemDataSource");
    run("update GL_CashItemDataSource set cItemCode=N'B'");
    records->Fields().Item("cItemCode", Variant("C"));
    EXPECT_EQ(errorOf([&] { records->Update(); }).number(), 3197);
    EXPECT_EQ(first("select cItemCode from GL_CashItemDataSource"), Variant("B"));
    EXPECT_EQ(records->Fields().Item("cItemCode"), Variant("C")) << "the change stays pending";
}

INSTANTIATE_TEST_SUITE_P(Adapters, ViewCases, ::testing::ValuesIn(databasesUnderTest()), adapterName);

} // namespace
} // namespace z7::cashflow::conformance
