-- The account's views that show one year, SQL Server form.

-- The entry lines of the session's year.
create view gl_v_accvouch as
select
    iyear, iperiod, isignseq, ino_id, inid, dbill_date, csign, idoc, cbill, iflag, cdigest, ccode, ccashitem_id,
    cexch_name, md, mc, md_f, mc_f, nd_s, nc_s, csettle, cn_id, dt_date, cdept_id, cperson_id, ccus_id, csup_id,
    citem_class, citem_id, cname, ccode_equal, coutaccset, ioutyear, coutsysname, coutsysver, doutbilldate,
    ioutperiod, coutsign, coutno_id, doutdate, coutbillsign, coutid, cDefine1, cDefine2, cDefine3, cDefine4,
    cDefine5, cDefine6, cDefine7, cDefine8, cDefine9, cDefine10, cDefine11, cDefine12, cDefine13, cDefine14,
    cDefine15, cDefine16
from gl_accvouch where iyear = cast(session_context(N'iyear') as smallint);
go

-- The accounts of the session's year, without the year.
create view gl_v_code as
select
    ccode, ccode_name, bCashItem, bend, bclose, cUserDefineType
from code where iyear = cast(session_context(N'iyear') as smallint);
go

-- The cash-flow rows of the session's year. What is written here lands in gl_cashtable at once.
create view gl_v_cashtable as
select
    RowGuid, iYear, iPeriod, iSignSeq, csign, iNo_id, inid, cCashItem, md, mc, ccode, md_f, mc_f, nd_s, nc_s,
    cdept_id, cperson_id, ccus_id, csup_id, citem_class, citem_id, cDefine1, cDefine2, cDefine3, cDefine4, cDefine5,
    cDefine6, cDefine7, cDefine8, cDefine9, cDefine10, cDefine11, cDefine12, cDefine13, cDefine14, cDefine15,
    dbill_date, cDefine16, cexch_name
from gl_cashtable where iYear = cast(session_context(N'iyear') as smallint);
go
-- The server writes through a view over one table by itself: no trigger is needed.

-- The templates of the session's year. What is written here lands in GL_CashItemDataSource at once; iID and the year come by themselves.
create view GL_V_CashItemDataSource as
select
    iyear, bDataStyle, cDataSource, bdir, cItemCode, dStartDate, dEndDate, iID
from GL_CashItemDataSource where iyear = cast(session_context(N'iyear') as smallint);
go
-- The server writes through a view over one table by itself: no trigger is needed.

-- The version of the account's schema, which z7cf verify compares with the one that it knows.
create view z7_schema_version as select 1 as version;
go
