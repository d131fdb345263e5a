#include "z7cashflow/dialog/loginConnection.h"

#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/Error.h"

namespace z7::cashflow {

std::shared_ptr<Connection> createLoginConnection() {
    const auto& factory = modPublic::context().connectionFactory;
    if (!factory) {
        raisePlatformError(Reason::connectionFactoryMissing);
    }
    return factory->create(modPublic::requiredLogin().ConnectionString());
}

void openWithLogin(Connection& connection) { connection.Open(modPublic::requiredLogin().ConnectionString()); }

} // namespace z7::cashflow
