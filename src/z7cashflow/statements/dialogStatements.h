#pragma once

#include "z7cashflow/statements/Statement.h"
#include "z7cashflow/support/visibility.h"

// What the dialog reads while a user edits rows, and the widths of its columns.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// The summary of a voucher line.
inline constexpr Statement<Table, Number, VoucherKey, Number> lineSummary{
    "lineSummary", "select cdigest from {table} where iyear={year} and iperiod={period} and isignseq={kind} and"
                   " ino_id={number} and inid={inid}"};
/// The same for a keyless table.
inline constexpr Statement<Table, Number> keylessLineSummary{"keylessLineSummary",
                                                             "select cdigest from {table} where inid ={inid}"};

/// Whether rows belong to the lines of cash-flow accounts.
inline constexpr Statement<> cashCodeOption{
    "cashCodeOption", "select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' "};
/// Whether an account is a cash-flow account of a year.
inline constexpr Statement<Number, Text> accountFlag{
    "accountFlag", "select bCashItem from code where iyear={year} and  ccode=N'{ccode}'"};

/// The first line of a voucher on an account.
inline constexpr Statement<Table, Text, VoucherKey> firstLineOfAccount{
    "firstLineOfAccount", "select top 1 * from {table} where ccode=N'{ccode}' and iperiod={period} and isignseq={kind}"
                          " and ino_id={number}"};
/// The same for a keyless table.
inline constexpr Statement<Table, Text> keylessFirstLineOfAccount{"keylessFirstLineOfAccount",
                                                                  "select top 1 * from {table} where ccode=N'{ccode}'"};
/// The line of a voucher with a number and an account.
inline constexpr Statement<Table, Text, VoucherKey, Number> lineOfAccount{
    "lineOfAccount", "select * from {table} where ccode=N'{ccode}' and iperiod={period} and isignseq={kind} and"
                     " ino_id={number} And inid = {inid}"};
/// The same for a keyless table.
inline constexpr Statement<Table, Text, Number> keylessLineOfAccount{
    "keylessLineOfAccount", "select * from {table} where ccode=N'{ccode}' and inid={inid}"};
/// Lines on an account, of any voucher.
inline constexpr Statement<Table, Text> linesOfAccount{"linesOfAccount",
                                                       "select * from {table} where ccode=N'{ccode}'"};

/// A cash-flow item by its code.
inline constexpr Statement<Text> cashFlowItem{"cashFlowItem", "select * from fitemss98 where citemcode=N'{code}'"};

/// The entry lines to which rows can belong. bCashItem is "1 ", with a blank, or "0". Another condition may follow,
/// after " and " or, for a keyless table, " where ".
inline constexpr Statement<Table, Number, VoucherKey> referenceLines{
    "referenceLines", "select  cast(0 as bit) as bRefSelectColumn,inid,a.ccode,md,mc from {table} a"
                      " inner join gl_v_code on a.ccode=gl_v_code.ccode and gl_v_code.bCashItem={bCashItem}"
                      " where iperiod={period} and isignseq={kind} and ino_id={number}"};
/// The same for a keyless table.
inline constexpr Statement<Table, Number> keylessReferenceLines{
    "keylessReferenceLines", "select  cast(0 as bit) as bRefSelectColumn,inid,a.ccode,md,mc from {table}  a"
                             " inner join gl_v_code on a.ccode=gl_v_code.ccode and gl_v_code.bCashItem={bCashItem}"};

/// A condition on cash-flow items: code or name matches a pattern.
inline constexpr Statement<Text, Text> itemFilter{"itemFilter",
                                                  "citemcode like N'{pattern}' or citemname like N'{pattern}'"};
/// The cash-flow items that satisfy a condition, which follows; itemOrder comes last.
inline constexpr Statement<> itemsUnder{"itemsUnder", "select citemcode,citemname from fitemss98 where "};
/// The end of itemsUnder.
inline constexpr Statement<> itemOrder{"itemOrder", " order by citemcode"};

/// The stored widths of a layout in a language, for display.
inline constexpr Statement<Text, Number, Text> widthsToShow{
    "widthsToShow",
    "select * from GL_myoutput where cauth=N'{name}' and csqrmode={mode} and LocaleId=N'{locale}' order by cFieldNum"};
/// The stored widths for comparison with those on the screen.
inline constexpr Statement<Text, Number, Text> widthsToCompare{
    "widthsToCompare",
    "select * from GL_myoutput where cauth=N'{name}' and csqrmode={mode} and LocaleId=N'{locale}' order by cfieldnum"};
/// Deletes the stored widths.
inline constexpr Statement<Text, Number, Text> widthsDelete{
    "widthsDelete", "Delete from GL_myoutput where cauth=N'{name}' and csqrmode={mode} and LocaleId=N'{locale}'"};
/// Stores the width of one column.
inline constexpr Statement<Text, Number, Number, Number, Text> widthInsert{
    "widthInsert", "insert into GL_myoutput (cauth,csqrmode,cfieldnum,ilength,LocaleId)"
                   " values('{name}',{mode},{column},{width},'{locale}')"};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
