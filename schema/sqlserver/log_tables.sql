-- The log of changes, SQL Server form. The other form has the same tables in the same order.

-- Runs: each command that changed rows, with the user, the local time and the words of the command. iUndo is the run that it
-- undid; cToken tells a new run from those that begin at the same time.
create table z7_run (
    iRun            int           not null  identity(1, 1) primary key,
    cUser           nvarchar(60)  not null  collate Chinese_PRC_CI_AS,
    dTime           datetime      not null,
    cCommand        nvarchar(255) not null  collate Chinese_PRC_CI_AS,
    iUndo           int           null,
    cToken          nvarchar(40)  not null  collate Chinese_PRC_CI_AS
);
go
create index z7_run_cToken on z7_run (cToken);
go

-- The rows of each voucher that a run changed: those that it found (bAfter 0) and those that it left (bAfter 1), with all columns of
-- gl_cashtable in their order.
create table z7_run_row (
    iRun            int           not null,
    bAfter          bit           not null,
    RowGuid         nvarchar(40)  null      collate Chinese_PRC_CI_AS,
    iYear           smallint      not null,
    iPeriod         tinyint       not null,
    iSignSeq        smallint      not null,
    csign           nvarchar(28)  not null  collate Chinese_PRC_CI_AS,
    iNo_id          int           not null,
    inid            smallint      null,
    cCashItem       nvarchar(40)  not null  collate Chinese_PRC_CI_AS,
    md              money         not null,
    mc              money         not null,
    ccode           nvarchar(40)  not null  collate Chinese_PRC_CI_AS,
    md_f            money         not null,
    mc_f            money         not null,
    nd_s            float         not null,
    nc_s            float         not null,
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
create index z7_run_row_iRun_iYear_iPeriod_iSignSeq_iNo_id on z7_run_row (iRun, iYear, iPeriod, iSignSeq, iNo_id);
go
