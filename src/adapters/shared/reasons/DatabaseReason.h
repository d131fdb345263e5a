#pragma once

#include "z7cashflow/support/Reason.h"
#include "z7cashflow/support/visibility.h"

#include <span>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// Why a database adapter raises an error, whatever the database. See Reason for how to add one.
enum class DatabaseReason {
    // connections and recordsets
    fieldUnknown,
    fieldPositionUnknown,
    recordMissing,
    recordsetReadOnly,
    recordWithoutKey,
    columnOfExpression,
    recordChanged,
    objectClosed,
    objectOpen,
    connectionMissing,
    connectionForeign,
    filterUnreadable,
    filterWithoutNumber,
    resultTooLong,
    columnValueBad,
    columnTextTooLong,
    // transactions
    transactionOpen,
    noTransactionToCommit,
    noTransactionToRollBack,
    transactionRolledBack,
    // connection strings
    connectionStringBad,
    stringWithZeroByte,
    stringTooLong,
    partWithoutValue,
    braceNotClosed,
    textAfterBrace,
    keywordTwice,
    keywordMissing,
    keywordUnknown,
    keywordNotNumber,
    // rows that are loaded into a table
    rowsOfTable,
    rowsOfColumn,
    columnUnknown,
    columnTwice,
    columnMissing,
    valueCountWrong,
    columnWithoutValue,
    notATruth,
    notAWholeNumber,
    notANumber,
    numberTooLarge,
    amountTooFine,
    notADate,
    textTooLong,
    keyTaken,
    rowRefused,
    count ///< the number of reasons, not a reason itself
};

/// The table of reasons, in the order of the enumeration.
[[nodiscard]] std::span<const ReasonEntry> databaseReasons() noexcept;

/// The entry of a reason; see entryOf(Reason).
[[nodiscard]] const ReasonEntry& entryOf(DatabaseReason reason) noexcept;

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
