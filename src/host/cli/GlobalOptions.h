#pragma once

#include "adapters/odbc/Connection.h"
#include "host/cli/localTime.h"
#include "host/text/Language.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace z7::cashflow::host {

/// Makes a closed connection.
using ConnectionMaker = std::function<std::unique_ptr<Connection>()>;

/// Tells the time of the desk.
using Clock = std::function<Date()>;

/// What every command takes.
struct GlobalOptions {
    Language language = Language::english;
    bool quiet = false;                ///< no notices, no progress
    bool json = false;                 ///< output for machines
    std::string connect;               ///< the connection string in place of a file; empty for none
    bool connectGiven = false;         ///< it stands on the command line and not in the environment
    std::string account = "001";       ///< identifier of the account, by which the accounting periods are kept
    bool accountGiven = false;         ///< the settings name it; else the only one that has periods goes before it
    std::string user = "demo";         ///< identifier of the user, by which drafts are kept
    std::string operatorName = "demo"; ///< name of the operator, by which voucher options are kept
    bool guard = true;                 ///< values that could change the statement that they go into are refused
    std::string accountingSystem; ///< name of the account's accounting system, such as "政府会计制度"; empty for none
    /// The time that the log of changes notes; tests put another in its place.
    Clock clock = localTime;
    std::map<std::string, std::string>
        statementGroups; ///< names of a statement's groups, by the beginning of item codes
    /// Makes the connections to databases other than the embedded one; tests put another in its place.
    ConnectionMaker serverConnection = [] { return std::make_unique<odbc::Connection>(); };
};

} // namespace z7::cashflow::host
