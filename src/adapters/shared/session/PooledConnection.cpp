#include "adapters/shared/session/PooledConnection.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/shared/recordset/ClientRecordset.h"
#include "z7cashflow/support/Error.h"

#include <utility>

namespace z7::cashflow::shared {

/// Finds sessions for the recordsets of one connection.
class PoolBackend final : public Backend {
public:
    explicit PoolBackend(std::shared_ptr<SessionPool> pool) : pool_(std::move(pool)) {}

    std::shared_ptr<Runner> runner(Connection& connection) override {
        auto* const pooled = dynamic_cast<PooledConnection*>(&connection);
        if (pooled == nullptr) {
            raisePlatformError(DatabaseReason::connectionForeign);
        }
        return pooled->session();
    }
    std::shared_ptr<Runner> runner(const std::string& connectionString) override {
        return pool_->take(connectionString);
    }

private:
    std::shared_ptr<SessionPool> pool_;
};

PooledConnection::PooledConnection(std::shared_ptr<SessionPool> pool, std::shared_ptr<Observers> observers)
    : pool_(std::move(pool)), observers_(std::move(observers)) {}

PooledConnection::~PooledConnection() {
    if (session_ != nullptr) {
        session_->close();
    }
    pool_->close();
}

void PooledConnection::Open(const std::string& connectionString) {
    if (session_ != nullptr) {
        raisePlatformError(DatabaseReason::objectOpen);
    }
    session_ = pool_->open(connectionString);
    connectionString_ = connectionString;
    pool_->reopen();
}

void PooledConnection::Close() {
    if (session_ == nullptr) {
        raisePlatformError(DatabaseReason::objectClosed);
    }
    session_->close();
    session_.reset();
    pool_->close();
}

ObjectState PooledConnection::State() const { return session_ == nullptr ? ObjectState::Closed : ObjectState::Open; }

std::string PooledConnection::ConnectionString() const { return connectionString_; }

std::shared_ptr<Recordset> PooledConnection::Execute(const std::string& commandText) {
    Result result = session()->run(commandText, false);
    auto recordset = std::make_shared<ClientRecordset>(std::make_shared<PoolBackend>(pool_));
    recordset->present(std::move(result), commandText, ActiveConnection(static_cast<Connection*>(this)));
    return recordset;
}

std::shared_ptr<Recordset> PooledConnection::CreateRecordset() {
    return std::make_shared<ClientRecordset>(std::make_shared<PoolBackend>(pool_));
}

void PooledConnection::BeginTrans() { session()->begin(); }
void PooledConnection::CommitTrans() { session()->commit(); }
void PooledConnection::RollbackTrans() { session()->rollback(); }

bool PooledConnection::inTransaction() const { return session_ != nullptr && session_->inTransaction(); }

int PooledConnection::sessionNumber() const { return session_ == nullptr ? 0 : session_->number(); }

void PooledConnection::onStatement(StatementObserver observer) { observers_->statement = std::move(observer); }

const std::shared_ptr<Session>& PooledConnection::session() {
    if (session_ == nullptr) {
        raisePlatformError(DatabaseReason::objectClosed);
    }
    if (session_->isLost() && !session_->inTransaction()) {
        session_ = pool_->open(connectionString_);
    }
    return session_;
}

} // namespace z7::cashflow::shared
