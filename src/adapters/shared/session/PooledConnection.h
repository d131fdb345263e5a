#pragma once

#include "adapters/shared/session/SessionPool.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

class AnswerMemory;
class PoolBackend;

/// The connection that the database adapters share: a session of its own, and a pool of sessions for the recordsets
/// that are opened by connection string, which never use this connection's session. A few idle sessions are kept
/// until the connection closes. Adapters only open sessions.
class PooledConnection : public Connection {
public:
    /// See shared::StatementObserver.
    using StatementObserver = shared::StatementObserver;

    PooledConnection(const PooledConnection&) = delete;
    PooledConnection& operator=(const PooledConnection&) = delete;
    ~PooledConnection() override;

    void Open(const std::string& connectionString) final;
    void Close() final;
    /// Open between Open and Close, also after the session lost its connection.
    [[nodiscard]] ObjectState State() const final;
    /// The connection string of the last Open; it is kept when the connection is closed.
    [[nodiscard]] std::string ConnectionString() const final;

    std::shared_ptr<Recordset> Execute(const std::string& commandText) final;
    [[nodiscard]] std::shared_ptr<Recordset> createRecordset() final;

    void BeginTrans() final;
    void CommitTrans() final;
    void RollbackTrans() final;

    /// True between BeginTrans and CommitTrans or RollbackTrans.
    [[nodiscard]] bool inTransaction() const;
    /// The number of this connection's own session, from 1. The sessions of its pool continue the numbering. 0
    /// if it is closed.
    [[nodiscard]] int sessionNumber() const;

    /// The observer is called with each statement's text as passed in, before anything else processes it, on
    /// this connection's session and on those of its pool. An empty observer ends this.
    void onStatement(StatementObserver observer);

    /// Lets a memory answer statements that it remembers, on this connection's session and on those of its
    /// pool; such a statement is not sent, and no observer is called. A null pointer ends this.
    void remember(std::shared_ptr<AnswerMemory> memory);

protected:
    /// The observers must be the ones that the pool's opener passes to its sessions.
    PooledConnection(std::shared_ptr<SessionPool> pool, std::shared_ptr<Observers> observers);

    /// The session; a new one if the last one lost its connection outside a transaction. Error 3704 if it is closed.
    [[nodiscard]] const std::shared_ptr<Session>& session();

private:
    friend class PoolBackend;

    std::shared_ptr<SessionPool> pool_;
    std::shared_ptr<PoolBackend> backend_;
    std::shared_ptr<Observers> observers_;
    std::shared_ptr<Session> session_;
    std::string connectionString_;
};

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
