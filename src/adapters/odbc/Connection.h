#pragma once

#include "adapters/odbc/Dialect.h"
#include "adapters/shared/session/PooledConnection.h"

#include <memory>

namespace z7::cashflow::odbc {

struct Observers;

/// A session on a database that is reached through an ODBC driver, such as a SQL Server that a whole office shares.
///
/// The connection string has one of two forms:
///   Driver={FreeTDS};Server=s;Port=1433;Database=d;UID=u;PWD=p;Year=2013   what ODBC takes, with our keywords among it
///   driver=odbc;odbc={Driver={FreeTDS};Server=s;...};year=2013             the same in braces; a "}" in it is doubled
/// Our keywords, without regard to case, which the driver does not get:
///   year     the accounting year that the four names with _v_ show; without it they show nothing
///   timeout  milliseconds to wait for a lock of another session, 0 to 3600000; 5000 if it is not given
///
/// Errors of the server carry its number, its text and the SQL state, under the source "ODBC"; see databaseError.h for
/// those of drivers that report no number. No password or token of the string reaches a message.
///
/// A session that loses its connection is dropped: the error is the server's or the driver's, and the next
/// operation opens a new session. Within a transaction every operation is refused with error 3930 until RollbackTrans,
/// since what was done in it is gone.
class Connection final : public shared::PooledConnection {
public:
    /// A closed connection whose sessions speak Transact-SQL, as the servers do.
    Connection();
    /// A closed connection whose sessions speak the dialects that the factory makes.
    explicit Connection(DialectFactory makeDialect);

private:
    Connection(DialectFactory makeDialect, const std::shared_ptr<Observers>& observers);
};

} // namespace z7::cashflow::odbc
