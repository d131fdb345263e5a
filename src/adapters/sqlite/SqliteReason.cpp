#include "adapters/sqlite/SqliteReason.h"

#include "z7cashflow/support/errorNumbers.h"

#include <sqlite3.h>

#include <array>
#include <cstddef>

namespace z7::cashflow::sqlite {
namespace {

using R = SqliteReason;

constexpr std::array table{
    ReasonEntry{R::folderNotFile, SQLITE_CANTOPEN, "{0} is a folder, not an account's file"},
    ReasonEntry{R::accountMissing, SQLITE_CANTOPEN, "There is no file {0}. Create the account first"},
    ReasonEntry{
        R::periodsMissing, SQLITE_CANTOPEN,
        "There is no file {0}. It holds the account's periods and belongs beside {1}: put it back from the same backup"},
    ReasonEntry{R::cannotOpen, SQLITE_CANTOPEN, "{0} cannot be opened: {1}"},
    ReasonEntry{
        R::logLeftBehind, SQLITE_CANTOPEN,
        "{0} cannot be read: a program has left its log (-wal) beside it. Someone who can write to the file and its folder must open the account once"},
    ReasonEntry{R::notADatabase, SQLITE_NOTADB, "{0} cannot be read as a database: {1}"},
    ReasonEntry{R::notAnAccount, SQLITE_NOTADB, "{0} is a database, but it was not created as an account"},
    ReasonEntry{R::notThePeriods, SQLITE_NOTADB, "{0} is a database, but it was not created as {1}"},
    ReasonEntry{R::versionNewer, SQLITE_MISMATCH,
                "{0} has the schema version {1}, and this program knows the version {2}: use a newer program"},
    ReasonEntry{R::versionOlder, SQLITE_MISMATCH,
                "{0} has the schema version {1}, and this program knows the version {2}"},
    ReasonEntry{R::fileTaken, SQLITE_CANTOPEN, "{0} exists already; choose another name or remove it"},
    ReasonEntry{R::folderMissing, SQLITE_CANTOPEN, "There is no folder {0} to create the account in"},
    ReasonEntry{R::cannotCreate, SQLITE_CANTOPEN, "{0} cannot be created: {1}"},
    ReasonEntry{R::cannotWrite, SQLITE_IOERR, "{0} cannot be written: {1}"},
    ReasonEntry{R::openElsewhere, SQLITE_BUSY, "another program has it open"},
    ReasonEntry{R::cannotCheck, SQLITE_CORRUPT, "it cannot be checked"},
    ReasonEntry{
        R::noTemporaryFolder, SQLITE_CANTOPEN,
        "There is no folder for temporary files: {0}; name one in the environment variable TMPDIR, on Windows TMP"},
    ReasonEntry{R::folderNotCreated, SQLITE_CANTOPEN, "No folder can be created in {0}: {1}"},
    ReasonEntry{R::folderNotLocked, SQLITE_CANTOPEN,
                "No folder in {0} can be locked: the disk may be full, or its file system may have no locks"},

    ReasonEntry{R::fileDamaged, 0, "{1}: {0} is damaged; put it back from a backup"},
    ReasonEntry{R::systemSays, 0, "{1}: {0}"},
    ReasonEntry{R::writeRefused, 0,
                "{0}: the system refuses to write; look at the disk and at the limit on the size of files (ulimit -f)"},
    ReasonEntry{R::locked, 0, "{2}: another session is writing to {0}; waited {1} ms"},

    ReasonEntry{
        R::fileReadOnly, SQLITE_READONLY,
        "{0} can only be read: allow writing to the file, to the one of its periods (zqsystem) and to their folder"},
    ReasonEntry{
        R::fileMoved, SQLITE_READONLY_DBMOVED,
        "{0} was deleted, moved or replaced while it was open: what this transaction wrote is not in the file that bears its name now"},
    ReasonEntry{R::fileChanged, SQLITE_BUSY_SNAPSHOT,
                "Somebody is writing to {0}, which could not be locked here for lack of rights; try again"},
    ReasonEntry{R::statementTooLong, SQLITE_TOOBIG, "The statement is too long"},
    ReasonEntry{R::joinsLoseRows, SQLITE_INTERNAL,
                "The database library {0} loses rows when it joins texts; install another version of SQLite"},
    ReasonEntry{R::sumOfTexts, 0, "A text cannot be summed"},
    ReasonEntry{
        R::yearMissing, 0,
        "The session has no accounting year, which the row needs; name it in the connection string, such as year=2013"},

    ReasonEntry{R::driverNotSqlite, errors::badArgument, "driver must be sqlite for the embedded database"},
    ReasonEntry{R::databaseEmpty, errors::badArgument, "database must name the account's file"},
};

static_assert(isComplete<R>(table));

} // namespace

std::span<const ReasonEntry> sqliteReasons() noexcept { return table; }

const ReasonEntry& entryOf(R reason) noexcept { return table[static_cast<std::size_t>(reason)]; }

} // namespace z7::cashflow::sqlite
