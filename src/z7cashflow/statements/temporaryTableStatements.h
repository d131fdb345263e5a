#pragma once

#include "z7cashflow/statements/Statement.h"
#include "z7cashflow/support/visibility.h"

// The table in tempdb for a voucher given as XML.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// Creates the table with the columns and types of the ledger's voucher lines; the false condition copies no line.
inline constexpr Statement<Table, Number> createVoucherTable{
    "createVoucherTable",
    "select inid,idoc,cbill,cdigest,ccode,cexch_name,md,mc,md_f,mc_f, nd_s,nc_s, csettle ,cn_id,dt_date"
    " ,cdept_id,cperson_id,ccus_id ,csup_id,citem_id,citem_class,"
    " cname,ccode_equal,coutaccset,ioutyear,coutsysname,coutsysver,doutbilldate,ioutperiod,coutsign"
    " ,coutno_id,doutdate,coutbillsign, coutid,cDefine1"
    " ,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9"
    " ,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,cDefine16 into {table}  from gl_accvouch"
    " where 1=0 and iyear={year}"};
/// All lines of the table.
inline constexpr Statement<Table> voucherTableLines{"voucherTableLines", "select * from {table}"};
/// Drops a table of the same name before the new one is created.
inline constexpr Statement<Table> dropFormerTable{"dropFormerTable", "drop table {table}"};
/// Drops the table after it has been read.
inline constexpr Statement<Table> dropReadTable{"dropReadTable", "Drop table {table}"};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
