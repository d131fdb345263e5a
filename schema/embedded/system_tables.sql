-- The suite's system database zqsystem, embedded form.

-- Accounting periods of each account with their first and last day.
create table ua_period (
    cacc_id         nvarchar(20)  not null  collate z7_text check (length(cacc_id) <= 20),
    iyear           smallint      not null  check (typeof(iyear) = 'integer' and iyear between -32768 and 32767),
    iid             tinyint       not null  check (typeof(iid) = 'integer' and iid between 0 and 255),
    dbegin          datetime      not null  check (dbegin glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    dend            datetime      not null  check (dend glob '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'),
    primary key (cacc_id, iyear, iid)
) without rowid;
