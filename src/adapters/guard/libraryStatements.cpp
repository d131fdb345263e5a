#include "adapters/guard/libraryStatements.h"

namespace z7::cashflow::guard {

namespace {

const std::string ledgerKey = "iperiod=1 and isignseq=1 and ino_id=1";

// Reads of stored rows.
void addCashTableReads(std::vector<std::string>& list) {
    const std::string head =
        "select table1.*,fitemss98.citemname from (select gl_cashtable.*, code.ccode_name,code.bCashItem "
        "from gl_cashtable inner join code on code.iyear=gl_cashtable.iyear and "
        "gl_cashtable.ccode=code.ccode where";
    const std::string tail = " and isignseq=1 and ino_id=1) table1 inner join fitemss98 on table1.cCashItem "
                             "=fitemss98.citemcode";
    list.push_back(head + "  code.iyear=1 and iperiod=1" + tail);
    list.push_back(head + " code.iyear=1 and  iperiod=1" + tail + " Where 1=-1");
}

// Reads of a voucher's lines, by key and by outside key, each on a table with the ledger's key columns and on one without.
void addVoucherReads(std::vector<std::string>& list) {
    const std::string common = "md_f,mc_f,nd_s,nc_s,cdept_id,cperson_id,ccus_id,csup_id,citem_class,citem_id,";
    const std::string defines =
        "cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,"
        "cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,";
    const std::string keyedStart = "select  code.iYear,iPeriod,iSignSeq,csign,iNo_id,inid,md,mc, code.ccode," + common;
    const std::string keylessStart = "select  code.iYear,inid,md,mc, code.ccode," + common;
    const std::string from = ",bCashItem from VOUCHERTABLE as TempVoucher  inner join code on ";
    const std::string end = " code.bend=1 and code.bclose=0";
    const std::string outsideEnd =
        "  code.iyear=1 and   TempVoucher.ccode=code.ccode where TempVoucher.coutno_id=N'' and "
        "code.bend=1 and code.bclose=0   ";
    for (const char* budget : {"", " and code.cUserDefineType<>N''"}) {
        list.push_back(keyedStart + defines + "cDefine16" + from +
                       " TempVoucher.iyear=code.iyear and  code.iyear=1 and  TempVoucher.ccode=code.ccode where "
                       "TempVoucher.iperiod=1 and TempVoucher.isignseq=1 and TempVoucher.ino_id=1 and " +
                       end + budget);
        list.push_back(keylessStart + defines + "cDefine16" + from +
                       " code.iyear=1 and  TempVoucher.ccode=code.ccode where " + end + budget);
        list.push_back(keyedStart + "ccashitem_id," + defines + "dbill_date,cDefine16" + from +
                       "  TempVoucher.iyear=code.iyear and " + outsideEnd + budget);
        list.push_back(keylessStart + "ccashitem_id," + defines + "cDefine16" + from + " " + outsideEnd + budget);
    }
}

void addVoucherQuestions(std::vector<std::string>& list) {
    list.insert(
        list.end(),
        {
            "select ccode from code where iyear=1 and  ccode=N'' and code.bcashitem=1",
            "select (sum(md) -sum(mc)) as mysum  from VOUCHERTABLE as voucherTemp  inner join CODE on  code.iyear=1 "
            "and   "
            "voucherTemp.iYear=CODE.iYear and   voucherTemp.ccode=CODE.ccode where voucherTemp.iperiod=1 and "
            "voucherTemp.isignseq =1 and voucherTemp.ino_id=1  and CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1 "
            "group by "
            "voucherTemp.iperiod,isignseq,ino_id",
            "select (sum(md) -sum(mc)) as mysum  from VOUCHERTABLE as voucherTemp  inner join CODE on   code.iyear=1 "
            "and   "
            "voucherTemp.ccode=CODE.ccode where CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1  ",
            "select (sum(md) -sum(mc)) as mysum  from VOUCHERTABLE as voucherTemp  inner join gl_v_code on  "
            "voucherTemp.ccode=gl_v_code.ccode where voucherTemp.coutno_id=N'' and gl_v_code.bend=1 and "
            "gl_v_code.bclose=0 and "
            "gl_v_code.bcashitem=1 group by voucherTemp.coutno_id",
            "select iperiod,isignseq,ino_id,dbill_date from gl_accvouch where iYear= 1 and iflag is null and "
            "coutNo_id=N''",
            "select code.ccode from VOUCHERTABLE as TempVoucher inner join code on TempVoucher.ccode=code.ccode and "
            "tempvoucher.iyear=code.iyear where TempVoucher.iPeriod =1 and TempVoucher.iSignSeq =1 and "
            "TempVoucher.iNo_id =1 "
            "and code.bCashItem=1 and code.bclose=0 and code.iyear=1",
            "select code.ccode from VOUCHERTABLE as TempVoucher inner join code on  TempVoucher.ccode=code.ccode  "
            "where "
            "code.bCashItem=1 and code.bclose=0 and code.iyear=1",
            "select code.ccode from  VOUCHERTABLE as TempVoucher inner join code on TempVoucher.ccode=code.ccode and "
            "tempvoucher.iyear=code.iyear where TempVoucher.coutNo_id=N'' and code.bcashitem=1 and code.bclose=0 and "
            "code.iyear=1",
            "select code.ccode from  VOUCHERTABLE as TempVoucher inner join code on TempVoucher.ccode=code.ccode where "
            "TempVoucher.coutNo_id=N'' and code.bcashitem=1 and code.bclose=0 and code.iyear=1",
        });
}

void addSettings(std::vector<std::string>& list) {
    list.insert(list.end(),
                {
                    "select cvalue,cdefault from accinformation WITH(NOLOCK) where csysid =N'' and cname = N''",
                    "select * from GL_VoucherOption WITH(NOLOCK) where operator =N''",
                    "select iyear,iid from zqsystem..ua_period where cacc_id =N'' and dbegin<='' and dend>='' ",
                    "select * from accinformation where csysid=N'' and cname=N'' and cvalue=''",
                    "select * from dsign where isignseq=1",
                });
}

void addItemsAndTemplates(std::vector<std::string>& list) {
    list.insert(
        list.end(),
        {
            "select citemname from fitemss98 where citemcode=N''",
            "select * from GL_CashItemDataSource where iyear=1 and bDataStyle=0 and cDataSource=N'' and bdir =1",
            "select cCashItem from GL_VouchDraft where cUserId=N'' and inid=1",
            "select * from GL_V_CashItemDataSource where bDataStyle=0 and cDataSource=N'' and bdir =1 order by iID "
            "desc",
            "select cItemcode from GL_V_CashItemDataSource where cDataSource=N'' and bDir=1  and  dStartDate<='' and  "
            "(dEndDate is null or dEndDate>='')",
        });
}

void addVoucherXml(std::vector<std::string>& list) {
    list.insert(
        list.end(),
        {
            "drop table TEMPTABLE",
            "Drop table TEMPTABLE",
            "select inid,idoc,cbill,cdigest,ccode,cexch_name,md,mc,md_f,mc_f, nd_s,nc_s, csettle ,cn_id,dt_date "
            ",cdept_id,cperson_id,ccus_id ,csup_id,citem_id,citem_class, "
            "cname,ccode_equal,coutaccset,ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign "
            ",coutno_id,doutdate,coutbillsign, coutid,cDefine1 "
            ",cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9 "
            ",cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,cDefine16 into TEMPTABLE  from "
            "gl_accvouch where 1=0 and iyear=1",
            "select * from TEMPTABLE",
        });
}

void addSaves(std::vector<std::string>& list) {
    const std::string viewDelete = "delete from gl_v_cashtable where " + ledgerKey;
    const std::string voucherInYear = "where iyear=1 and iPeriod=1 and iSignSeq=1 and iNo_id=1";
    list.insert(
        list.end(),
        {
            "select  dBill_date from VOUCHERTABLE where iPeriod =1 and iSignSeq =1 and iNo_id =1",
            "Select Count(*) From gl_v_accvouch Where " + ledgerKey,
            viewDelete,
            "if not exists(Select top 1 ccode From gl_v_accvouch where " + ledgerKey + ") " + viewDelete,
            "delete from gl_cashtable where iyear=1 and  " + ledgerKey,
            "UPDATE GL_CashTable SET cexch_name =  g.cexch_name FROM dbo.GL_CashTable c INNER JOIN dbo.GL_accvouch g "
            "ON "
            " c.ccode = g.ccode AND  c.csign = g.csign  AND c.iyear = g.iyear AND c.iNo_id = g.ino_id AND  c.inid = "
            "g.inid  Where c.iPeriod = 1 And c.isignseq = 1 And c.iNo_id = 1 and c.iyear = 1",
            "select dbill_date from VOUCHERTABLE " + voucherInYear,
            "select dbill_date from VOUCHERTABLE where iPeriod=1 and iSignSeq=1 and iNo_id=1",
            "select * from VOUCHERTABLE " + voucherInYear + " and inid=1",
            "select * from VOUCHERTABLE where  iPeriod=1 and iSignSeq=1 and iNo_id=1 and inid=1",
        });
    constexpr int insertedColumns = 38;
    for (const char* table : {"gl_v_cashtable", "gl_cashtable"}) {
        std::string insert =
            std::string("insert into ") + table +
            " (RowGuid,iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode,md_f,mc_f,nd_s,nc_s,"
            "cdept_id,cperson_id,ccus_id,csup_id,citem_class,citem_id,cDefine1,cDefine2,cDefine3,cDefine4,"
            "cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,"
            "cDefine15,dbill_date,cDefine16) values(";
        for (int value = 1; value < insertedColumns; ++value) {
            insert += "VALUE,";
        }
        list.push_back(insert + "VALUE)");
    }
}

std::vector<std::string> build() {
    std::vector<std::string> list;
    addCashTableReads(list);
    addVoucherReads(list);
    addVoucherQuestions(list);
    addSettings(list);
    addItemsAndTemplates(list);
    addVoucherXml(list);
    addSaves(list);
    return list;
}

} // namespace

const std::vector<std::string>& libraryStatements() {
    static const std::vector<std::string> list = build();
    return list;
}

} // namespace z7::cashflow::guard
