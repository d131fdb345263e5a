#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::cashflow::sqlite {

/// Why the embedded database cannot do what it is asked, beside the words of its library. Where a place takes the words
/// of another error, it is the last one. How a reason is added stands at Reason.
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
    // what is added to the words of the library
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

/// The reasons in the order of their names.
[[nodiscard]] std::span<const ReasonEntry> sqliteReasons() noexcept;

[[nodiscard]] const ReasonEntry& entryOf(SqliteReason reason) noexcept;

} // namespace z7::cashflow::sqlite
