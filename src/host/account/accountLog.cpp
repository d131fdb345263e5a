#include "host/account/accountLog.h"

#include "adapters/odbc/accountSchema.h"
#include "adapters/sqlite/logTables.h"
#include "host/account/accountCheck.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/Transaction.h"

#include <string>

namespace z7::cashflow::host {

bool startLog(Connection& connection) {
    if (workbench::hasLog(connection)) {
        return false;
    }
    auto* const embedded = dynamic_cast<sqlite::Connection*>(&connection); // a file of another version does not open
    if (embedded == nullptr) {
        const auto version = serverSchemaVersion(connection);
        if (version && *version != odbc::accountSchemaVersion) {
            throw Failure(exit_code::refused, HostText::verifyVersion,
                          {std::to_string(*version), std::to_string(odbc::accountSchemaVersion)});
        }
    }
    workbench::Transaction transaction(connection);
    if (embedded != nullptr) {
        sqlite::addLogTables(*embedded);
    } else {
        odbc::addLogTables(connection);
    }
    transaction.end(true);
    return true;
}

} // namespace z7::cashflow::host
