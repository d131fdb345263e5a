#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::cashflow::tsql {

/// Why a Transact-SQL statement cannot be run on the embedded database. How a reason is added stands at Reason.
enum class TsqlReason {
    // the text of a statement
    syntaxNear,
    syntaxAtEnd,
    orderByPosition,
    commentNotClosed,
    nameNotClosed,
    textNotClosed,
    tooDeep,
    tooManyValues,
    // what it names
    objectUnknown,
    databaseUnknown,
    tableAmbiguous,
    functionUnknown,
    argumentCountWrong,
    typeUnknown,
    columnUnnamed,
    // its values
    valuesMissing,
    valuesTooMany,
    overflow,
    notANumber,
    notADate,
    textTooLong,
    count ///< the number of reasons, not a reason itself
};

/// The reasons in the order of their names.
[[nodiscard]] std::span<const ReasonEntry> tsqlReasons() noexcept;

[[nodiscard]] const ReasonEntry& entryOf(TsqlReason reason) noexcept;

} // namespace z7::cashflow::tsql
