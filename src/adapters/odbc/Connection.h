#pragma once

#include "adapters/odbc/Dialect.h"
#include "adapters/shared/session/PooledConnection.h"
#include "z7cashflow/support/visibility.h"

#include <memory>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::odbc {

struct Observers;

/// A session on a database with an ODBC driver, such as the SQL Server of an office.
///
/// The connection string has one of two forms:
/// - Driver={FreeTDS};Server=s;Port=1433;Database=d;UID=u;PWD=p;Year=2013, that of ODBC with our keywords in it
/// - driver=odbc;odbc={Driver={FreeTDS};Server=s;...};year=2013, the same in braces, in which every "}" is doubled
///
/// Our keywords, in any letter case, are not passed to the driver:
/// - year: the accounting year that the four views with _v_ in their names show; without it they are empty
/// - timeout: milliseconds to wait for a lock of another session, 0 to 3600000; by default 5000
///
/// Errors of the server have its number, text and SQL state, and the source "ODBC"; see databaseError.h for drivers
/// that report no number. No password or token of the string appears in a message.
///
/// A session that loses its connection is discarded: the error is that of the server or the driver, and the next
/// operation opens a new session. Inside a transaction every operation is then refused with error 3930 until
/// RollbackTrans, because the changes made in it are lost.
class Connection final : public shared::PooledConnection {
public:
    /// A closed connection to servers that speak Transact-SQL.
    Connection();
    /// A closed connection whose sessions use dialects created by the factory.
    explicit Connection(DialectFactory makeDialect);

private:
    Connection(DialectFactory makeDialect, const std::shared_ptr<Observers>& observers);
};

} // namespace z7::cashflow::odbc

Z7_PUBLIC_END
