#include "adapters/shared/reasons/DatabaseReason.h"

#include "z7cashflow/support/errorNumbers.h"

#include <array>
#include <cstddef>

namespace z7::cashflow::shared {
namespace {

using R = DatabaseReason;

constexpr std::array table{
    ReasonEntry{R::fieldUnknown, errors::unknownField, "The records have no field named \"{0}\""},
    ReasonEntry{R::fieldPositionUnknown, errors::unknownField, "The records have no field at position {0}"},
    ReasonEntry{R::recordMissing, errors::noCurrentRecord, "There is no current record"},
    ReasonEntry{R::recordsetReadOnly, errors::notUpdatable, "The records cannot be changed"},
    ReasonEntry{
        R::recordWithoutKey, errors::notUpdatable,
        "A record of {0} cannot be changed: the table has no primary key to find it by, or the statement does not select the key"},
    ReasonEntry{R::columnOfExpression, errors::notUpdatable,
                "The column cannot be changed: it is an expression of the view {0}"},
    ReasonEntry{R::recordChanged, errors::recordChanged,
                "The record of {0} was changed or deleted by somebody else after it was read"},
    ReasonEntry{R::objectClosed, errors::objectClosed, "The connection or the recordset is closed"},
    ReasonEntry{R::objectOpen, errors::objectOpen, "The connection or the recordset is already open"},
    ReasonEntry{R::connectionMissing, errors::noConnection, "The recordset has no connection to be opened on"},
    ReasonEntry{R::connectionForeign, errors::invalidArgument, "The connection belongs to another kind of database"},
    ReasonEntry{R::filterUnreadable, errors::invalidArgument,
                "\"{0}\" is not a filter of the form column=number, joined by \"and\""},
    ReasonEntry{R::filterWithoutNumber, errors::invalidArgument, "The filter \"{1}\" has no number for {0}"},
    ReasonEntry{R::resultTooLong, errors::outOfMemory, "A text of the result is too long"},
    ReasonEntry{R::columnValueBad, errors::typeMismatch, "\"{1}\" is not a value for column {0}"},
    ReasonEntry{R::columnTextTooLong, errors::typeMismatch, "Column {0} takes at most {1} characters"},

    ReasonEntry{R::transactionOpen, 0, "A transaction is open already; transactions cannot be nested"},
    ReasonEntry{R::noTransactionToCommit, 0, "There is no transaction to commit"},
    ReasonEntry{R::noTransactionToRollBack, 0, "There is no transaction to roll back"},
    ReasonEntry{
        R::transactionRolledBack, 0,
        "The database has rolled the transaction back after an earlier error; roll it back here before going on"},

    ReasonEntry{R::connectionStringBad, errors::badArgument, "The connection string cannot be used: {0}"},
    ReasonEntry{R::stringWithZeroByte, errors::badArgument, "it holds a zero byte"},
    ReasonEntry{R::stringTooLong, errors::badArgument, "it has more than {0} bytes"},
    ReasonEntry{R::partWithoutValue, errors::badArgument, "each part must be keyword=value"},
    ReasonEntry{R::braceNotClosed, errors::badArgument, "the brace of {0} is not closed"},
    ReasonEntry{R::textAfterBrace, errors::badArgument, "something follows the closing brace of {0}"},
    ReasonEntry{R::keywordTwice, errors::badArgument, "the keyword \"{0}\" is given twice"},
    ReasonEntry{R::keywordMissing, errors::badArgument, "the keyword \"{0}\" is missing"},
    ReasonEntry{R::keywordUnknown, errors::badArgument, "the keyword \"{0}\" is unknown; the known ones are {1}"},
    ReasonEntry{R::keywordNotNumber, errors::badArgument, "{0} must be a number from {1} to {2}"},

    ReasonEntry{R::rowsOfTable, errors::conversionFailed, "{0}: {1}"},
    ReasonEntry{R::rowsOfColumn, errors::conversionFailed, "{0}.{1}: {2}"},
    ReasonEntry{R::columnUnknown, errors::conversionFailed, "table \"{0}\" has no such column"},
    ReasonEntry{R::columnTwice, errors::conversionFailed, "the column is named twice"},
    ReasonEntry{R::columnMissing, errors::conversionFailed, "the column is required and missing"},
    ReasonEntry{R::valueCountWrong, errors::conversionFailed, "fields: {0}, column names: {1}"},
    ReasonEntry{R::columnWithoutValue, errors::conversionFailed, "the column must have a value"},
    ReasonEntry{R::notATruth, errors::conversionFailed, "\"{0}\" is not 0, 1, true or false"},
    ReasonEntry{R::notAWholeNumber, errors::conversionFailed, "\"{0}\" is not a whole number from {1} to {2}"},
    ReasonEntry{R::notANumber, errors::conversionFailed, "\"{0}\" is not a number (thousands commas are not allowed)"},
    ReasonEntry{R::numberTooLarge, errors::conversionFailed, "\"{0}\" is too large; the column takes at most {1}"},
    ReasonEntry{R::amountTooFine, errors::conversionFailed, "\"{0}\" has more than four decimals; round it first"},
    ReasonEntry{R::notADate, errors::conversionFailed, "\"{0}\" is not a date, written year first"},
    ReasonEntry{R::textTooLong, errors::conversionFailed, "\"{0}\" is not a text of at most {1} characters"},
    ReasonEntry{R::keyTaken, errors::conversionFailed, "the key {0} is in the table already"},
    ReasonEntry{R::rowRefused, errors::conversionFailed, "the database refuses the row: {0}"},
};

static_assert(isComplete<R>(table));

} // namespace

std::span<const ReasonEntry> databaseReasons() noexcept { return table; }

const ReasonEntry& entryOf(R reason) noexcept { return table[static_cast<std::size_t>(reason)]; }

} // namespace z7::cashflow::shared
