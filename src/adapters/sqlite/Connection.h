#pragma once

#include "adapters/shared/session/PooledConnection.h"

#include <memory>

namespace z7::cashflow::sqlite {

class Session;
struct Observers;

/// A session on the embedded database: an account's file with its system database and its tempdb beside it.
///
/// The connection string is "driver=sqlite;database=FILE;year=2013". Values may stand in braces, in which "}}" is
/// one closing brace. Keywords, without regard to case:
///   driver    must be "sqlite"
///   database  the account's file; it must exist (see createDatabase in database.h)
///   year      the accounting year that the four names with _v_ show; without it they show nothing
///   timeout   milliseconds to wait for another session's write to end, 0 to 3600000; 5000 if it is not given
///   maxpages  the number of pages that the account's file may grow to; no bound of its own if it is not given
///
/// It takes statements in Transact-SQL, as defined for the suite's server. A statement that it does not understand is
/// error 102, which quotes the place. Errors of the database carry the extended result code as their number and the
/// source "SQLite".
///
/// BeginTrans takes the account's write lock at once, so that of two desks that save at the same time one waits there,
/// or gets the error "database is locked" there, and neither fails in the middle of its work.
class Connection final : public shared::PooledConnection {
public:
    Connection();

    /// Sees each text that really runs, in the embedded database's own dialect with its values in place, the begin and
    /// the end of transactions among them.
    void onRewrittenStatement(StatementObserver observer);

private:
    friend class AccountTables;
    friend class RelaxedCommits;

    explicit Connection(const std::shared_ptr<Observers>& observers);
    Session& session();

    std::shared_ptr<Observers> observers_;
};

} // namespace z7::cashflow::sqlite
