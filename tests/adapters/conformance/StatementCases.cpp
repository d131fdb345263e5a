#include "adapters/conformance/DatabaseUnderTest.h"

#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::conformance {
namespace {

/// Every statement that the library builds, run on the voucher 2013/1/2/5, with the number of records that it must
/// return; -1 for a statement without a result.
class StatementCases : public DatabaseCase {
protected:
    void SetUp() override {
        DatabaseCase::SetUp();
        addVoucher();
    }
    void addCashRow(const std::string& table = "gl_v_cashtable") const {
        run("insert into " + table +
            " (RowGuid,iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode,md_f,mc_f,nd_s,nc_s,cdept_id,"
            "cperson_id,"
            "ccus_id,csup_id,citem_class,citem_id,cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,"
            "cDefine8,"
            "cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,dbill_date,cDefine16) "
            "values(N'1E500000000',2013,1,2,N'付',5,1,N'0101',100.25,0,N'1001',0,0,0,0,Null,Null,Null,Null,Null,Null,N'"
            "it is',"
            "Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,N'2013-01-05',Null)");
    }
    void expectCounts(const std::vector<std::pair<std::string, int>>& statements) const {
        for (const auto& [statement, expected] : statements) {
            SCOPED_TRACE(statement);
            try {
                const auto records = run(statement);
                EXPECT_EQ(records->State(), expected < 0 ? ObjectState::closed : ObjectState::open);
                if (expected >= 0 && records->State() == ObjectState::open) {
                    EXPECT_EQ(records->RecordCount(), expected);
                    EXPECT_EQ(records->Source(), statement);
                }
            } catch (const Error& error) {
                ADD_FAILURE() << error.number() << ": " << error.description();
            }
        }
    }
};

TEST_P(StatementCases, ReadersOfTheCashTable) {
    addCashRow();
    const std::string head = "select table1.*,fitemss98.citemname from (select gl_cashtable.*, "
                             "code.ccode_name,code.bCashItem from gl_cashtable "
                             "inner join code on code.iyear=gl_cashtable.iyear and gl_cashtable.ccode=code.ccode ";
    const std::string tail = ") table1 inner join fitemss98 on table1.cCashItem =fitemss98.citemcode";
    expectCounts(
        {{head + "where  code.iyear=2013 and iperiod=1 and isignseq=2 and ino_id=5" + tail, 1},
         {head + "where code.iyear=2013 and  iperiod=1 and isignseq=2 and ino_id=5" + tail + " Where 1=-1", 0}});
    const auto records = run(head + "where  code.iyear=2013 and iperiod=1 and isignseq=2 and ino_id=5" + tail);
    EXPECT_EQ(records->Fields().Item("CCODE_NAME"), Variant("现金"));
    EXPECT_EQ(records->Fields().Item("bcashitem"), Variant(true));
    EXPECT_EQ(records->Fields().Item("citemname"), Variant("销售商品"));
    EXPECT_EQ(records->Fields().Item("RowGuid"), Variant("1E500000000"));
    EXPECT_EQ(records->Fields().Name(0), "RowGuid");
}

TEST_P(StatementCases, ReadersOfVouchers) {
    const std::string list = "cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,"
                             "cDefine10,cDefine11,cDefine12,"
                             "cDefine13,cDefine14,cDefine15,cDefine16";
    const std::string money =
        "md,mc, code.ccode,md_f,mc_f,nd_s,nc_s,cdept_id,cperson_id,ccus_id,csup_id,citem_class,citem_id,";
    const std::string whole = "select  code.iYear,iPeriod,iSignSeq,csign,iNo_id,inid," + money + list +
                              ",bCashItem from gl_accvouch as TempVoucher  inner join code on  "
                              "TempVoucher.iyear=code.iyear and  code.iyear=2013 and  "
                              "TempVoucher.ccode=code.ccode where TempVoucher.iperiod=1 and TempVoucher.isignseq=2 and "
                              "TempVoucher.ino_id=5 and  "
                              "code.bend=1 and code.bclose=0";
    expectCounts({
        {whole, 3},
        {whole + " and code.cUserDefineType=N'预算类会计科目'", 0},
        {whole + " and isnull(code.cUserDefineType,N'')<>N'预算类会计科目'", 3},
        {whole + " and (code.cUserDefineType<>N'预算类会计科目' or code.cUserDefineType is null)", 3},
        {"select ccode from code where iyear=2013 and  ccode=N'1001' and code.bcashitem=1", 1},
        {"select code.ccode from gl_v_accvouch as TempVoucher inner join code on TempVoucher.ccode=code.ccode and "
         "tempvoucher.iyear=code.iyear where TempVoucher.iPeriod =1 and TempVoucher.iSignSeq =2 and TempVoucher.iNo_id "
         "=5 and "
         "code.bCashItem=1 and code.bclose=0 and code.iyear=2013",
         1},
        {"select code.ccode from gl_accvouch as TempVoucher inner join code on  TempVoucher.ccode=code.ccode  where "
         "code.bCashItem=1 and code.bclose=0 and code.iyear=2013",
         1},
        {"select code.ccode from  GL_accvouch as TempVoucher inner join code on TempVoucher.ccode=code.ccode and "
         "tempvoucher.iyear=code.iyear where TempVoucher.coutNo_id=N'X' and code.bcashitem=1 and code.bclose=0 and "
         "code.iyear=2013",
         0},
        {"select (sum(md) -sum(mc)) as mysum  from gl_v_accvouch as voucherTemp  inner join CODE on  code.iyear=2013 "
         "and   "
         "voucherTemp.iYear=CODE.iYear and   voucherTemp.ccode=CODE.ccode where voucherTemp.iperiod=1 and "
         "voucherTemp.isignseq =2 and voucherTemp.ino_id=5  and CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1 "
         "group by "
         "voucherTemp.iperiod,isignseq,ino_id",
         1},
        {"select (sum(md) -sum(mc)) as mysum  from gl_accvouch as voucherTemp  inner join CODE on   code.iyear=2013 "
         "and   "
         "voucherTemp.ccode=CODE.ccode where CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1  ",
         1},
        {"select (sum(md) -sum(mc)) as mysum  from gl_accvouch as voucherTemp  inner join gl_v_code on  "
         "voucherTemp.ccode=gl_v_code.ccode where voucherTemp.coutno_id=N'X' and gl_v_code.bend=1 and "
         "gl_v_code.bclose=0 and "
         "gl_v_code.bcashitem=1 group by voucherTemp.coutno_id",
         0},
        {"select iperiod,isignseq,ino_id,dbill_date from gl_accvouch where iYear= 2013 and iflag is null and "
         "coutNo_id=N'X'",
         0},
        {"select  dBill_date from gl_accvouch where iPeriod =1 and iSignSeq =2 and iNo_id =5", 3},
        {"select dbill_date from gl_accvouch where iyear=2013 and iPeriod=1 and iSignSeq=2 and iNo_id=5", 3},
        {"select * from gl_v_accvouch where  iPeriod=1 and iSignSeq=2 and iNo_id=5 and inid=2", 1},
        {"select cdigest from gl_accvouch where iyear=2013 and iperiod=1 and isignseq=2 and ino_id=5 and inid=1", 1},
        {"Select Count(*) From gl_v_accvouch Where iperiod=1 and isignseq=2 and ino_id=5", 1},
        {"select * from dsign where isignseq=2", 0},
    });
    EXPECT_EQ(first("select (sum(md) -sum(mc)) as mysum  from gl_accvouch"), Variant(0.0));
    EXPECT_EQ(first("select (sum(md) -sum(mc)) as mysum  from gl_accvouch where 1=0"), Variant());
    EXPECT_EQ(first("Select Count(*) From gl_v_accvouch Where iperiod=1 and isignseq=2 and ino_id=5"),
              Variant(std::int32_t{3}));
}

TEST_P(StatementCases, WritersOfTheCashTable) {
    addCashRow();
    addCashRow("gl_cashtable");
    run("UPDATE GL_CashTable SET cexch_name =  g.cexch_name FROM dbo.GL_CashTable c INNER JOIN dbo.GL_accvouch g ON  "
        "c.ccode = "
        "g.ccode AND  c.csign = g.csign  AND c.iyear = g.iyear AND c.iNo_id = g.ino_id AND  c.inid = g.inid  Where "
        "c.iPeriod = 1 "
        "And c.isignseq = 2 And c.iNo_id = 5 and c.iyear = 2013");
    EXPECT_EQ(count("select * from gl_cashtable where cexch_name=N'USD'"), 2);
    expectCounts({
        {"if not exists(Select top 1 ccode From gl_v_accvouch where iperiod=1 and isignseq=2 and ino_id=5) delete from "
         "gl_v_cashtable where iperiod=1 and isignseq=2 and ino_id=5",
         -1},
    });
    EXPECT_EQ(count("select * from gl_cashtable"), 2) << "the voucher is still there";
    expectCounts({
        {"delete from gl_v_cashtable where iperiod=1 and isignseq=2 and ino_id=6", -1},
        {"delete from gl_cashtable where iyear=2012 and  iperiod=1 and isignseq=2 and ino_id=5", -1},
    });
    EXPECT_EQ(count("select * from gl_cashtable"), 2);
    run("delete from gl_v_cashtable where Iperiod = 1 and ISignSeq=2 and INo_id=5;"
        "insert into gl_v_cashtable (iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,ccode) "
        "values(2013,1,2,N'',7,Null,N'',N'')");
    EXPECT_EQ(count("select * from gl_cashtable"), 1);
    run("if not exists(Select top 1 ccode From gl_v_accvouch where iperiod=1 and isignseq=2 and ino_id=7) delete from "
        "gl_v_cashtable where iperiod=1 and isignseq=2 and ino_id=7");
    EXPECT_EQ(count("select * from gl_cashtable"), 0) << "there is no voucher 7";
}

TEST_P(StatementCases, ItemsTemplatesOptionsAndPeriods) {
    run("insert into accinformation (csysid,cname,cvalue) values(N'GL',N'bCashCode',N'True')");
    run("insert into GL_VouchDraft (cUserId,inid,cCashItem) values(N'demo',1,Null)");
    run("insert into GL_VoucherOption (operator,iUpdateCashFlow) values(N'demo',1)");
    const std::string account = database_->accountId();
    run("insert into zqsystem..ua_period (cacc_id,iyear,iid,dbegin,dend) values(N'" + account +
        "',2013,1,'2013-01-01','2013-01-31')");
    run("insert into GL_V_CashItemDataSource (cDataSource,bdir,cItemCode,dStartDate) "
        "values(N'1001',1,N'0101','2013-01-01')");
    expectCounts({
        {"select citemname from fitemss98 where citemcode=N'0101'", 1},
        {"select * from fitemss98 where citemcode=N'0101'", 1},
        {"select * from fitemss98 where citemcode like N'%01%' or citemname like N'%oth%'", 2},
        {"select * from GL_CashItemDataSource where iyear=2013 and bDataStyle=0 and cDataSource=N'1001' and bdir =1",
         1},
        {"select cCashItem from GL_VouchDraft where cUserId=N'demo' and inid=1", 1},
        {"select * from GL_V_CashItemDataSource where bDataStyle=0 and cDataSource=N'1001' and bdir =1 order by iID "
         "desc",
         1},
        {"select cItemcode from GL_V_CashItemDataSource where cDataSource=N'1001' and bDir=1  and  "
         "dStartDate<='2013-01-05' and  "
         "(dEndDate is null or dEndDate>='2013-01-05')",
         1},
        {"select cItemcode from GL_V_CashItemDataSource where cDataSource=N'1001' and bDir=1  and  "
         "dStartDate<='2012-12-31' and  "
         "(dEndDate is null or dEndDate>='2012-12-31')",
         0},
        {"select cvalue,cdefault from accinformation WITH(NOLOCK) where csysid =N'GL' and cname = N'bCashCode'", 1},
        {"select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ", 1},
        {"select * from accinformation where csysid=N'gl' and cname=N'bXJLL' and cvalue='true'", 0},
        {"select * from GL_VoucherOption WITH(NOLOCK) where operator =N'demo'", 1},
        {"select iyear,iid from zqsystem..ua_period where cacc_id =N'" + account +
             "' and dbegin<='2013-01-31' and dend>='2013-01-31' ",
         1},
        {"select iyear,iid from zqsystem..ua_period where cacc_id =N'" + account +
             "' and dbegin<='2013-02-01' and dend>='2013-02-01' ",
         0},
    });
    EXPECT_EQ(first("select iid from zqsystem..ua_period where cacc_id=N'" + account + "'"), Variant(std::uint8_t{1}));
}

TEST_P(StatementCases, ReadersOfReferencesAndTheColumnsOfAGrid) {
    const std::string references =
        "select  cast(0 as bit) as bRefSelectColumn,inid,a.ccode,md,mc from gl_accvouch a inner join gl_v_code on "
        "a.ccode=gl_v_code.ccode and gl_v_code.bCashItem=";
    expectCounts({
        {references + "1  where iperiod=1 and isignseq=2 and ino_id=5", 1},
        {references + "0 where iperiod=1 and isignseq=2 and ino_id=5 and (a.ccode like N'6%')", 2},
        {"select bCashItem from code where iyear=2013 and  ccode=N'1001'", 1},
        {"select top 1 * from gl_v_accvouch where ccode=N'6001' and iperiod=1 and isignseq=2 and ino_id=5", 1},
        {"select * from gl_v_accvouch where ccode=N'6001' and iperiod=1 and isignseq=2 and ino_id=5 And inid = 2", 1},
        {"insert into GL_myoutput (cauth,csqrmode,cfieldnum,ilength,LocaleId) values('grid',10,1,1500,'2052')", -1},
        {"insert into GL_myoutput (cauth,csqrmode,cfieldnum,ilength,LocaleId) values('grid',10,0,900,'2052')", -1},
        {"select * from GL_myoutput where cauth=N'grid' and csqrmode=10 and LocaleId=N'2052' order by cFieldNum", 2},
    });
    const auto records = run(references + "1  where iperiod=1 and isignseq=2 and ino_id=5");
    EXPECT_EQ(records->Fields().Name(0), "bRefSelectColumn");
    EXPECT_EQ(records->Fields().Item(0), Variant(false));
    EXPECT_EQ(
        first("select * from GL_myoutput where cauth=N'grid' and csqrmode=10 and LocaleId=N'2052' order by cfieldnum"),
        Variant("grid"));
    EXPECT_EQ(run("select ilength from GL_myoutput order by cfieldnum")->Fields().Item("ILENGTH"),
              Variant(std::int32_t{900}));
    run("Delete from GL_myoutput where cauth=N'grid' and csqrmode=10 and LocaleId=N'2052'");
    EXPECT_EQ(count("select * from GL_myoutput"), 0);
}

TEST_P(StatementCases, TemporaryTableTakesTheShapeOfTheLedger) {
    Z7_NEEDS(database_->selectInto());
    const std::string table = "tempdb..TempVoucher0AF34400000000";
    EXPECT_EQ(errorOf([&] { run("drop table " + table); }).sqlState(), "42S02");
    run("select inid,idoc,cbill,cdigest,ccode,cexch_name,md,mc,md_f,mc_f, nd_s,nc_s, csettle ,cn_id,dt_date "
        ",cdept_id,cperson_id,ccus_id ,csup_id,citem_id,citem_class, "
        "cname,ccode_equal,coutaccset,ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign "
        ",coutno_id,doutdate,coutbillsign, coutid,cDefine1 "
        ",cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9 "
        ",cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,cDefine16 into " +
        table + "  from gl_accvouch where 1=0 and iyear=2013");
    // A separate session sees it at once and fills it.
    auto lines = connection_->createRecordset();
    lines->CursorLocation(CursorLocation::client);
    lines->Open("select * from " + table, connection_->ConnectionString(), CursorType::keyset, LockType::optimistic);
    EXPECT_EQ(lines->Fields().Count(), 50);
    EXPECT_TRUE(lines->atEnd());
    lines->AddNew();
    FieldList& fields = lines->Fields();
    fields.Item("INID", Variant("1"));
    fields.Item("ccode", Variant("1001"));
    fields.Item("md", Variant("1,000.5"));
    fields.Item("dt_date", Variant("2013/1/5"));
    fields.Item("cdigest", Variant("quote ' and 汉字"));
    EXPECT_EQ(errorOf([&] { fields.Item("mc", Variant("abc")); }).number(), 13);
    EXPECT_EQ(errorOf([&] { fields.Item("nosuch", Variant("abc")); }).number(), 3265);
    EXPECT_EQ(errorOf([&] { fields.Item("ioutperiod", Variant("256")); }).number(), 13);
    fields.Item("mc", Variant(std::int16_t{0}));
    lines->Update();
    lines->Close();

    const auto line = run("select * from " + table);
    ASSERT_EQ(line->RecordCount(), 1);
    EXPECT_EQ(line->Fields().Item("inid"), Variant(std::int16_t{1}));
    EXPECT_EQ(line->Fields().Item("md"), Variant(1000.5));
    EXPECT_EQ(line->Fields().Item("mc"), Variant(0.0));
    EXPECT_EQ(line->Fields().Item("dt_date"), Variant(Date::fromCivil(2013, 1, 5)));
    EXPECT_EQ(line->Fields().Item("cdigest"), Variant("quote ' and 汉字"));
    EXPECT_EQ(line->Fields().Item("idoc"), Variant());
    EXPECT_EQ(count("select cdigest from " + table + " where inid =1"), 1);
    EXPECT_EQ(count("select code.ccode from " + table +
                    " as TempVoucher inner join code on  TempVoucher.ccode=code.ccode  where "
                    "code.bCashItem=1 and code.bclose=0 and code.iyear=2013"),
              1);
    const Error column = errorOf([&] { run("select ccashitem_id from " + table); });
    run("Drop table " + table);
    const Error dropped = errorOf([&] { run("select * from " + table); });
    Z7_NEEDS(database_->tellsErrorNumbers());
    EXPECT_EQ(column.sqlState(), "42S22");
    EXPECT_EQ(dropped.sqlState(), "42S02");
}

TEST_P(StatementCases, RefusedStatementsLeaveNothing) {
    const Error key = errorOf([&] { run("insert into fitemss98 (citemcode) values(N'0101')"); });
    EXPECT_EQ(key.sqlState(), "23000");
    EXPECT_GT(key.number(), 0);
    const Error null = errorOf([&] { run("insert into code (iyear) values(2013)"); });
    EXPECT_EQ(null.sqlState(), "23000");
    const Error table = errorOf([&] { run("select * from nosuch"); });
    EXPECT_NE(table.description().find("nosuch"), std::string::npos);
    const Error column = errorOf([&] { run("select nosuch from code"); });
    EXPECT_NE(column.description().find("nosuch"), std::string::npos);
    const Error unfinished = errorOf([&] { run("select * from gl_accvouch where inid="); });
    const Error unclosed = errorOf([&] { run("select * from code where ccode=N'O'Neil'"); });
    EXPECT_EQ(count("select * from fitemss98"), 2);
    EXPECT_EQ(count("select * from code"), 3);
    Z7_NEEDS(database_->tellsErrorNumbers());
    EXPECT_EQ(table.sqlState(), "42S02");
    EXPECT_EQ(column.sqlState(), "42S22");
    EXPECT_EQ(unfinished.number(), 102);
    // Two errors at once: the quote that is left over, and what follows the text.
    const Capability quoteFirst = database_->tellsLeftOverQuoteFirst();
    EXPECT_EQ(unclosed.number(), quoteFirst.present ? 105 : 102) << quoteFirst.reason;
}

INSTANTIATE_TEST_SUITE_P(Adapters, StatementCases, ::testing::ValuesIn(databasesUnderTest()), adapterName);

} // namespace
} // namespace z7::cashflow::conformance
