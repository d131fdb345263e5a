#pragma once

#include "z7cashflow/support/Reason.h"
#include "z7cashflow/support/visibility.h"

#include <span>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::tsql {

/// Why a Transact-SQL statement cannot be run on the embedded database. See Reason for how to add one.
enum class TsqlReason {
    // syntax
    syntaxNear,
    syntaxAtEnd,
    orderByPosition,
    commentNotClosed,
    nameNotClosed,
    textNotClosed,
    tooDeep,
    tooManyValues,
    // unknown or ambiguous names
    objectUnknown,
    databaseUnknown,
    tableAmbiguous,
    functionUnknown,
    argumentCountWrong,
    typeUnknown,
    columnUnnamed,
    // values
    valuesMissing,
    valuesTooMany,
    overflow,
    notANumber,
    notADate,
    textTooLong,
    count ///< the number of reasons, not a reason itself
};

/// The table of reasons, in the order of the enumeration.
[[nodiscard]] std::span<const ReasonEntry> tsqlReasons() noexcept;

[[nodiscard]] const ReasonEntry& entryOf(TsqlReason reason) noexcept;

} // namespace z7::cashflow::tsql

Z7_PUBLIC_END
