#pragma once

#include "z7cashflow/statements/itemStatements.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/statements/voucherStatements.h"
#include "z7cashflow/support/visibility.h"

#include <array>
#include <string_view>

// Statements whose answers belong to the account and not to a voucher: cash-flow items and their templates, options,
// periods, voucher kinds and accounts. The answers are the same for every voucher of a run, so that a host may run
// each of them once.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// A statement of that kind.
struct AccountAnswer {
    std::string_view beginning; ///< the text with which the statement begins
    std::string_view table;     ///< the table that it reads, in lower case
};

/// Those statements, each with its table.
inline constexpr std::array<AccountAnswer, 8> accountAnswers{{
    {itemName.beginning(), "fitemss98"},
    {itemTemplate.beginning(), "gl_cashitemdatasource"},
    {accountOption.beginning(), "accinformation"},
    {sumCheckOption.beginning(), "accinformation"},
    {voucherOptions.beginning(), "gl_voucheroption"},
    {accountingPeriod.beginning(), "ua_period"},
    {voucherKind.beginning(), "dsign"},
    {cashAccount.beginning(), "code"},
}};

/// Whether a text is exactly one of these statements with its places filled.
[[nodiscard]] bool isAccountAnswer(std::string_view text);

/// Whether a text may change one of the tables that these statements read, or (forWriting) the records that it
/// reads may be written to one. In doubt the result is true: a word inside a value counts as well, and so does
/// every text that does not begin like a statement of the library.
[[nodiscard]] bool mayChangeAccountAnswers(std::string_view text, bool forWriting);

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
