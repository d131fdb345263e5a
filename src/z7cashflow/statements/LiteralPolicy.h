#pragma once

#include "z7cashflow/support/visibility.h"

#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// Which values may be inserted into a statement. Values are never escaped.
enum class LiteralPolicy {
    asGiven,      ///< any value; a quote in a text ends the text early
    wholeLiterals ///< texts without quotes, single numbers, names of tables and columns; otherwise error 10020
};

/// A place of a statement, as named in a refusal.
struct Place {
    std::string_view statement; ///< name of the template, such as "cashAccount"
    std::string_view name;      ///< what the place holds, such as "ccode"
};

/// Error 10020 (statementRefused) unless a text can be put between quotes unchanged.
void requireText(std::string_view text, const Place& place);
/// Error 10020 unless a text is one number: digits with at most one decimal point, optionally with a sign, an
/// exponent and surrounding blanks.
void requireNumber(std::string_view text, const Place& place);
/// Error 10020 unless a text is the name of a table, in one to three parts.
void requireTableName(std::string_view text, const Place& place);
/// Error 10020 unless a text is the name of a column.
void requireColumnName(std::string_view text, const Place& place);

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
