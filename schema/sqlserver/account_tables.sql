-- The account's tables, SQL Server form. The other form has the same tables in the same order.

-- Entry lines of vouchers, one row a line. md and mc are the debit and the credit, such as 100.00 and 0.00.
create table gl_accvouch (
    iyear           smallint      not null,
    iperiod         tinyint       not null,
    isignseq        smallint      not null,
    ino_id          int           not null,
    inid            smallint      not null,
    dbill_date      datetime      null,
    csign           nvarchar(28)  null      collate Chinese_PRC_CI_AS,
    idoc            smallint      null,
    cbill           nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    iflag           tinyint       null,
    cdigest         nvarchar(300) null      collate Chinese_PRC_CI_AS,
    ccode           nvarchar(40)  not null  collate Chinese_PRC_CI_AS,
    ccashitem_id    nvarchar(40)  null      collate Chinese_PRC_CI_AS,
    cexch_name      nvarchar(20)  null      collate Chinese_PRC_CI_AS,
    md              money         null      default 0,
    mc              money         null      default 0,
    md_f            money         null      default 0,
    mc_f            money         null      default 0,
    nd_s            float         null      default 0,
    nc_s            float         null      default 0,
    csettle         nvarchar(20)  null      collate Chinese_PRC_CI_AS,
    cn_id           nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    dt_date         datetime      null,
    cdept_id        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cperson_id      nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    ccus_id         nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    csup_id         nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    citem_class     nvarchar(20)  null      collate Chinese_PRC_CI_AS,
    citem_id        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cname           nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    ccode_equal     nvarchar(300) null      collate Chinese_PRC_CI_AS,
    coutaccset      nvarchar(20)  null      collate Chinese_PRC_CI_AS,
    ioutyear        smallint      null,
    coutsysname     nvarchar(40)  null      collate Chinese_PRC_CI_AS,
    coutsysver      nvarchar(20)  null      collate Chinese_PRC_CI_AS,
    doutbilldate    datetime      null,
    ioutperiod      tinyint       null,
    coutsign        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    coutno_id       nvarchar(100) null      collate Chinese_PRC_CI_AS,
    doutdate        datetime      null,
    coutbillsign    nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    coutid          nvarchar(100) null      collate Chinese_PRC_CI_AS,
    cDefine1        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cDefine2        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cDefine3        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cDefine4        datetime      null,
    cDefine5        float         null,
    cDefine6        datetime      null,
    cDefine7        float         null,
    cDefine8        nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine9        nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine10       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine11       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine12       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine13       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine14       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine15       float         null,
    cDefine16       float         null,
    primary key (iyear, iperiod, isignseq, ino_id, inid)
);
go
create index gl_accvouch_iyear_ino_id_inid on gl_accvouch (iyear, ino_id, inid);
go
create index gl_accvouch_coutno_id_iyear on gl_accvouch (coutno_id, iyear);
go

-- Cash-flow rows: this much of a line belongs to a cash-flow item. A line may be split over several rows, so there is no key.
create table gl_cashtable (
    RowGuid         nvarchar(40)  null      collate Chinese_PRC_CI_AS,
    iYear           smallint      not null  default (cast(session_context(N'iyear') as smallint)),
    iPeriod         tinyint       not null,
    iSignSeq        smallint      not null,
    csign           nvarchar(28)  not null  collate Chinese_PRC_CI_AS,
    iNo_id          int           not null,
    inid            smallint      null,
    cCashItem       nvarchar(40)  not null  collate Chinese_PRC_CI_AS,
    md              money         not null  default 0,
    mc              money         not null  default 0,
    ccode           nvarchar(40)  not null  collate Chinese_PRC_CI_AS,
    md_f            money         not null  default 0,
    mc_f            money         not null  default 0,
    nd_s            float         not null  default 0,
    nc_s            float         not null  default 0,
    cdept_id        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cperson_id      nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    ccus_id         nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    csup_id         nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    citem_class     nvarchar(20)  null      collate Chinese_PRC_CI_AS,
    citem_id        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cDefine1        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cDefine2        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cDefine3        nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    cDefine4        datetime      null,
    cDefine5        float         null,
    cDefine6        datetime      null,
    cDefine7        float         null,
    cDefine8        nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine9        nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine10       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine11       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine12       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine13       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine14       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    cDefine15       float         null,
    dbill_date      datetime      null,
    cDefine16       float         null,
    cexch_name      nvarchar(20)  null      collate Chinese_PRC_CI_AS
);
go
create index gl_cashtable_iYear_iPeriod_iSignSeq_iNo_id_inid on gl_cashtable (iYear, iPeriod, iSignSeq, iNo_id, inid);
go

-- Chart of accounts, one set of rows a year.
create table code (
    iyear           smallint      not null,
    ccode           nvarchar(40)  not null  collate Chinese_PRC_CI_AS,
    ccode_name      nvarchar(120) null      collate Chinese_PRC_CI_AS,
    bCashItem       bit           not null  default 0,
    bend            bit           not null  default 0,
    bclose          bit           not null  default 0,
    cUserDefineType nvarchar(60)  null      collate Chinese_PRC_CI_AS,
    primary key (iyear, ccode)
);
go

-- Cash-flow items.
create table fitemss98 (
    citemcode       nvarchar(40)  not null  collate Chinese_PRC_CI_AS,
    citemname       nvarchar(120) null      collate Chinese_PRC_CI_AS,
    primary key (citemcode)
);
go

-- Templates: the cash-flow item that the lines of an account on one side (bdir 1 debit, 0 credit) normally belong to.
create table GL_CashItemDataSource (
    iyear           smallint      not null  default (cast(session_context(N'iyear') as smallint)),
    bDataStyle      tinyint       not null  default 0,
    cDataSource     nvarchar(40)  not null  collate Chinese_PRC_CI_AS,
    bdir            bit           not null,
    cItemCode       nvarchar(40)  null      collate Chinese_PRC_CI_AS,
    dStartDate      datetime      null,
    dEndDate        datetime      null,
    iID             int           not null  identity(1, 1) primary key
);
go
create index GL_CashItemDataSource_iyear_cDataSource_bdir on GL_CashItemDataSource (iyear, cDataSource, bdir);
go

-- The lines of a user's draft voucher that carry a cash-flow item.
create table GL_VouchDraft (
    cUserId         nvarchar(40)  not null  collate Chinese_PRC_CI_AS,
    inid            smallint      not null,
    cCashItem       nvarchar(40)  null      collate Chinese_PRC_CI_AS,
    primary key (cUserId, inid)
);
go

-- Voucher options of each operator.
create table GL_VoucherOption (
    [operator]      nvarchar(60)  not null  collate Chinese_PRC_CI_AS,
    iUpdateCashFlow tinyint       null,
    primary key ([operator])
);
go

-- Widths of grid columns, in twips, by layout, mode and language.
create table GL_myoutput (
    cauth           nvarchar(100) not null  collate Chinese_PRC_CI_AS,
    csqrmode        int           not null,
    LocaleId        nvarchar(20)  not null  collate Chinese_PRC_CI_AS,
    cfieldnum       int           not null,
    ilength         int           not null,
    primary key (cauth, csqrmode, LocaleId, cfieldnum)
);
go

-- Parameters of the account by subsystem.
create table accinformation (
    csysid          nvarchar(20)  not null  collate Chinese_PRC_CI_AS,
    cname           nvarchar(60)  not null  collate Chinese_PRC_CI_AS,
    cvalue          nvarchar(255) null      collate Chinese_PRC_CI_AS,
    cdefault        nvarchar(255) null      collate Chinese_PRC_CI_AS,
    primary key (csysid, cname)
);
go

-- Voucher kinds: the number of a kind and its text, such as 1 and 收.
create table dsign (
    isignseq        smallint      not null,
    csign           nvarchar(28)  null      collate Chinese_PRC_CI_AS
);
go
create index dsign_isignseq on dsign (isignseq);
go
