#pragma once

#include "adapters/shared/session/SessionPool.h"
#include "z7cashflow/ports/Connection.h"

#include <memory>
#include <string>

namespace z7::cashflow::shared {

class AnswerMemory;
class PoolBackend;

/// The connection that the database adapters share: a session of its own, and a pool of sessions for the recordsets
/// that are opened on the text of a connection string. Idle sessions are kept, a few in all, until the connection
/// closes. Such a session is never this connection's. An adapter only opens sessions.
class PooledConnection : public Connection {
public:
    using StatementObserver = shared::StatementObserver;

    PooledConnection(const PooledConnection&) = delete;
    PooledConnection& operator=(const PooledConnection&) = delete;
    ~PooledConnection() override;

    void Open(const std::string& connectionString) final;
    void Close() final;
    [[nodiscard]] ObjectState State() const final;
    /// The text that it was opened on last; it stays when the connection is closed.
    [[nodiscard]] std::string ConnectionString() const final;

    std::shared_ptr<Recordset> Execute(const std::string& commandText) final;
    [[nodiscard]] std::shared_ptr<Recordset> CreateRecordset() final;

    void BeginTrans() final;
    void CommitTrans() final;
    void RollbackTrans() final;

    /// True between BeginTrans and CommitTrans or RollbackTrans.
    [[nodiscard]] bool inTransaction() const;
    /// The number of this connection's own session, from 1. Sessions of its pool count on from there. 0 if it is
    /// closed.
    [[nodiscard]] int sessionNumber() const;

    /// Sees each statement's text as it was handed in, before anything else looks at it, on this connection's session
    /// and on those of its pool. An empty observer ends it.
    void onStatement(StatementObserver observer);

    /// Has a memory answer what it remembers, on this connection's session and on those of its pool; such a statement
    /// is not sent, and no observer sees it. A null pointer ends that.
    void remember(std::shared_ptr<AnswerMemory> memory);

protected:
    /// The observers are those that the pool's opener hands to its sessions.
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
