-- The account's tables, embedded form. The other form has the same tables in the same order.

-- Entry lines of vouchers, one row a line. md and mc are the debit and the credit, such as 100.00 and 0.00.
create table gl_accvouch (
    iyear           smallint      not null  check (typeof(iyear) = 'integer' and iyear between -32768 and 32767),
    iperiod         tinyint       not null  check (typeof(iperiod) = 'integer' and iperiod between 0 and 255),
    isignseq        smallint      not null  check (typeof(isignseq) = 'integer' and isignseq between -32768 and 32767),
    ino_id          int           not null  check (typeof(ino_id) = 'integer' and ino_id between -2147483648 and 2147483647),
    inid            smallint      not null  check (typeof(inid) = 'integer' and inid between -32768 and 32767),
    dbill_date      datetime      null      check (dbill_date glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    csign           nvarchar(28)  null      collate z7_text check (length(csign) <= 28),
    idoc            smallint      null      check (typeof(idoc) in ('integer', 'null') and idoc between -32768 and 32767),
    cbill           nvarchar(60)  null      collate z7_text check (length(cbill) <= 60),
    iflag           tinyint       null      check (typeof(iflag) in ('integer', 'null') and iflag between 0 and 255),
    cdigest         nvarchar(300) null      collate z7_text check (length(cdigest) <= 300),
    ccode           nvarchar(40)  not null  collate z7_text check (length(ccode) <= 40),
    ccashitem_id    nvarchar(40)  null      collate z7_text check (length(ccashitem_id) <= 40),
    cexch_name      nvarchar(20)  null      collate z7_text check (length(cexch_name) <= 20),
    md              money real    null      default 0 check (typeof(md) in ('real', 'null')),
    mc              money real    null      default 0 check (typeof(mc) in ('real', 'null')),
    md_f            money real    null      default 0 check (typeof(md_f) in ('real', 'null')),
    mc_f            money real    null      default 0 check (typeof(mc_f) in ('real', 'null')),
    nd_s            float         null      default 0 check (typeof(nd_s) in ('real', 'null')),
    nc_s            float         null      default 0 check (typeof(nc_s) in ('real', 'null')),
    csettle         nvarchar(20)  null      collate z7_text check (length(csettle) <= 20),
    cn_id           nvarchar(60)  null      collate z7_text check (length(cn_id) <= 60),
    dt_date         datetime      null      check (dt_date glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    cdept_id        nvarchar(60)  null      collate z7_text check (length(cdept_id) <= 60),
    cperson_id      nvarchar(60)  null      collate z7_text check (length(cperson_id) <= 60),
    ccus_id         nvarchar(60)  null      collate z7_text check (length(ccus_id) <= 60),
    csup_id         nvarchar(60)  null      collate z7_text check (length(csup_id) <= 60),
    citem_class     nvarchar(20)  null      collate z7_text check (length(citem_class) <= 20),
    citem_id        nvarchar(60)  null      collate z7_text check (length(citem_id) <= 60),
    cname           nvarchar(60)  null      collate z7_text check (length(cname) <= 60),
    ccode_equal     nvarchar(300) null      collate z7_text check (length(ccode_equal) <= 300),
    coutaccset      nvarchar(20)  null      collate z7_text check (length(coutaccset) <= 20),
    ioutyear        smallint      null      check (typeof(ioutyear) in ('integer', 'null') and ioutyear between -32768 and 32767),
    coutsysname     nvarchar(40)  null      collate z7_text check (length(coutsysname) <= 40),
    coutsysver      nvarchar(20)  null      collate z7_text check (length(coutsysver) <= 20),
    doutbilldate    datetime      null      check (doutbilldate glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    ioutperiod      tinyint       null      check (typeof(ioutperiod) in ('integer', 'null') and ioutperiod between 0 and 255),
    coutsign        nvarchar(60)  null      collate z7_text check (length(coutsign) <= 60),
    coutno_id       nvarchar(100) null      collate z7_text check (length(coutno_id) <= 100),
    doutdate        datetime      null      check (doutdate glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    coutbillsign    nvarchar(60)  null      collate z7_text check (length(coutbillsign) <= 60),
    coutid          nvarchar(100) null      collate z7_text check (length(coutid) <= 100),
    cDefine1        nvarchar(60)  null      collate z7_text check (length(cDefine1) <= 60),
    cDefine2        nvarchar(60)  null      collate z7_text check (length(cDefine2) <= 60),
    cDefine3        nvarchar(60)  null      collate z7_text check (length(cDefine3) <= 60),
    cDefine4        datetime      null      check (cDefine4 glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    cDefine5        float         null      check (typeof(cDefine5) in ('real', 'null')),
    cDefine6        datetime      null      check (cDefine6 glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    cDefine7        float         null      check (typeof(cDefine7) in ('real', 'null')),
    cDefine8        nvarchar(120) null      collate z7_text check (length(cDefine8) <= 120),
    cDefine9        nvarchar(120) null      collate z7_text check (length(cDefine9) <= 120),
    cDefine10       nvarchar(120) null      collate z7_text check (length(cDefine10) <= 120),
    cDefine11       nvarchar(120) null      collate z7_text check (length(cDefine11) <= 120),
    cDefine12       nvarchar(120) null      collate z7_text check (length(cDefine12) <= 120),
    cDefine13       nvarchar(120) null      collate z7_text check (length(cDefine13) <= 120),
    cDefine14       nvarchar(120) null      collate z7_text check (length(cDefine14) <= 120),
    cDefine15       float         null      check (typeof(cDefine15) in ('real', 'null')),
    cDefine16       float         null      check (typeof(cDefine16) in ('real', 'null')),
    primary key (iyear, iperiod, isignseq, ino_id, inid)
) without rowid;
create index gl_accvouch_iyear_ino_id_inid on gl_accvouch (iyear, ino_id, inid);
create index gl_accvouch_coutno_id_iyear on gl_accvouch (coutno_id, iyear);

-- Cash-flow rows: this much of a line belongs to a cash-flow item. A line may be split over several rows, so there is no key.
create table gl_cashtable (
    RowGuid         nvarchar(40)  null      collate z7_text check (length(RowGuid) <= 40),
    iYear           smallint      not null  default (z7_required_year()) check (typeof(iYear) = 'integer' and iYear between -32768 and 32767),
    iPeriod         tinyint       not null  check (typeof(iPeriod) = 'integer' and iPeriod between 0 and 255),
    iSignSeq        smallint      not null  check (typeof(iSignSeq) = 'integer' and iSignSeq between -32768 and 32767),
    csign           nvarchar(28)  not null  collate z7_text check (length(csign) <= 28),
    iNo_id          int           not null  check (typeof(iNo_id) = 'integer' and iNo_id between -2147483648 and 2147483647),
    inid            smallint      null      check (typeof(inid) in ('integer', 'null') and inid between -32768 and 32767),
    cCashItem       nvarchar(40)  not null  collate z7_text check (length(cCashItem) <= 40),
    md              money real    not null  default 0 check (typeof(md) = 'real'),
    mc              money real    not null  default 0 check (typeof(mc) = 'real'),
    ccode           nvarchar(40)  not null  collate z7_text check (length(ccode) <= 40),
    md_f            money real    not null  default 0 check (typeof(md_f) = 'real'),
    mc_f            money real    not null  default 0 check (typeof(mc_f) = 'real'),
    nd_s            float         not null  default 0 check (typeof(nd_s) = 'real'),
    nc_s            float         not null  default 0 check (typeof(nc_s) = 'real'),
    cdept_id        nvarchar(60)  null      collate z7_text check (length(cdept_id) <= 60),
    cperson_id      nvarchar(60)  null      collate z7_text check (length(cperson_id) <= 60),
    ccus_id         nvarchar(60)  null      collate z7_text check (length(ccus_id) <= 60),
    csup_id         nvarchar(60)  null      collate z7_text check (length(csup_id) <= 60),
    citem_class     nvarchar(20)  null      collate z7_text check (length(citem_class) <= 20),
    citem_id        nvarchar(60)  null      collate z7_text check (length(citem_id) <= 60),
    cDefine1        nvarchar(60)  null      collate z7_text check (length(cDefine1) <= 60),
    cDefine2        nvarchar(60)  null      collate z7_text check (length(cDefine2) <= 60),
    cDefine3        nvarchar(60)  null      collate z7_text check (length(cDefine3) <= 60),
    cDefine4        datetime      null      check (cDefine4 glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    cDefine5        float         null      check (typeof(cDefine5) in ('real', 'null')),
    cDefine6        datetime      null      check (cDefine6 glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    cDefine7        float         null      check (typeof(cDefine7) in ('real', 'null')),
    cDefine8        nvarchar(120) null      collate z7_text check (length(cDefine8) <= 120),
    cDefine9        nvarchar(120) null      collate z7_text check (length(cDefine9) <= 120),
    cDefine10       nvarchar(120) null      collate z7_text check (length(cDefine10) <= 120),
    cDefine11       nvarchar(120) null      collate z7_text check (length(cDefine11) <= 120),
    cDefine12       nvarchar(120) null      collate z7_text check (length(cDefine12) <= 120),
    cDefine13       nvarchar(120) null      collate z7_text check (length(cDefine13) <= 120),
    cDefine14       nvarchar(120) null      collate z7_text check (length(cDefine14) <= 120),
    cDefine15       float         null      check (typeof(cDefine15) in ('real', 'null')),
    dbill_date      datetime      null      check (dbill_date glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    cDefine16       float         null      check (typeof(cDefine16) in ('real', 'null')),
    cexch_name      nvarchar(20)  null      collate z7_text check (length(cexch_name) <= 20)
);
create index gl_cashtable_iYear_iPeriod_iSignSeq_iNo_id_inid on gl_cashtable (iYear, iPeriod, iSignSeq, iNo_id, inid);

-- Chart of accounts, one set of rows a year.
create table code (
    iyear           smallint      not null  check (typeof(iyear) = 'integer' and iyear between -32768 and 32767),
    ccode           nvarchar(40)  not null  collate z7_text check (length(ccode) <= 40),
    ccode_name      nvarchar(120) null      collate z7_text check (length(ccode_name) <= 120),
    bCashItem       bit           not null  default 0 check (typeof(bCashItem) = 'integer' and bCashItem between 0 and 1),
    bend            bit           not null  default 0 check (typeof(bend) = 'integer' and bend between 0 and 1),
    bclose          bit           not null  default 0 check (typeof(bclose) = 'integer' and bclose between 0 and 1),
    cUserDefineType nvarchar(60)  null      collate z7_text check (length(cUserDefineType) <= 60),
    primary key (iyear, ccode)
) without rowid;

-- Cash-flow items.
create table fitemss98 (
    citemcode       nvarchar(40)  not null  collate z7_text check (length(citemcode) <= 40),
    citemname       nvarchar(120) null      collate z7_text check (length(citemname) <= 120),
    primary key (citemcode)
) without rowid;

-- Templates: the cash-flow item that the lines of an account on one side (bdir 1 debit, 0 credit) normally belong to.
create table GL_CashItemDataSource (
    iyear           smallint      not null  default (z7_required_year()) check (typeof(iyear) = 'integer' and iyear between -32768 and 32767),
    bDataStyle      tinyint       not null  default 0 check (typeof(bDataStyle) = 'integer' and bDataStyle between 0 and 255),
    cDataSource     nvarchar(40)  not null  collate z7_text check (length(cDataSource) <= 40),
    bdir            bit           not null  check (typeof(bdir) = 'integer' and bdir between 0 and 1),
    cItemCode       nvarchar(40)  null      collate z7_text check (length(cItemCode) <= 40),
    dStartDate      datetime      null      check (dStartDate glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    dEndDate        datetime      null      check (dEndDate glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    iID             integer       not null  primary key autoincrement
);
create index GL_CashItemDataSource_iyear_cDataSource_bdir on GL_CashItemDataSource (iyear, cDataSource, bdir);

-- The lines of a user's draft voucher that carry a cash-flow item.
create table GL_VouchDraft (
    cUserId         nvarchar(40)  not null  collate z7_text check (length(cUserId) <= 40),
    inid            smallint      not null  check (typeof(inid) = 'integer' and inid between -32768 and 32767),
    cCashItem       nvarchar(40)  null      collate z7_text check (length(cCashItem) <= 40),
    primary key (cUserId, inid)
) without rowid;

-- Voucher options of each operator.
create table GL_VoucherOption (
    "operator"      nvarchar(60)  not null  collate z7_text check (length("operator") <= 60),
    iUpdateCashFlow tinyint       null      check (typeof(iUpdateCashFlow) in ('integer', 'null') and iUpdateCashFlow between 0 and 255),
    primary key ("operator")
) without rowid;

-- Widths of grid columns, in twips, by layout, mode and language.
create table GL_myoutput (
    cauth           nvarchar(100) not null  collate z7_text check (length(cauth) <= 100),
    csqrmode        int           not null  check (typeof(csqrmode) = 'integer' and csqrmode between -2147483648 and 2147483647),
    LocaleId        nvarchar(20)  not null  collate z7_text check (length(LocaleId) <= 20),
    cfieldnum       int           not null  check (typeof(cfieldnum) = 'integer' and cfieldnum between -2147483648 and 2147483647),
    ilength         int           not null  check (typeof(ilength) = 'integer' and ilength between -2147483648 and 2147483647),
    primary key (cauth, csqrmode, LocaleId, cfieldnum)
) without rowid;

-- Parameters of the account by subsystem.
create table accinformation (
    csysid          nvarchar(20)  not null  collate z7_text check (length(csysid) <= 20),
    cname           nvarchar(60)  not null  collate z7_text check (length(cname) <= 60),
    cvalue          nvarchar(255) null      collate z7_text check (length(cvalue) <= 255),
    cdefault        nvarchar(255) null      collate z7_text check (length(cdefault) <= 255),
    primary key (csysid, cname)
) without rowid;

-- Voucher kinds: the number of a kind and its text, such as 1 and 收.
create table dsign (
    isignseq        smallint      not null  check (typeof(isignseq) = 'integer' and isignseq between -32768 and 32767),
    csign           nvarchar(28)  null      collate z7_text check (length(csign) <= 28)
);
create index dsign_isignseq on dsign (isignseq);

-- What a well-filled account looks like, for the choice of indexes: rows, and rows for one value of each further column of the index. The
-- server gathers this by itself.
analyze;
insert into sqlite_stat1 (tbl, idx, stat) values
    ('gl_accvouch', 'gl_accvouch', '100000 50000 4000 1500 5 1'),
    ('gl_accvouch', 'gl_accvouch_iyear_ino_id_inid', '100000 50000 60 12'),
    ('gl_accvouch', 'gl_accvouch_coutno_id_iyear', '100000 10 5'),
    ('gl_cashtable', 'gl_cashtable_iYear_iPeriod_iSignSeq_iNo_id_inid', '50000 25000 2000 700 3 1'),
    ('code', 'code', '2000 1000 1'),
    ('fitemss98', 'fitemss98', '200 1'),
    ('GL_CashItemDataSource', 'GL_CashItemDataSource_iyear_cDataSource_bdir', '1000 500 2 1'),
    ('GL_myoutput', 'GL_myoutput', '1000 50 20 10 1');
