#pragma once

#include "z7cashflow/support/visibility.h"

#include <array>
#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The columns of a list of open entry lines, which a program writes, a person completes in a spreadsheet, and a
/// program reads back. The names are the same in every language, so that lists can be exchanged.
namespace openLineColumns { // NOLINT(readability-identifier-naming): read as a prefix of the columns, like a type

inline constexpr std::string_view voucher = "voucher"; ///< the key, such as 2024/1/2/15
inline constexpr std::string_view line = "line";       ///< number of the entry line, inid
inline constexpr std::string_view account = "account"; ///< account of the line
inline constexpr std::string_view side = "side";       ///< the line's side: "debit" or "credit"
inline constexpr std::string_view amount = "amount";   ///< amount on that side, such as 8800.00; negative on a red line
inline constexpr std::string_view summary = "summary"; ///< summary of the line, for the reader
inline constexpr std::string_view item = "item";       ///< the cash-flow item, proposed or filled in; empty if none

/// All columns, in the order in which they are written.
inline constexpr std::array all{voucher, line, account, side, amount, summary, item};

inline constexpr std::string_view debit = "debit";   ///< value of the column "side"
inline constexpr std::string_view credit = "credit"; ///< value of the column "side"

} // namespace openLineColumns

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
