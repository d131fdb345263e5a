-- The log of changes, embedded form. The other form has the same tables in the same order.

-- Runs: each command that changed rows, with the user, the local time and the words of the command. iUndo is the run that it
-- undid; cToken tells a new run from those that begin at the same time.
create table z7_run (
    iRun            integer       not null  primary key autoincrement,
    cUser           nvarchar(60)  not null  collate z7_text check (length(cUser) <= 60),
    dTime           datetime      not null  check (dTime glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    cCommand        nvarchar(255) not null  collate z7_text check (length(cCommand) <= 255),
    iUndo           int           null      check (typeof(iUndo) in ('integer', 'null') and iUndo between -2147483648 and 2147483647),
    cToken          nvarchar(40)  not null  collate z7_text check (length(cToken) <= 40)
);
create index z7_run_cToken on z7_run (cToken);

-- The rows of each voucher that a run changed: those that it found (bAfter 0) and those that it left (bAfter 1), with all columns of
-- gl_cashtable in their order.
create table z7_run_row (
    iRun            int           not null  check (typeof(iRun) = 'integer' and iRun between -2147483648 and 2147483647),
    bAfter          bit           not null  check (typeof(bAfter) = 'integer' and bAfter between 0 and 1),
    RowGuid         nvarchar(40)  null      collate z7_text check (length(RowGuid) <= 40),
    iYear           smallint      not null  check (typeof(iYear) = 'integer' and iYear between -32768 and 32767),
    iPeriod         tinyint       not null  check (typeof(iPeriod) = 'integer' and iPeriod between 0 and 255),
    iSignSeq        smallint      not null  check (typeof(iSignSeq) = 'integer' and iSignSeq between -32768 and 32767),
    csign           nvarchar(28)  not null  collate z7_text check (length(csign) <= 28),
    iNo_id          int           not null  check (typeof(iNo_id) = 'integer' and iNo_id between -2147483648 and 2147483647),
    inid            smallint      null      check (typeof(inid) in ('integer', 'null') and inid between -32768 and 32767),
    cCashItem       nvarchar(40)  not null  collate z7_text check (length(cCashItem) <= 40),
    md              money real    not null  check (typeof(md) = 'real'),
    mc              money real    not null  check (typeof(mc) = 'real'),
    ccode           nvarchar(40)  not null  collate z7_text check (length(ccode) <= 40),
    md_f            money real    not null  check (typeof(md_f) = 'real'),
    mc_f            money real    not null  check (typeof(mc_f) = 'real'),
    nd_s            float         not null  check (typeof(nd_s) = 'real'),
    nc_s            float         not null  check (typeof(nc_s) = 'real'),
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
create index z7_run_row_iRun_iYear_iPeriod_iSignSeq_iNo_id on z7_run_row (iRun, iYear, iPeriod, iSignSeq, iNo_id);
