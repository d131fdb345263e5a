-- The suite's system database zqsystem, SQL Server form.

-- Accounting periods of each account with their first and last day.
create table ua_period (
    cacc_id         nvarchar(20)  not null  collate Chinese_PRC_CI_AS,
    iyear           smallint      not null,
    iid             tinyint       not null,
    dbegin          datetime      not null,
    dend            datetime      not null,
    primary key (cacc_id, iyear, iid)
);
go
