#pragma once

#include "z7cashflow/ports/Connection.h"

#include <memory>
#include <string>

namespace z7::cashflow {

/// A new, closed connection for the login's connection string, created by the host's factory. Error 91 without a
/// login or a factory.
[[nodiscard]] std::shared_ptr<Connection> createLoginConnection();
/// Opens it with the login's connection string. Error 91 without a login; the database's error if it cannot be reached.
void openWithLogin(Connection& connection);

} // namespace z7::cashflow
