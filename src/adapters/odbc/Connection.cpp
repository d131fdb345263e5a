#include "adapters/odbc/Connection.h"

#include "adapters/cursor/ClientRecordset.h"
#include "adapters/odbc/SessionPool.h"
#include "z7cashflow/support/Error.h"

#include <utility>

namespace z7::cashflow::odbc {
namespace {

class SessionRunner final : public cursor::Runner {
public:
    explicit SessionRunner(std::shared_ptr<Session> session) : session_(std::move(session)) {}
    cursor::Result run(const std::string& statement, bool updatable) override {
        return session_->run(statement, updatable);
    }

private:
    std::shared_ptr<Session> session_;
};

} // namespace

/// Finds sessions for the recordsets of one connection.
class RecordsetBackend final : public cursor::Backend {
public:
    explicit RecordsetBackend(std::shared_ptr<SessionPool> pool) : pool_(std::move(pool)) {}

    std::shared_ptr<cursor::Runner> runner(cashflow::Connection& connection) override {
        auto* own = dynamic_cast<Connection*>(&connection);
        if (own == nullptr) {
            raisePlatformError(errors::badFilter, "the connection belongs to another kind of database");
        }
        return std::make_shared<SessionRunner>(own->session());
    }
    std::shared_ptr<cursor::Runner> runner(const std::string& connectionString) override {
        return std::make_shared<SessionRunner>(pool_->take(connectionString));
    }

private:
    std::shared_ptr<SessionPool> pool_;
};

Connection::Connection() : pool_(std::make_shared<SessionPool>()) {}

Connection::~Connection() {
    if (session_ != nullptr) {
        session_->close();
    }
    pool_->close();
}

void Connection::Open(const std::string& connectionString) {
    if (session_ != nullptr) {
        raisePlatformError(errors::objectOpen);
    }
    session_ = pool_->open(connectionString);
    connectionString_ = connectionString;
    pool_->reopen();
}

void Connection::Close() {
    if (session_ == nullptr) {
        raisePlatformError(errors::objectClosed);
    }
    session_->close();
    session_.reset();
    connectionString_.clear();
    pool_->close();
}

ObjectState Connection::State() const { return session_ == nullptr ? ObjectState::Closed : ObjectState::Open; }

std::string Connection::ConnectionString() const { return connectionString_; }

std::shared_ptr<Recordset> Connection::Execute(const std::string& commandText) {
    cursor::Result result = session()->run(commandText, false);
    auto recordset = std::make_shared<cursor::ClientRecordset>(std::make_shared<RecordsetBackend>(pool_));
    recordset->present(std::move(result), commandText,
                       cashflow::ActiveConnection(static_cast<cashflow::Connection*>(this)));
    return recordset;
}

std::shared_ptr<Recordset> Connection::CreateRecordset() {
    return std::make_shared<cursor::ClientRecordset>(std::make_shared<RecordsetBackend>(pool_));
}

void Connection::BeginTrans() { session()->begin(); }
void Connection::CommitTrans() { session()->commit(); }
void Connection::RollbackTrans() { session()->rollback(); }

bool Connection::InTransaction() const { return session_ != nullptr && session_->inTransaction(); }

int Connection::SessionNumber() const { return session_ == nullptr ? 0 : session_->number(); }

void Connection::OnStatement(StatementObserver observer) { pool_->observers().statement = std::move(observer); }

const std::shared_ptr<Session>& Connection::session() {
    if (session_ == nullptr) {
        raisePlatformError(errors::objectClosed);
    }
    if (session_->isLost() && !session_->inTransaction()) {
        session_ = pool_->open(connectionString_);
    }
    return session_;
}

} // namespace z7::cashflow::odbc
