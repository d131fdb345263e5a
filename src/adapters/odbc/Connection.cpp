#include "adapters/odbc/Connection.h"

#include "adapters/odbc/Session.h"
#include "adapters/odbc/TsqlDialect.h"

#include <utility>

namespace z7::cashflow::odbc {
namespace {

std::shared_ptr<shared::SessionPool> makePool(DialectFactory makeDialect, const std::shared_ptr<Observers>& observers) {
    // The environment is created with the first session, so that a connection that is never opened needs no
    // driver manager.
    auto pool = std::make_shared<shared::SessionPool>(
        [observers, makeDialect = std::move(makeDialect),
         environment = std::shared_ptr<Environment>()](const std::string& connectionString, int number) mutable {
            ConnectionOptions options = parseConnectionString(connectionString);
            if (environment == nullptr) {
                environment = std::make_shared<Environment>();
            }
            return std::make_shared<Session>(std::move(options), makeDialect(), number, environment, observers);
        });
    // If one connection is lost, the idle ones are lost as well, and each would report it again.
    observers->sessionLost = [pool = std::weak_ptr(pool)] {
        if (const auto open = pool.lock()) {
            open->dropIdle();
        }
    };
    return pool;
}

} // namespace

Connection::Connection() : Connection([] { return std::make_unique<TsqlDialect>(); }) {}

Connection::Connection(DialectFactory makeDialect)
    : Connection(std::move(makeDialect), std::make_shared<Observers>()) {}

Connection::Connection(DialectFactory makeDialect, const std::shared_ptr<Observers>& observers)
    : PooledConnection(makePool(std::move(makeDialect), observers), observers) {}

} // namespace z7::cashflow::odbc
