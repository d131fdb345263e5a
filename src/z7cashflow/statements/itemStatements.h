#pragma once

#include "z7cashflow/statements/Statement.h"
#include "z7cashflow/support/visibility.h"

// Cash-flow items and what names the item of a line: templates of accounts, drafts of users.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// The name of a cash-flow item.
inline constexpr Statement<Text> itemName{"itemName", "select citemname from fitemss98 where citemcode=N'{cItemCode}'"};

/// The template of an account's debit (1) or credit (0) side in a year.
inline constexpr Statement<Number, Text, Number> itemTemplate{
    "itemTemplate",
    "select * from GL_CashItemDataSource where iyear={year} and bDataStyle=0 and cDataSource=N'{cDataSource}' and"
    " bdir ={bDir}"};
/// The templates of an account's side in the session's year, newest first.
inline constexpr Statement<Text, Number> itemTemplatesNewestFirst{
    "itemTemplatesNewestFirst",
    "select * from GL_V_CashItemDataSource where bDataStyle=0 and cDataSource=N'{cDataSource}' and bdir ={bDir}"
    " order by iID desc"};
/// The template of an account's side that is valid on a date.
inline constexpr Statement<Text, Number, Text, Text> itemTemplateOnDate{
    "itemTemplateOnDate",
    "select cItemcode from GL_V_CashItemDataSource"
    " where cDataSource=N'{cDataSource}' and bDir={bDir}  and  dStartDate<='{date}' and  (dEndDate is null or"
    " dEndDate>='{date}')"};

/// The item of a line of a user's draft.
inline constexpr Statement<Text, Number> draftItem{
    "draftItem", "select cCashItem from GL_VouchDraft where cUserId=N'{user}' and inid={inid}"};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
