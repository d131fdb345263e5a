#include "adapters/sqlite/Connection.h"

#include "adapters/sqlite/Session.h"

#include <utility>

namespace z7::cashflow::sqlite {
namespace {

std::shared_ptr<shared::SessionPool> makePool(const std::shared_ptr<const Observers>& observers) {
    return std::make_shared<shared::SessionPool>([observers](const std::string& connectionString, int number) {
        return std::make_shared<Session>(parseConnectionString(connectionString), number, observers);
    });
}

} // namespace

Connection::Connection() : Connection(std::make_shared<Observers>()) {}

Connection::Connection(const std::shared_ptr<Observers>& observers)
    : PooledConnection(makePool(observers), observers), observers_(observers) {}

void Connection::onRewrittenStatement(StatementObserver observer) { observers_->rewritten = std::move(observer); }

Session& Connection::session() { return static_cast<Session&>(*PooledConnection::session()); } // as opened by its pool

} // namespace z7::cashflow::sqlite
