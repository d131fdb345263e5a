#pragma once

#include "z7cashflow/ports/Connection.h"

#include <functional>
#include <memory>
#include <string>

namespace z7::cashflow::odbc {

class Session;
class SessionPool;

/// A session on a database that is reached through an ODBC driver, such as a SQL Server that a whole office shares.
///
/// The connection string has one of two forms:
///   Driver={FreeTDS};Server=s;Port=1433;Database=d;UID=u;PWD=p;Year=2013       what ODBC takes, with our keywords among it
///   driver=odbc;odbc={Driver={FreeTDS};Server=s;...};year=2013                 the same in braces; a "}" in it is doubled
/// Our keywords, without regard to case, which the driver does not get:
///   year     the accounting year that the four names with _v_ show; without it they show nothing
///   timeout  milliseconds to wait for a lock of another session, 0 to 3600000; 5000 if it is not given
///   dialect  tsql (the default): statements go down as they stand; sqlite: they are rewritten first, for the embedded
///            database behind its ODBC driver
///
/// Errors of the server carry its number, its text and the SQL state, under the source "ODBC"; see diagnostics.h for those of
/// drivers that give no number. No password or token of the string reaches a message.
///
/// A session whose line to the server is cut is given up: the error that told so is the server's or the driver's, and the next
/// operation opens a new session. Within a transaction every operation is refused with error 3930 until RollbackTrans, since
/// what was done in it is gone.
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
    /// owns: idle sessions are kept, a few in all, until the connection closes. Such a session is never this connection's.
    [[nodiscard]] std::shared_ptr<Recordset> CreateRecordset() override;

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

private:
    friend class RecordsetBackend;

    /// The session, a new one if the line of the last one was cut outside a transaction.
    const std::shared_ptr<Session>& session();

    std::shared_ptr<SessionPool> pool_;
    std::shared_ptr<Session> session_;
    std::string connectionString_;
};

} // namespace z7::cashflow::odbc
