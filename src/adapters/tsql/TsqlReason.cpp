#include "adapters/tsql/TsqlReason.h"

#include "z7cashflow/support/errorNumbers.h"

#include <array>
#include <cstddef>

namespace z7::cashflow::tsql {
namespace {

using R = TsqlReason;

constexpr std::array table{
    ReasonEntry{R::syntaxNear, errors::badSyntax, "Incorrect syntax near '{0}'"},
    ReasonEntry{R::syntaxAtEnd, errors::badSyntax, "Incorrect syntax near the end of the statement"},
    ReasonEntry{R::orderByPosition, errors::badSyntax,
                "Incorrect syntax near 'order by': a column is needed, not a position"},
    ReasonEntry{R::commentNotClosed, errors::unclosedComment, "Missing end comment mark '*/'"},
    ReasonEntry{R::nameNotClosed, errors::unclosedQuote, "Unclosed quotation mark after the name '{0}'"},
    ReasonEntry{R::textNotClosed, errors::unclosedQuote, "Unclosed quotation mark after the character string '{0}'"},
    ReasonEntry{R::tooDeep, errors::tooDeep, "Some part of your SQL statement is nested too deeply"},
    ReasonEntry{R::tooManyValues, errors::tooDeep, "The statement has more than {0} values"},

    ReasonEntry{R::objectUnknown, errors::unknownObject, "Invalid object name '{0}'"},
    ReasonEntry{R::databaseUnknown, errors::unknownDatabase, "Database '{0}' does not exist"},
    ReasonEntry{R::tableAmbiguous, errors::ambiguousTable, "The table '{0}' is ambiguous"},
    ReasonEntry{R::functionUnknown, errors::unknownFunction, "'{0}' is not a recognized built-in function name"},
    ReasonEntry{R::argumentCountWrong, errors::argumentCount, "The {0} function does not take {1} argument(s)"},
    ReasonEntry{R::typeUnknown, errors::unknownType, "Type '{0}' is not a defined system type"},
    ReasonEntry{R::columnUnnamed, errors::unnamedColumn,
                "A column of the new table has no name; give the expression an alias"},

    ReasonEntry{R::valuesMissing, errors::fewerValues,
                "The INSERT statement names {0} columns and has only {1} values"},
    ReasonEntry{R::valuesTooMany, errors::moreValues, "The INSERT statement names only {0} columns and has {1} values"},
    ReasonEntry{R::overflow, errors::numberTooLarge,
                "Arithmetic overflow error converting a value to the type of column {0}"},
    ReasonEntry{R::notANumber, errors::conversionFailed,
                "Error converting data type nvarchar to the number type of column {0}"},
    ReasonEntry{R::notADate, errors::badDate,
                "Conversion failed when converting date and/or time from character string"},
    ReasonEntry{R::textTooLong, errors::textTooLong, "String or binary data would be truncated in column {0}"},
};

static_assert(isComplete<R>(table));

} // namespace

std::span<const ReasonEntry> tsqlReasons() noexcept { return table; }

const ReasonEntry& entryOf(R reason) noexcept { return table[static_cast<std::size_t>(reason)]; }

} // namespace z7::cashflow::tsql
