#pragma once

#include "z7cashflow/statements/Statement.h"
#include "z7cashflow/support/visibility.h"

// Options, periods and voucher kinds of the account.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// The value of an account option, and its default.
inline constexpr Statement<Text, Text> accountOption{
    "accountOption",
    "select cvalue,cdefault from accinformation WITH(NOLOCK) where csysid =N'{csysid}' and cname = N'{cname}'"};

/// Returns a record if the account compares sums when rows are saved from XML.
inline constexpr Statement<> sumCheckOption{
    "sumCheckOption", "select * from accinformation where csysid=N'gl' and cname=N'bXJLL' and cvalue='true'"};

/// The voucher options of an operator.
inline constexpr Statement<Text> voucherOptions{
    "voucherOptions", "select * from GL_VoucherOption WITH(NOLOCK) where operator =N'{operator}'"};

/// The accounting period that contains a date.
inline constexpr Statement<Text, Text, Text> accountingPeriod{
    "accountingPeriod",
    "select iyear,iid from zqsystem..ua_period where cacc_id =N'{account}' and dbegin<='{date}' and dend>='{date}' "};

/// A voucher kind with its sign.
inline constexpr Statement<Number> voucherKind{"voucherKind", "select * from dsign where isignseq={kind}"};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
