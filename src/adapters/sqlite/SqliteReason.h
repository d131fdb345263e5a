#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::cashflow::sqlite {

/// Why the embedded database refuses a request, in addition to the messages of its library. If a text has a place
/// for another error's message, it is the last one. See Reason for how to add one.
enum class SqliteReason {
    // files
    folderNotFile,
    accountMissing,
    periodsMissing,
    cannotOpen,
    logLeftBehind,
    notADatabase,
    notAnAccount,
    notThePeriods,
    versionNewer,
    versionOlder,
    fileTaken,
    folderMissing,
    cannotCreate,
    cannotWrite,
    openElsewhere,
    cannotCheck,
    noTemporaryFolder,
    folderNotCreated,
    folderNotLocked,
    // additions to messages of the library
    fileDamaged,
    systemSays,
    writeRefused,
    locked,
    // sessions
    fileReadOnly,
    fileMoved,
    fileChanged,
    statementTooLong,
    joinsLoseRows,
    sumOfTexts,
    yearMissing,
    // connection strings
    driverNotSqlite,
    databaseEmpty,
    count ///< the number of reasons, not a reason itself
};

/// The table of reasons, in the order of the enumeration.
[[nodiscard]] std::span<const ReasonEntry> sqliteReasons() noexcept;

[[nodiscard]] const ReasonEntry& entryOf(SqliteReason reason) noexcept;

} // namespace z7::cashflow::sqlite
