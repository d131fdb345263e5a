#pragma once

#include "z7cashflow/ports/Connection.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::sqlite {

class Connection;
class Session;
class SessionPool;
class TableLoader;
struct TableColumn;

// Friends of the connection; see TableLoader.h.
std::vector<std::string> tableNames(Connection& connection);
std::vector<TableColumn> tableColumns(Connection& connection, const std::string& table);

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
/// It takes statements in Transact-SQL, as defined for the suite's server. A statement that it does not understand is error 102,
/// which quotes the place. Errors of the database carry the extended result code as their number and the source "SQLite".
class Connection final : public cashflow::Connection {
public:
    /// Called with the number of the session that runs a statement and the statement's text. An Error that it throws goes to
    /// the caller in place of the statement, which then does not run.
    using StatementObserver = std::function<void(int session, const std::string& text)>;

    Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() override;

    void Open(const std::string& connectionString) override;
    void Close() override;
    [[nodiscard]] ObjectState State() const override;
    [[nodiscard]] std::string ConnectionString() const override;

    std::shared_ptr<Recordset> Execute(const std::string& commandText) override;
    /// A recordset that is opened on the text of a connection string takes its session from a pool that this connection
    /// owns: idle sessions are kept, a few per text, until the connection closes. Such a session is never this connection's.
    [[nodiscard]] std::shared_ptr<Recordset> CreateRecordset() override;

    /// Takes the account's write lock at once, so that of two desks that save at the same time one waits here, or gets
    /// the error "database is locked" here, and neither fails in the middle of its work.
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

    /// True between BeginTrans and CommitTrans or RollbackTrans.
    [[nodiscard]] bool InTransaction() const;
    /// The number of this connection's own session, from 1. Sessions of its pool count on from there. 0 if it is closed.
    [[nodiscard]] int SessionNumber() const;

    /// Sees each statement's text as it was handed in, before anything else looks at it, on this connection's session and on
    /// those of its pool. An empty observer ends it.
    void OnStatement(StatementObserver observer);
    /// Sees each text that really runs, in the embedded database's own dialect with its values in place, the begin and the end
    /// of transactions among them.
    void OnRewrittenStatement(StatementObserver observer);

private:
    friend class RecordsetBackend;
    friend class TableLoader;
    friend std::vector<std::string> tableNames(Connection& connection);
    friend std::vector<TableColumn> tableColumns(Connection& connection, const std::string& table);

    Session& session() const;

    std::shared_ptr<SessionPool> pool_;
    std::shared_ptr<Session> session_;
    std::string connectionString_;
};

} // namespace z7::cashflow::sqlite
