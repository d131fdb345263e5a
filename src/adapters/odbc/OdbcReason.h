#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::cashflow::odbc {

/// Why a server cannot be worked with through ODBC, beside the words of its driver. Where a place takes the words of
/// another error, it is the last one. How a reason is added stands at Reason.
enum class OdbcReason {
    // drivers and connections
    noMemory,
    driverSilent,
    driverMissing,
    connectingTo,
    driverNotUtf8,
    connectionLost,
    connectionLostWith,
    // transactions
    lostInTransaction,
    lostInCommit,
    commitUnknown,
    // connection strings
    odbcPartMissing,
    driverNotNamed,
    driverEmbedded,
    charsetNotUtf8,
    count ///< the number of reasons, not a reason itself
};

/// The reasons in the order of their names.
[[nodiscard]] std::span<const ReasonEntry> odbcReasons() noexcept;

[[nodiscard]] const ReasonEntry& entryOf(OdbcReason reason) noexcept;

} // namespace z7::cashflow::odbc
