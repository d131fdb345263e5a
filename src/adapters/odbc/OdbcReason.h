#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::cashflow::odbc {

/// Why a server cannot be used through ODBC, in addition to the messages of its driver. If a text has a place for
/// another error's message, it is the last one. See Reason for how to add one.
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

/// The table of reasons, in the order of the enumeration.
[[nodiscard]] std::span<const ReasonEntry> odbcReasons() noexcept;

[[nodiscard]] const ReasonEntry& entryOf(OdbcReason reason) noexcept;

} // namespace z7::cashflow::odbc
