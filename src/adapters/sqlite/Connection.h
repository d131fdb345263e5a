#pragma once

#include "adapters/shared/session/PooledConnection.h"
#include "z7cashflow/support/visibility.h"

#include <memory>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::sqlite {

class Connection;
class Session;
struct Observers;

/// Adds the tables of the log of changes; see logTables.h.
void addLogTables(Connection& connection);

/// A session on the embedded database: an account's file with its system database and its tempdb beside it.
///
/// The connection string is "driver=sqlite;database=FILE;year=2013"; sqlite::connectionString writes it. Values may be
/// enclosed in braces, in which "}}" means one closing brace. The keywords, in any letter case:
/// - driver: must be "sqlite"
/// - database: the account's file; it must exist (see createDatabase in database.h)
/// - year: the accounting year that the four views with _v_ in their names show; without it they are empty
/// - timeout: milliseconds to wait for another session's write to end, 0 to 3600000; by default 5000
/// - maxpages: the maximum size of the account's file in pages; by default unlimited
///
/// Statements are in Transact-SQL. A statement that is not understood raises error 102, which quotes the position.
/// Errors of the database have the extended result code as their number, and the source "SQLite".
///
/// BeginTrans obtains the account's write lock at once. If two sessions save at the same time, one of them waits
/// there, or gets the error "database is locked" there, and neither fails in the middle of its work.
class Connection final : public shared::PooledConnection {
public:
    /// A closed connection.
    Connection();

    /// The observer is called with each text that is executed, in the embedded database's own dialect with its values
    /// inserted, including the begin and end of transactions.
    void onRewrittenStatement(StatementObserver observer);

private:
    friend class AccountTables;
    friend class RelaxedCommits;
    friend void addLogTables(Connection& connection);

    explicit Connection(const std::shared_ptr<Observers>& observers);
    Session& session();

    std::shared_ptr<Observers> observers_;
};

} // namespace z7::cashflow::sqlite

Z7_PUBLIC_END
