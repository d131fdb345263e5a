#pragma once

#include <string_view>

namespace z7::cashflow::statements {

/// What a value may be that goes into a statement. Values are never escaped.
enum class LiteralPolicy {
    asGiven,      ///< anything; a quote in a text ends the text early
    wholeLiterals ///< a text without a quote, exactly one number, the name of a table or a column; else error 10020
};

/// A place of a statement, as a refusal names it.
struct Place {
    std::string_view statement; ///< name of the template, such as "isCashAccount"
    std::string_view name;      ///< what the place holds, such as "ccode"
};

/// Error 10020 (statementRefused) unless a text can go between quotes as it is.
void requireText(std::string_view text, const Place& place);
/// Error 10020 unless a text is one number: digits with one decimal point at most, with a sign, an exponent and blanks
/// around it where it has them.
void requireNumber(std::string_view text, const Place& place);
/// Error 10020 unless a text is the name of a table, in one to three parts.
void requireTableName(std::string_view text, const Place& place);
/// Error 10020 unless a text is the name of a column.
void requireColumnName(std::string_view text, const Place& place);

} // namespace z7::cashflow::statements
