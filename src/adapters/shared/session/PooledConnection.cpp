#include "adapters/shared/session/PooledConnection.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/shared/recordset/ClientRecordset.h"
#include "adapters/shared/session/AnswerMemory.h"
#include "z7cashflow/support/Error.h"

#include <functional>
#include <utility>

namespace z7::cashflow::shared {

namespace {

/// Runs statements through an answer memory, on a session that is determined when it is needed.
class RememberingRunner final : public Runner {
public:
    using Finder = std::function<std::shared_ptr<Runner>()>;

    RememberingRunner(std::shared_ptr<AnswerMemory> memory, std::string place, Finder find)
        : memory_(std::move(memory)), place_(std::move(place)), find_(std::move(find)) {}

    Result run(const std::string& statement, bool updatable) override {
        return memory_->answer(place_, statement, updatable, [&] {
            session_ = find_();
            return session_->run(statement, updatable);
        });
    }

private:
    std::shared_ptr<AnswerMemory> memory_;
    std::string place_;
    Finder find_;
    std::shared_ptr<Runner> session_; ///< kept as long as records may be written
};

} // namespace

/// Finds sessions for the statements and recordsets of one connection.
class PoolBackend final : public Backend {
public:
    explicit PoolBackend(std::shared_ptr<SessionPool> pool) : pool_(std::move(pool)) {}

    std::shared_ptr<Runner> runner(Connection& connection) override {
        auto* const pooled = dynamic_cast<PooledConnection*>(&connection);
        if (pooled == nullptr) {
            raisePlatformError(DatabaseReason::connectionForeign);
        }
        return pooled->backend_->remembering(pooled->connectionString_,
                                             [session = pooled->session()] { return session; });
    }
    std::shared_ptr<Runner> runner(const std::string& connectionString) override {
        return remembering(connectionString, [pool = pool_, connectionString] { return pool->take(connectionString); });
    }

    void remember(std::shared_ptr<AnswerMemory> memory) { memory_ = std::move(memory); }

private:
    std::shared_ptr<Runner> remembering(const std::string& place, RememberingRunner::Finder find) const {
        return memory_ == nullptr ? find() : std::make_shared<RememberingRunner>(memory_, place, std::move(find));
    }

    std::shared_ptr<SessionPool> pool_;
    std::shared_ptr<AnswerMemory> memory_;
};

PooledConnection::PooledConnection(std::shared_ptr<SessionPool> pool, std::shared_ptr<Observers> observers)
    : pool_(std::move(pool)), backend_(std::make_shared<PoolBackend>(pool_)), observers_(std::move(observers)) {}

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

ObjectState PooledConnection::State() const { return session_ == nullptr ? ObjectState::closed : ObjectState::open; }

std::string PooledConnection::ConnectionString() const { return connectionString_; }

std::shared_ptr<Recordset> PooledConnection::Execute(const std::string& commandText) {
    Result result = backend_->runner(*this)->run(commandText, false);
    auto recordset = std::make_shared<ClientRecordset>(backend_);
    recordset->present(std::move(result), commandText, ActiveConnection(static_cast<Connection*>(this)));
    return recordset;
}

std::shared_ptr<Recordset> PooledConnection::createRecordset() { return std::make_shared<ClientRecordset>(backend_); }

void PooledConnection::BeginTrans() { session()->begin(); }
void PooledConnection::CommitTrans() { session()->commit(); }
void PooledConnection::RollbackTrans() { session()->rollback(); }

bool PooledConnection::inTransaction() const { return session_ != nullptr && session_->inTransaction(); }

int PooledConnection::sessionNumber() const { return session_ == nullptr ? 0 : session_->number(); }

void PooledConnection::onStatement(StatementObserver observer) { observers_->statement = std::move(observer); }

void PooledConnection::remember(std::shared_ptr<AnswerMemory> memory) { backend_->remember(std::move(memory)); }

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
