#include "providers/ledgerStatements.h"

namespace z7::cashflow::test::ledger {

namespace {

const std::string dimensions = "md_f,mc_f,nd_s,nc_s,cdept_id,cperson_id,ccus_id,csup_id,citem_class,citem_id,";
const std::string freeFields = "cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,"
                               "cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,";

} // namespace

std::string option(const std::string& name) {
    return "select cvalue,cdefault from accinformation WITH(NOLOCK) where csysid =N'GL' and cname = N'" + name + "'";
}

std::string period(const std::string& date) {
    return "select iyear,iid from zqsystem..ua_period where cacc_id =N'001' and dbegin<='" + date + "' and dend>='" +
           date + "' ";
}

std::string haveCash(const std::string& table, const std::string& year) {
    return "select code.ccode from " + table +
           " as TempVoucher inner join code on TempVoucher.ccode=code.ccode and tempvoucher.iyear=code.iyear where "
           "TempVoucher.iPeriod =1 and TempVoucher.iSignSeq =2 and TempVoucher.iNo_id =5 and code.bCashItem=1 and "
           "code.bclose=0 and code.iyear=" +
           year;
}

std::string lines(const std::string& table, const std::string& year, const std::string& number) {
    return "select  code.iYear,iPeriod,iSignSeq,csign,iNo_id,inid,md,mc, code.ccode," + dimensions + freeFields +
           "cDefine16,bCashItem from " + table +
           " as TempVoucher  inner join code on  TempVoucher.iyear=code.iyear and  code.iyear=" + year +
           " and  TempVoucher.ccode=code.ccode where TempVoucher.iperiod=1 and TempVoucher.isignseq=2 and "
           "TempVoucher.ino_id=" +
           number + " and  code.bend=1 and code.bclose=0";
}

std::string keylessLines(const std::string& table) {
    return "select  code.iYear,inid,md,mc, code.ccode," + dimensions + freeFields + "cDefine16,bCashItem from " +
           table +
           " as TempVoucher  inner join code on  code.iyear=2013 and  TempVoucher.ccode=code.ccode where  code.bend=1 "
           "and "
           "code.bclose=0";
}

std::string kind() { return "select * from dsign where isignseq=2"; }

std::string storedRows(const std::string& year) {
    return "select table1.*,fitemss98.citemname from (select gl_cashtable.*, code.ccode_name,code.bCashItem from "
           "gl_cashtable inner join code on code.iyear=gl_cashtable.iyear and gl_cashtable.ccode=code.ccode where  "
           "code.iyear=" +
           year +
           " and iperiod=1 and isignseq=2 and ino_id=5) table1 inner join fitemss98 on table1.cCashItem "
           "=fitemss98.citemcode";
}

std::string itemName(const std::string& code) {
    return "select citemname from fitemss98 where citemcode=N'" + code + "'";
}

std::string itemTemplate(const std::string& account, bool bDir, const std::string& year) {
    return "select * from GL_CashItemDataSource where iyear=" + year + " and bDataStyle=0 and cDataSource=N'" +
           account + "' and bdir =" + (bDir ? "1" : "0");
}

std::string cashSum(const std::string& table, const std::string& year) {
    return "select (sum(md) -sum(mc)) as mysum  from " + table +
           " as voucherTemp  inner join CODE on  code.iyear=" + year +
           " and   voucherTemp.iYear=CODE.iYear and   voucherTemp.ccode=CODE.ccode where voucherTemp.iperiod=1 and "
           "voucherTemp.isignseq =2 and voucherTemp.ino_id=5  and CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1 "
           "group by voucherTemp.iperiod,isignseq,ino_id";
}

std::string isCash(const std::string& account, const std::string& year) {
    return "select ccode from code where iyear=" + year + " and  ccode=N'" + account + "' and code.bcashitem=1";
}

std::string voucherDate(const std::string& table) {
    return "select  dBill_date from " + table + " where iPeriod =1 and iSignSeq =2 and iNo_id =5";
}

std::string deleteRows(const std::string& number) {
    return "delete from gl_v_cashtable where iperiod=1 and isignseq=2 and ino_id=" + number;
}

std::string currencyNames(const std::string& year) {
    return "UPDATE GL_CashTable SET cexch_name =  g.cexch_name FROM dbo.GL_CashTable c INNER JOIN dbo.GL_accvouch g ON "
           " "
           "c.ccode = g.ccode AND  c.csign = g.csign  AND c.iyear = g.iyear AND c.iNo_id = g.ino_id AND  c.inid = "
           "g.inid  "
           "Where c.iPeriod = 1 And c.isignseq = 2 And c.iNo_id = 5 and c.iyear = " +
           year;
}

std::string insertRow(const CashFlowCollection& collection, std::int32_t index, const std::string& table) {
    return collection.Item(index)->InsertSql(table, collection.CFStruct());
}

std::string outsideHaveCash(const std::string& table) {
    return "select code.ccode from  " + table +
           " as TempVoucher inner join code on TempVoucher.ccode=code.ccode where TempVoucher.coutNo_id=N'OUT' and "
           "code.bcashitem=1 and code.bclose=0 and code.iyear=2013";
}

std::string outsideKey(const std::string& year) {
    return "select iperiod,isignseq,ino_id,dbill_date from gl_accvouch where iYear= " + year +
           " and iflag is null and coutNo_id=N'OUT'";
}

std::string outsideLines(const std::string& table) {
    return "select  code.iYear,inid,md,mc, code.ccode," + dimensions + "ccashitem_id," + freeFields +
           "cDefine16,bCashItem from " + table +
           " as TempVoucher  inner join code on    code.iyear=2013 and   TempVoucher.ccode=code.ccode where "
           "TempVoucher.coutno_id=N'OUT' and code.bend=1 and code.bclose=0   ";
}

std::string outsideSum(const std::string& table) {
    return "select (sum(md) -sum(mc)) as mysum  from " + table +
           " as voucherTemp  inner join gl_v_code on  voucherTemp.ccode=gl_v_code.ccode where "
           "voucherTemp.coutno_id=N'OUT' and gl_v_code.bend=1 and gl_v_code.bclose=0 and gl_v_code.bcashitem=1 group "
           "by "
           "voucherTemp.coutno_id";
}

} // namespace z7::cashflow::test::ledger
