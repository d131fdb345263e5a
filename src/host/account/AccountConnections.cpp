#include "host/account/AccountConnections.h"

#include "adapters/odbc/ConnectionOptions.h"
#include "host/account/AccountPlace.h"

namespace z7::cashflow::host {

std::unique_ptr<Connection> AccountConnections::create(const std::string& connectionString) {
    const AccountPlace place = AccountPlace::ofConnectionString(connectionString, serverConnection_);
    if (!place.file()) { // file() has already parsed the string of an embedded database
        static_cast<void>(odbc::parseConnectionString(connectionString));
    }
    return place.makeConnection();
}

} // namespace z7::cashflow::host
