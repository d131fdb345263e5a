#include "adapters/odbc/OdbcReason.h"

#include "z7cashflow/support/errorNumbers.h"

#include <array>
#include <cstddef>

namespace z7::cashflow::odbc {
namespace {

using R = OdbcReason;

constexpr std::array table{
    ReasonEntry{R::noMemory, errors::unspecified, "The ODBC driver manager has no memory left"},
    ReasonEntry{R::driverSilent, errors::unspecified, "The driver reports a failure without a reason"},
    ReasonEntry{R::driverMissing, errors::driverNotFound,
                "{1} (The ODBC driver \"{0}\" is not installed, or the data source is not set up)"},
    ReasonEntry{R::connectingTo, 0, "{1} (Connecting to {0})"},
    ReasonEntry{
        R::driverNotUtf8, errors::unspecified,
        "The ODBC driver does not pass texts as UTF-8. For FreeTDS set ClientCharset=UTF-8 in the connection string or the data source; for other drivers run under a UTF-8 locale"},
    ReasonEntry{R::connectionLost, errors::serverNotReached, "The connection to the server was lost"},
    ReasonEntry{R::connectionLostWith, errors::serverNotReached, "The connection to the server was lost. {0}"},

    ReasonEntry{
        R::lostInTransaction, errors::transactionLost,
        "The connection to the server was lost within the transaction, and the server rolls it back; roll it back here before going on"},
    ReasonEntry{
        R::lostInCommit, errors::transactionLost,
        "The connection to the server was lost while the server was storing the transaction, which may be stored or not; roll it back here and read what is stored before going on"},
    ReasonEntry{R::commitUnknown, 0, "Whether the transaction was stored is not known. {0}"},

    ReasonEntry{R::odbcPartMissing, errors::badArgument,
                "driver=odbc needs odbc={...} with the text for the ODBC driver"},
    ReasonEntry{R::driverNotNamed, errors::badArgument,
                "it names neither a driver (Driver={...}) nor a data source (DSN=...)"},
    ReasonEntry{R::driverEmbedded, errors::badArgument,
                "driver=sqlite names the embedded database, which is not reached through ODBC"},
    ReasonEntry{R::charsetNotUtf8, errors::badArgument, "ClientCharset must be UTF-8"},
};

static_assert(isComplete<R>(table));

} // namespace

std::span<const ReasonEntry> odbcReasons() noexcept { return table; }

const ReasonEntry& entryOf(R reason) noexcept { return table[static_cast<std::size_t>(reason)]; }

} // namespace z7::cashflow::odbc
