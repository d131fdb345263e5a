-- The account's views that show one year, embedded form.

-- The entry lines of the session's year.
create view gl_v_accvouch as
select
    iyear, iperiod, isignseq, ino_id, inid, dbill_date, csign, idoc, cbill, iflag, cdigest, ccode, ccashitem_id,
    cexch_name, md, mc, md_f, mc_f, nd_s, nc_s, csettle, cn_id, dt_date, cdept_id, cperson_id, ccus_id, csup_id,
    citem_class, citem_id, cname, ccode_equal, coutaccset, ioutyear, coutsysname, coutsysver, doutbilldate,
    ioutperiod, coutsign, coutno_id, doutdate, coutbillsign, coutid, cDefine1, cDefine2, cDefine3, cDefine4,
    cDefine5, cDefine6, cDefine7, cDefine8, cDefine9, cDefine10, cDefine11, cDefine12, cDefine13, cDefine14,
    cDefine15, cDefine16
from gl_accvouch where iyear = z7_year();

-- The accounts of the session's year, without the year.
create view gl_v_code as
select
    ccode, ccode_name, bCashItem, bend, bclose, cUserDefineType
from code where iyear = z7_year();

-- The cash-flow rows of the session's year. What is written here lands in gl_cashtable at once.
create view gl_v_cashtable as
select
    RowGuid, iYear, iPeriod, iSignSeq, csign, iNo_id, inid, cCashItem, md, mc, ccode, md_f, mc_f, nd_s, nc_s,
    cdept_id, cperson_id, ccus_id, csup_id, citem_class, citem_id, cDefine1, cDefine2, cDefine3, cDefine4, cDefine5,
    cDefine6, cDefine7, cDefine8, cDefine9, cDefine10, cDefine11, cDefine12, cDefine13, cDefine14, cDefine15,
    dbill_date, cDefine16, cexch_name
from gl_cashtable where iYear = z7_year();
create trigger gl_v_cashtable_insert instead of insert on gl_v_cashtable begin
    insert into gl_cashtable (
        RowGuid, iYear, iPeriod, iSignSeq, csign, iNo_id, inid, cCashItem, md, mc, ccode, md_f, mc_f, nd_s, nc_s,
        cdept_id, cperson_id, ccus_id, csup_id, citem_class, citem_id, cDefine1, cDefine2, cDefine3, cDefine4,
        cDefine5, cDefine6, cDefine7, cDefine8, cDefine9, cDefine10, cDefine11, cDefine12, cDefine13, cDefine14,
        cDefine15, dbill_date, cDefine16, cexch_name)
    values (
        new.RowGuid, coalesce(new.iYear, z7_required_year()), new.iPeriod, new.iSignSeq, new.csign, new.iNo_id,
        new.inid, new.cCashItem, coalesce(new.md, 0), coalesce(new.mc, 0), new.ccode, coalesce(new.md_f, 0),
        coalesce(new.mc_f, 0), coalesce(new.nd_s, 0), coalesce(new.nc_s, 0), new.cdept_id, new.cperson_id,
        new.ccus_id, new.csup_id, new.citem_class, new.citem_id, new.cDefine1, new.cDefine2, new.cDefine3,
        new.cDefine4, new.cDefine5, new.cDefine6, new.cDefine7, new.cDefine8, new.cDefine9, new.cDefine10,
        new.cDefine11, new.cDefine12, new.cDefine13, new.cDefine14, new.cDefine15, new.dbill_date, new.cDefine16,
        new.cexch_name);
end;
create trigger gl_v_cashtable_update instead of update on gl_v_cashtable begin
    update gl_cashtable set
        RowGuid = new.RowGuid, iYear = new.iYear, iPeriod = new.iPeriod, iSignSeq = new.iSignSeq, csign = new.csign,
        iNo_id = new.iNo_id, inid = new.inid, cCashItem = new.cCashItem, md = new.md, mc = new.mc,
        ccode = new.ccode, md_f = new.md_f, mc_f = new.mc_f, nd_s = new.nd_s, nc_s = new.nc_s,
        cdept_id = new.cdept_id, cperson_id = new.cperson_id, ccus_id = new.ccus_id, csup_id = new.csup_id,
        citem_class = new.citem_class, citem_id = new.citem_id, cDefine1 = new.cDefine1, cDefine2 = new.cDefine2,
        cDefine3 = new.cDefine3, cDefine4 = new.cDefine4, cDefine5 = new.cDefine5, cDefine6 = new.cDefine6,
        cDefine7 = new.cDefine7, cDefine8 = new.cDefine8, cDefine9 = new.cDefine9, cDefine10 = new.cDefine10,
        cDefine11 = new.cDefine11, cDefine12 = new.cDefine12, cDefine13 = new.cDefine13, cDefine14 = new.cDefine14,
        cDefine15 = new.cDefine15, dbill_date = new.dbill_date, cDefine16 = new.cDefine16,
        cexch_name = new.cexch_name
    where iYear = old.iYear and iPeriod = old.iPeriod and iSignSeq = old.iSignSeq and iNo_id = old.iNo_id and
        inid is old.inid and RowGuid is old.RowGuid and csign is old.csign and cCashItem is old.cCashItem and
        md is old.md and mc is old.mc and ccode is old.ccode and md_f is old.md_f and mc_f is old.mc_f and
        nd_s is old.nd_s and nc_s is old.nc_s and cdept_id is old.cdept_id and cperson_id is old.cperson_id and
        ccus_id is old.ccus_id and csup_id is old.csup_id and citem_class is old.citem_class and
        citem_id is old.citem_id and cDefine1 is old.cDefine1 and cDefine2 is old.cDefine2 and
        cDefine3 is old.cDefine3 and cDefine4 is old.cDefine4 and cDefine5 is old.cDefine5 and
        cDefine6 is old.cDefine6 and cDefine7 is old.cDefine7 and cDefine8 is old.cDefine8 and
        cDefine9 is old.cDefine9 and cDefine10 is old.cDefine10 and cDefine11 is old.cDefine11 and
        cDefine12 is old.cDefine12 and cDefine13 is old.cDefine13 and cDefine14 is old.cDefine14 and
        cDefine15 is old.cDefine15 and dbill_date is old.dbill_date and cDefine16 is old.cDefine16 and
        cexch_name is old.cexch_name;
end;
create trigger gl_v_cashtable_delete instead of delete on gl_v_cashtable begin
    delete from gl_cashtable
    where iYear = old.iYear and iPeriod = old.iPeriod and iSignSeq = old.iSignSeq and iNo_id = old.iNo_id and
        inid is old.inid and RowGuid is old.RowGuid and csign is old.csign and cCashItem is old.cCashItem and
        md is old.md and mc is old.mc and ccode is old.ccode and md_f is old.md_f and mc_f is old.mc_f and
        nd_s is old.nd_s and nc_s is old.nc_s and cdept_id is old.cdept_id and cperson_id is old.cperson_id and
        ccus_id is old.ccus_id and csup_id is old.csup_id and citem_class is old.citem_class and
        citem_id is old.citem_id and cDefine1 is old.cDefine1 and cDefine2 is old.cDefine2 and
        cDefine3 is old.cDefine3 and cDefine4 is old.cDefine4 and cDefine5 is old.cDefine5 and
        cDefine6 is old.cDefine6 and cDefine7 is old.cDefine7 and cDefine8 is old.cDefine8 and
        cDefine9 is old.cDefine9 and cDefine10 is old.cDefine10 and cDefine11 is old.cDefine11 and
        cDefine12 is old.cDefine12 and cDefine13 is old.cDefine13 and cDefine14 is old.cDefine14 and
        cDefine15 is old.cDefine15 and dbill_date is old.dbill_date and cDefine16 is old.cDefine16 and
        cexch_name is old.cexch_name;
end;

-- The templates of the session's year. What is written here lands in GL_CashItemDataSource at once; iID and the year come by themselves.
create view GL_V_CashItemDataSource as
select
    iyear, bDataStyle, cDataSource, bdir, cItemCode, dStartDate, dEndDate, iID
from GL_CashItemDataSource where iyear = z7_year();
create trigger GL_V_CashItemDataSource_insert instead of insert on GL_V_CashItemDataSource begin
    insert into GL_CashItemDataSource (
        iyear, bDataStyle, cDataSource, bdir, cItemCode, dStartDate, dEndDate)
    values (
        coalesce(new.iyear, z7_required_year()), coalesce(new.bDataStyle, 0), new.cDataSource, new.bdir,
        new.cItemCode, new.dStartDate, new.dEndDate);
end;
create trigger GL_V_CashItemDataSource_update instead of update on GL_V_CashItemDataSource begin
    update GL_CashItemDataSource set
        iyear = new.iyear, bDataStyle = new.bDataStyle, cDataSource = new.cDataSource, bdir = new.bdir,
        cItemCode = new.cItemCode, dStartDate = new.dStartDate, dEndDate = new.dEndDate
    where iID = old.iID;
end;
create trigger GL_V_CashItemDataSource_delete instead of delete on GL_V_CashItemDataSource begin
    delete from GL_CashItemDataSource
    where iID = old.iID;
end;
