#pragma once

#include "host/account/accountMaker.h"
#include "z7cashflow/ports/Connection.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// An account that was made on a server.
struct ServerAccount {
    std::string database; ///< the database that holds it
    LoadedTables loaded;
};

/// Makes an account on a server that speaks Transact-SQL, in the database that the connection string or its data source
/// names: tables and views, with records from files and with options in the place of those that the files hold. A named
/// database that is not there is made, and so is the suite's system database; all else happens in one transaction, so
/// that a failure leaves the server as it was.
///
/// newConnection gives closed connections. Failure (usage) if the database holds tables of an account already, is one
/// of the server's own, or tells upper from lower case, or if a file cannot be taken; Failure (database) with the
/// server's text if the server cannot be reached or refuses; Interrupted once stopRequested answers true.
ServerAccount makeServerAccount(const std::string& connectionString,
                                const std::function<std::shared_ptr<Connection>()>& newConnection,
                                const std::vector<TableFile>& files, const std::vector<AccountOption>& options,
                                Language language, const std::function<bool()>& stopRequested);

} // namespace z7::cashflow::host
