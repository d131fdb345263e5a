#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::cashflow::shared {

/// Why a database adapter raises an error, whichever database it leads to. How a reason is added stands at Reason.
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

/// The reasons in the order of their names.
[[nodiscard]] std::span<const ReasonEntry> databaseReasons() noexcept;

[[nodiscard]] const ReasonEntry& entryOf(DatabaseReason reason) noexcept;

} // namespace z7::cashflow::shared
