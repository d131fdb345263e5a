// Every statement of model, data and providers once, letter by letter.

#include "statements/filledText.h"
#include "z7cashflow/statements/itemStatements.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/statements/temporaryTableStatements.h"
#include "z7cashflow/statements/voucherStatements.h"

namespace z7::cashflow::statements {
namespace {

constexpr VoucherKey key{3, 2, 15};

ColumnList columns() {
    ColumnList list(LiteralPolicy::wholeLiterals, "test");
    list.addOfAccount("iYear");
    list.add("inid");
    list.add("md");
    list.addOfAccount("ccode");
    return list;
}

TEST(StatementTexts, LinesOfAVoucher) {
    EXPECT_EQ(text(voucherLines, columns(), "gl_accvouch", 2013, key),
              "select  code.iYear,inid,md, code.ccode,bCashItem from gl_accvouch as TempVoucher  inner join code on  "
              "TempVoucher.iyear=code.iyear and  code.iyear=2013 and  TempVoucher.ccode=code.ccode where "
              "TempVoucher.iperiod=3 and TempVoucher.isignseq=2 and TempVoucher.ino_id=15 and  code.bend=1 and "
              "code.bclose=0");
    EXPECT_EQ(text(keylessVoucherLines, columns(), "mine", 2013),
              "select  code.iYear,inid,md, code.ccode,bCashItem from mine as TempVoucher  inner join code on  "
              "code.iyear=2013 and  TempVoucher.ccode=code.ccode where  code.bend=1 and code.bclose=0");
    EXPECT_EQ(text(outsideVoucherLines, columns(), "gl_accvouch", 2013, "OUT"),
              "select  code.iYear,inid,md, code.ccode,bCashItem from gl_accvouch as TempVoucher  inner join code on   "
              "TempVoucher.iyear=code.iyear and   code.iyear=2013 and   TempVoucher.ccode=code.ccode where "
              "TempVoucher.coutno_id=N'OUT' and code.bend=1 and code.bclose=0   ");
    EXPECT_EQ(text(keylessOutsideVoucherLines, columns(), "mine", 2013, "OUT"),
              "select  code.iYear,inid,md, code.ccode,bCashItem from mine as TempVoucher  inner join code on    "
              "code.iyear=2013 and   TempVoucher.ccode=code.ccode where TempVoucher.coutno_id=N'OUT' and code.bend=1 "
              "and code.bclose=0   ");
    EXPECT_EQ(text(exceptBudgetAccounts), " and code.cUserDefineType<>N'预算类会计科目'");
}

TEST(StatementTexts, CashSums) {
    EXPECT_EQ(text(cashSum, "gl_accvouch", 2013, key),
              "select (sum(md) -sum(mc)) as mysum  from gl_accvouch as voucherTemp  inner join CODE on  "
              "code.iyear=2013 and   voucherTemp.iYear=CODE.iYear and   voucherTemp.ccode=CODE.ccode where "
              "voucherTemp.iperiod=3 and voucherTemp.isignseq =2 and voucherTemp.ino_id=15  and CODE.bend=1 and "
              "CODE.bclose=0 and CODE.bcashitem=1 group by voucherTemp.iperiod,isignseq,ino_id");
    EXPECT_EQ(text(keylessCashSum, "mine", 2013),
              "select (sum(md) -sum(mc)) as mysum  from mine as voucherTemp  inner join CODE on   code.iyear=2013 "
              "and   voucherTemp.ccode=CODE.ccode where CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1  ");
    EXPECT_EQ(text(outsideCashSum, "mine", "OUT"),
              "select (sum(md) -sum(mc)) as mysum  from mine as voucherTemp  inner join gl_v_code on  "
              "voucherTemp.ccode=gl_v_code.ccode where voucherTemp.coutno_id=N'OUT' and gl_v_code.bend=1 and "
              "gl_v_code.bclose=0 and gl_v_code.bcashitem=1 group by voucherTemp.coutno_id");
}

TEST(StatementTexts, CashAccountsAndLinesOnThem) {
    EXPECT_EQ(text(cashAccount, 2013, "1001"),
              "select ccode from code where iyear=2013 and  ccode=N'1001' and code.bcashitem=1");
    EXPECT_EQ(text(cashLine, "gl_accvouch", key, 2013),
              "select code.ccode from gl_accvouch as TempVoucher inner join code on TempVoucher.ccode=code.ccode and "
              "tempvoucher.iyear=code.iyear where TempVoucher.iPeriod =3 and TempVoucher.iSignSeq =2 and "
              "TempVoucher.iNo_id =15 and code.bCashItem=1 and code.bclose=0 and code.iyear=2013");
    EXPECT_EQ(text(keylessCashLine, "mine", 2013),
              "select code.ccode from mine as TempVoucher inner join code on  TempVoucher.ccode=code.ccode  where "
              "code.bCashItem=1 and code.bclose=0 and code.iyear=2013");
    EXPECT_EQ(text(outsideCashLine, "GL_accvouch", "OUT", "2013"),
              "select code.ccode from  GL_accvouch as TempVoucher inner join code on TempVoucher.ccode=code.ccode and "
              "tempvoucher.iyear=code.iyear where TempVoucher.coutNo_id=N'OUT' and code.bcashitem=1 and "
              "code.bclose=0 and code.iyear=2013");
    EXPECT_EQ(text(keylessOutsideCashLine, "mine", "OUT", "2013"),
              "select code.ccode from  mine as TempVoucher inner join code on TempVoucher.ccode=code.ccode where "
              "TempVoucher.coutNo_id=N'OUT' and code.bcashitem=1 and code.bclose=0 and code.iyear=2013");
}

TEST(StatementTexts, KeysAndDatesOfVouchers) {
    EXPECT_EQ(text(ledgerVoucherOf, 2013, "OUT"),
              "select iperiod,isignseq,ino_id,dbill_date from gl_accvouch where iYear= 2013 and iflag is null and "
              "coutNo_id=N'OUT'");
    EXPECT_EQ(text(voucherDate, "gl_accvouch", key),
              "select  dBill_date from gl_accvouch where iPeriod =3 and iSignSeq =2 and iNo_id =15");
    EXPECT_EQ(text(xmlVoucherDateInYear, "gl_accvouch", 2013, key),
              "select dbill_date from gl_accvouch where iyear=2013 and iPeriod=3 and iSignSeq=2 and iNo_id=15");
    EXPECT_EQ(text(xmlVoucherDate, "mine", key),
              "select dbill_date from mine where iPeriod=3 and iSignSeq=2 and iNo_id=15");
    EXPECT_EQ(text(xmlVoucherLineInYear, "gl_accvouch", 2013, key, "7"),
              "select * from gl_accvouch where iyear=2013 and iPeriod=3 and iSignSeq=2 and iNo_id=15 and inid=7");
    EXPECT_EQ(text(xmlVoucherLine, "mine", key, "7"),
              "select * from mine where  iPeriod=3 and iSignSeq=2 and iNo_id=15 and inid=7");
}

TEST(StatementTexts, FiltersOfAVouchersLines) {
    EXPECT_EQ(text(lineFilter, key, "7"), "iperiod=3 and isignseq=2 and iNo_id=15 and inid=7");
    EXPECT_EQ(text(keylessLineFilter, "7"), "inid=7");
    EXPECT_EQ(text(keylessLineFilter, ""), "inid=") << "which the record set refuses";
}

TEST(StatementTexts, StoredRows) {
    EXPECT_EQ(text(storedRows, 2013, key),
              "select table1.*,fitemss98.citemname from (select gl_cashtable.*, code.ccode_name,code.bCashItem from "
              "gl_cashtable inner join code on code.iyear=gl_cashtable.iyear and gl_cashtable.ccode=code.ccode where  "
              "code.iyear=2013 and iperiod=3 and isignseq=2 and ino_id=15) table1 inner join fitemss98 on "
              "table1.cCashItem =fitemss98.citemcode");
    EXPECT_EQ(text(noStoredRows, 2013, key),
              "select table1.*,fitemss98.citemname from (select gl_cashtable.*, code.ccode_name,code.bCashItem from "
              "gl_cashtable inner join code on code.iyear=gl_cashtable.iyear and gl_cashtable.ccode=code.ccode where "
              "code.iyear=2013 and  iperiod=3 and isignseq=2 and ino_id=15) table1 inner join fitemss98 on "
              "table1.cCashItem =fitemss98.citemcode Where 1=-1");
}

TEST(StatementTexts, StoringARow) {
    RowValues values(LiteralPolicy::wholeLiterals, "test");
    values.addText("RowGuid", "A");
    values.addNumber("md", "-7.5");
    values.addNull();
    ColumnList list(LiteralPolicy::wholeLiterals, "test");
    list.add("RowGuid");
    list.add("md");
    list.add("mc");
    EXPECT_EQ(text(insertRow, "gl_v_cashtable", list, values),
              "insert into gl_v_cashtable (RowGuid,md,mc) values(N'A',-7.5,Null)");
    EXPECT_EQ(text(insertNoField, "gl_v_cashtable"), "insert into gl_v_cashtable ( values(");
    EXPECT_EQ(text(deleteBeforeInserts, "gl_v_cashtable", key),
              "delete from gl_v_cashtable where Iperiod = 3 and ISignSeq=2 and INo_id=15;");
}

TEST(StatementTexts, RemovingRows) {
    EXPECT_EQ(text(deleteRows, key), "delete from gl_v_cashtable where iperiod=3 and isignseq=2 and ino_id=15");
    EXPECT_EQ(text(deleteRowsInYear, 2013, key),
              "delete from gl_cashtable where iyear=2013 and  iperiod=3 and isignseq=2 and ino_id=15");
    EXPECT_EQ(text(deleteRowsOfFreeNumber, key, key),
              "if not exists(Select top 1 ccode From gl_v_accvouch where iperiod=3 and isignseq=2 and ino_id=15) "
              "delete from gl_v_cashtable where iperiod=3 and isignseq=2 and ino_id=15");
    EXPECT_EQ(text(countLines, key), "Select Count(*) From gl_v_accvouch Where iperiod=3 and isignseq=2 and ino_id=15");
}

TEST(StatementTexts, CurrencyNamesOfRows) {
    EXPECT_EQ(text(takeCurrencyNames, key, 2013),
              "UPDATE GL_CashTable SET cexch_name =  g.cexch_name FROM dbo.GL_CashTable c INNER JOIN dbo.GL_accvouch "
              "g ON  c.ccode = g.ccode AND  c.csign = g.csign  AND c.iyear = g.iyear AND c.iNo_id = g.ino_id AND  "
              "c.inid = g.inid  Where c.iPeriod = 3 And c.isignseq = 2 And c.iNo_id = 15 and c.iyear = 2013");
}

TEST(StatementTexts, ItemsAndTemplates) {
    EXPECT_EQ(text(itemName, "01"), "select citemname from fitemss98 where citemcode=N'01'");
    EXPECT_EQ(text(itemTemplate, 2013, "1001", true),
              "select * from GL_CashItemDataSource where iyear=2013 and bDataStyle=0 and cDataSource=N'1001' and bdir "
              "=1");
    EXPECT_EQ(text(itemTemplatesNewestFirst, "1001", false),
              "select * from GL_V_CashItemDataSource where bDataStyle=0 and cDataSource=N'1001' and bdir =0 order by "
              "iID desc");
    EXPECT_EQ(text(itemTemplateOnDate, "1001", true, "2013-01-05", "2013-01-06"),
              "select cItemcode from GL_V_CashItemDataSource where cDataSource=N'1001' and bDir=1  and  "
              "dStartDate<='2013-01-05' and  (dEndDate is null or dEndDate>='2013-01-06')");
    EXPECT_EQ(text(draftItem, "u1", -3), "select cCashItem from GL_VouchDraft where cUserId=N'u1' and inid=-3");
}

TEST(StatementTexts, SettingsOfTheAccount) {
    EXPECT_EQ(text(accountOption, "GL", "bCashCode"),
              "select cvalue,cdefault from accinformation WITH(NOLOCK) where csysid =N'GL' and cname = N'bCashCode'");
    EXPECT_EQ(text(sumCheckOption),
              "select * from accinformation where csysid=N'gl' and cname=N'bXJLL' and cvalue='true'");
    EXPECT_EQ(text(voucherOptions, "demo"), "select * from GL_VoucherOption WITH(NOLOCK) where operator =N'demo'");
    EXPECT_EQ(text(accountingPeriod, "001", "2013-01-05", "2013-01-06"),
              "select iyear,iid from zqsystem..ua_period where cacc_id =N'001' and dbegin<='2013-01-05' and "
              "dend>='2013-01-06' ");
    EXPECT_EQ(text(voucherKind, 2), "select * from dsign where isignseq=2");
}

TEST(StatementTexts, TheTableOfAVoucherGivenAsXml) {
    EXPECT_EQ(text(createVoucherTable, "tempdb..TempVoucherAB", "2013"),
              "select inid,idoc,cbill,cdigest,ccode,cexch_name,md,mc,md_f,mc_f, nd_s,nc_s, csettle ,cn_id,dt_date "
              ",cdept_id,cperson_id,ccus_id ,csup_id,citem_id,citem_class, "
              "cname,ccode_equal,coutaccset,ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign "
              ",coutno_id,doutdate,coutbillsign, coutid,cDefine1 "
              ",cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9 "
              ",cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,cDefine16 into tempdb..TempVoucherAB  "
              "from gl_accvouch where 1=0 and iyear=2013");
    EXPECT_EQ(text(voucherTableLines, "tempdb..TempVoucherAB"), "select * from tempdb..TempVoucherAB");
    EXPECT_EQ(text(dropFormerTable, "tempdb..TempVoucherAB"), "drop table tempdb..TempVoucherAB");
    EXPECT_EQ(text(dropReadTable, "tempdb..TempVoucherAB"), "Drop table tempdb..TempVoucherAB");
}

} // namespace
} // namespace z7::cashflow::statements
