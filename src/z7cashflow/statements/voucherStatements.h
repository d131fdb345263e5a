#pragma once

#include "z7cashflow/statements/Statement.h"
#include "z7cashflow/support/visibility.h"

// Reads of vouchers. A keyed table holds many vouchers, a keyless table one; see DataProvider::HaveVoucherKey.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// The lines of a voucher on end-level, open accounts of a year.
inline constexpr Statement<ColumnList, Table, Number, VoucherKey> voucherLines{
    "voucherLines",
    "select {columns},bCashItem from {table} as TempVoucher"
    "  inner join code on  TempVoucher.iyear=code.iyear and  code.iyear={year} and  TempVoucher.ccode=code.ccode"
    " where TempVoucher.iperiod={period} and TempVoucher.isignseq={kind} and TempVoucher.ino_id={number} and"
    "  code.bend=1 and code.bclose=0"};
/// The same for a keyless table.
inline constexpr Statement<ColumnList, Table, Number> keylessVoucherLines{
    "keylessVoucherLines",
    "select {columns},bCashItem from {table} as TempVoucher"
    "  inner join code on  code.iyear={year} and  TempVoucher.ccode=code.ccode where  code.bend=1 and code.bclose=0"};
/// The same for a voucher known by its outside key.
inline constexpr Statement<ColumnList, Table, Number, Text> outsideVoucherLines{
    "outsideVoucherLines",
    "select {columns},bCashItem from {table} as TempVoucher"
    "  inner join code on   TempVoucher.iyear=code.iyear and   code.iyear={year} and   TempVoucher.ccode=code.ccode"
    " where TempVoucher.coutno_id=N'{coutNo_id}' and code.bend=1 and code.bclose=0   "};
/// The same for a keyless table.
inline constexpr Statement<ColumnList, Table, Number, Text> keylessOutsideVoucherLines{
    "keylessOutsideVoucherLines", "select {columns},bCashItem from {table} as TempVoucher"
                                  "  inner join code on    code.iyear={year} and   TempVoucher.ccode=code.ccode"
                                  " where TempVoucher.coutno_id=N'{coutNo_id}' and code.bend=1 and code.bclose=0   "};
/// Follows one of the four under government accounting, where budget accounts run beside the financial ones and move no
/// cash.
inline constexpr Statement<> exceptBudgetAccounts{"exceptBudgetAccounts",
                                                  " and code.cUserDefineType<>N'预算类会计科目'"};

/// Debit less credit of a voucher's lines on cash-flow accounts.
inline constexpr Statement<Table, Number, VoucherKey> cashSum{
    "cashSum",
    "select (sum(md) -sum(mc)) as mysum  from {table} as voucherTemp"
    "  inner join CODE on  code.iyear={year} and   voucherTemp.iYear=CODE.iYear and   voucherTemp.ccode=CODE.ccode"
    " where voucherTemp.iperiod={period} and voucherTemp.isignseq ={kind} and voucherTemp.ino_id={number}  and"
    " CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1 group by voucherTemp.iperiod,isignseq,ino_id"};
/// The same for a keyless table.
inline constexpr Statement<Table, Number> keylessCashSum{
    "keylessCashSum", "select (sum(md) -sum(mc)) as mysum  from {table} as voucherTemp"
                      "  inner join CODE on   code.iyear={year} and   voucherTemp.ccode=CODE.ccode"
                      " where CODE.bend=1 and CODE.bclose=0 and CODE.bcashitem=1  "};
/// The same for an outside key, over the accounts of the session's year.
inline constexpr Statement<Table, Text> outsideCashSum{
    "outsideCashSum", "select (sum(md) -sum(mc)) as mysum  from {table} as voucherTemp"
                      "  inner join gl_v_code on  voucherTemp.ccode=gl_v_code.ccode"
                      " where voucherTemp.coutno_id=N'{coutNo_id}' and gl_v_code.bend=1 and gl_v_code.bclose=0 and"
                      " gl_v_code.bcashitem=1 group by voucherTemp.coutno_id"};

/// Returns a record if an account is a cash-flow account of a year.
inline constexpr Statement<Number, Text> cashAccount{
    "cashAccount", "select ccode from code where iyear={year} and  ccode=N'{ccode}' and code.bcashitem=1"};

/// Returns a record if a voucher has a line on an open cash-flow account of a year.
inline constexpr Statement<Table, VoucherKey, Number> cashLine{
    "cashLine",
    "select code.ccode from {table} as TempVoucher"
    " inner join code on TempVoucher.ccode=code.ccode and tempvoucher.iyear=code.iyear"
    " where TempVoucher.iPeriod ={period} and TempVoucher.iSignSeq ={kind} and TempVoucher.iNo_id ={number} and"
    " code.bCashItem=1 and code.bclose=0 and code.iyear={year}"};
/// The same for a keyless table.
inline constexpr Statement<Table, Number> keylessCashLine{
    "keylessCashLine", "select code.ccode from {table} as TempVoucher"
                       " inner join code on  TempVoucher.ccode=code.ccode"
                       "  where code.bCashItem=1 and code.bclose=0 and code.iyear={year}"};
/// The same for an outside key.
inline constexpr Statement<Table, Text, Number> outsideCashLine{
    "outsideCashLine",
    "select code.ccode from  {table} as TempVoucher"
    " inner join code on TempVoucher.ccode=code.ccode and tempvoucher.iyear=code.iyear"
    " where TempVoucher.coutNo_id=N'{coutNo_id}' and code.bcashitem=1 and code.bclose=0 and code.iyear={year}"};
/// The same for an outside key and a keyless table.
inline constexpr Statement<Table, Text, Number> keylessOutsideCashLine{
    "keylessOutsideCashLine",
    "select code.ccode from  {table} as TempVoucher"
    " inner join code on TempVoucher.ccode=code.ccode"
    " where TempVoucher.coutNo_id=N'{coutNo_id}' and code.bcashitem=1 and code.bclose=0 and code.iyear={year}"};

/// Key and date of the ledger voucher created from an outside voucher.
inline constexpr Statement<Number, Text> ledgerVoucherOf{
    "ledgerVoucherOf", "select iperiod,isignseq,ino_id,dbill_date from gl_accvouch"
                       " where iYear= {year} and iflag is null and coutNo_id=N'{coutNo_id}'"};

/// The date of a voucher for a save without a date.
inline constexpr Statement<Table, VoucherKey> voucherDate{
    "voucherDate", "select  dBill_date from {table} where iPeriod ={period} and iSignSeq ={kind} and iNo_id ={number}"};
/// The date of a voucher whose rows come from XML: of one year in the ledger's own table, which holds all years.
inline constexpr Statement<Table, Number, VoucherKey> xmlVoucherDateInYear{
    "xmlVoucherDateInYear",
    "select dbill_date from {table} where iyear={year} and iPeriod={period} and iSignSeq={kind} and iNo_id={number}"};
/// The same for any other table.
inline constexpr Statement<Table, VoucherKey> xmlVoucherDate{
    "xmlVoucherDate", "select dbill_date from {table} where iPeriod={period} and iSignSeq={kind} and iNo_id={number}"};
/// The line to which a row from XML belongs.
inline constexpr Statement<Table, Number, VoucherKey, Number> xmlVoucherLineInYear{
    "xmlVoucherLineInYear",
    "select * from {table} where iyear={year} and iPeriod={period} and iSignSeq={kind} and iNo_id={number} and"
    " inid={inid}"};
/// The same for any other table.
inline constexpr Statement<Table, VoucherKey, Number> xmlVoucherLine{
    "xmlVoucherLine",
    "select * from {table} where  iPeriod={period} and iSignSeq={kind} and iNo_id={number} and inid={inid}"};

/// The conditions under which a record set of a voucher's lines shows one line.
inline constexpr Statement<VoucherKey, FilterNumber> lineFilter{
    "lineFilter", "iperiod={period} and isignseq={kind} and iNo_id={number} and inid={inid}"};
/// The same for a keyless table.
inline constexpr Statement<FilterNumber> keylessLineFilter{"keylessLineFilter", "inid={inid}"};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
