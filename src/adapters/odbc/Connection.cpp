#include "adapters/odbc/Connection.h"

#include "adapters/odbc/Session.h"

#include <utility>

namespace z7::cashflow::odbc {
namespace {

std::shared_ptr<shared::SessionPool> makePool(const std::shared_ptr<Observers>& observers) {
    // The environment is made with the first session, so that a connection that is never opened needs no driver manager.
    auto pool = std::make_shared<shared::SessionPool>([observers, environment = std::shared_ptr<Environment>()](
                                                          const std::string& connectionString, int number) mutable {
        ConnectionOptions options = parseConnectionString(connectionString);
        if (environment == nullptr) {
            environment = std::make_shared<Environment>();
        }
        return std::make_shared<Session>(std::move(options), number, environment, observers);
    });
    // Where one line is cut the idle ones are cut as well, and would each report it anew.
    observers->sessionLost = [pool = std::weak_ptr(pool)] {
        if (const auto open = pool.lock()) {
            open->dropIdle();
        }
    };
    return pool;
}

} // namespace

Connection::Connection() : Connection(std::make_shared<Observers>()) {}

Connection::Connection(const std::shared_ptr<Observers>& observers)
    : PooledConnection(makePool(observers), observers) {}

} // namespace z7::cashflow::odbc
