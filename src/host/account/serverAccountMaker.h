#pragma once

#include "host/account/accountMaker.h"
#include "z7cashflow/ports/Connection.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// An account created on a server.
struct ServerAccount {
    std::string database; ///< the database that contains it
    LoadedTables loaded;
};

/// Creates an account on a server that speaks Transact-SQL, in the database that the connection string or its data
/// source names: tables and views, records from files, and options that replace those of the files. The named
/// database and the suite's system database are created if they do not exist; everything else happens in one
/// transaction, so that a failure leaves the server unchanged.
///
/// newConnection returns closed connections. Failure (usage) if the database already contains tables of an account,
/// is one of the server's own, or has a case-sensitive collation, or if a file is refused; Failure (database) with
/// the server's text if the server cannot be reached or refuses; Interrupted once stopRequested returns true.
ServerAccount makeServerAccount(const std::string& connectionString,
                                const std::function<std::shared_ptr<Connection>()>& newConnection,
                                const std::vector<TableFile>& files, const std::vector<AccountOption>& options,
                                Language language, const std::function<bool()>& stopRequested);

} // namespace z7::cashflow::host
