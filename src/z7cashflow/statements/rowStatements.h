#pragma once

#include "z7cashflow/statements/Statement.h"
#include "z7cashflow/support/visibility.h"

// Stored cash-flow rows. gl_cashtable holds those of all years; the view gl_v_cashtable shows those of the session's
// year.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// The stored rows of a voucher with the names of their accounts and items.
inline constexpr Statement<Number, VoucherKey> storedRows{
    "storedRows",
    "select table1.*,fitemss98.citemname from (select gl_cashtable.*, code.ccode_name,code.bCashItem"
    " from gl_cashtable inner join code on code.iyear=gl_cashtable.iyear and gl_cashtable.ccode=code.ccode"
    " where  code.iyear={year} and iperiod={period} and isignseq={kind} and ino_id={number}) table1"
    " inner join fitemss98 on table1.cCashItem =fitemss98.citemcode"};
/// The columns of storedRows without a record.
inline constexpr Statement<Number, VoucherKey> noStoredRows{
    "noStoredRows",
    "select table1.*,fitemss98.citemname from (select gl_cashtable.*, code.ccode_name,code.bCashItem"
    " from gl_cashtable inner join code on code.iyear=gl_cashtable.iyear and gl_cashtable.ccode=code.ccode"
    " where code.iyear={year} and  iperiod={period} and isignseq={kind} and ino_id={number}) table1"
    " inner join fitemss98 on table1.cCashItem =fitemss98.citemcode Where 1=-1"};

/// Stores one row.
inline constexpr Statement<Table, ColumnList, RowValues> insertRow{"insertRow",
                                                                   "insert into {table} ({columns}) values({values})"};
/// insertRow for a schema without stored fields.
inline constexpr Statement<Table> insertNoField{"insertNoField", "insert into {table} ( values("};

/// Removes the rows of a voucher, in any year, before those of a collection are stored by the same statement.
inline constexpr Statement<Table, VoucherKey> deleteBeforeInserts{
    "deleteBeforeInserts", "delete from {table} where Iperiod = {period} and ISignSeq={kind} and INo_id={number};"};

/// Removes the rows of a ledger voucher before its new ones are stored.
inline constexpr Statement<VoucherKey> deleteRows{
    "deleteRows", "delete from gl_v_cashtable where iperiod={period} and isignseq={kind} and ino_id={number}"};
/// The same for a voucher made from an outside voucher.
inline constexpr Statement<Number, VoucherKey> deleteRowsInYear{
    "deleteRowsInYear",
    "delete from gl_cashtable where iyear={year} and  iperiod={period} and isignseq={kind} and ino_id={number}"};
/// Removes the rows under a voucher's former number unless a voucher still has it. Both keys are the same.
inline constexpr Statement<VoucherKey, VoucherKey> deleteRowsOfFreeNumber{
    "deleteRowsOfFreeNumber",
    "if not exists(Select top 1 ccode From gl_v_accvouch"
    " where iperiod={period} and isignseq={kind} and ino_id={number}) delete from gl_v_cashtable"
    " where iperiod={period} and isignseq={kind} and ino_id={number}"};
/// The number of lines under a voucher's former number.
inline constexpr Statement<VoucherKey> countLines{
    "countLines", "Select Count(*) From gl_v_accvouch Where iperiod={period} and isignseq={kind} and ino_id={number}"};

/// Copies the currency names of a voucher's lines to its rows.
inline constexpr Statement<VoucherKey, Number> takeCurrencyNames{
    "takeCurrencyNames",
    "UPDATE GL_CashTable SET cexch_name =  g.cexch_name FROM dbo.GL_CashTable c"
    " INNER JOIN dbo.GL_accvouch g ON  c.ccode = g.ccode AND  c.csign = g.csign  AND c.iyear = g.iyear AND c.iNo_id"
    " = g.ino_id AND  c.inid = g.inid  Where c.iPeriod = {period} And c.isignseq = {kind} And c.iNo_id = {number}"
    " and c.iyear = {year}"};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
