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

/// Creates a closed connection.
using ConnectionMaker = std::function<std::unique_ptr<Connection>()>;

/// Returns the local time.
using Clock = std::function<Date()>;

/// Options that every command takes.
struct GlobalOptions {
    Language language = Language::english;
    bool quiet = false;                ///< no remarks, no progress bar
    bool json = false;                 ///< output as JSON
    std::string connect;               ///< connection string in place of a file; empty for none
    bool connectGiven = false;         ///< connect was given on the command line, not by the environment
    std::string account = "001";       ///< identifier of the account whose accounting periods apply
    bool accountGiven = false;         ///< the settings name it; otherwise the only account with periods is used
    std::string user = "demo";         ///< identifier of the user, who owns drafts
    std::string operatorName = "demo"; ///< name of the operator, who owns voucher options
    bool guard = true;                 ///< refuse values that could change the statement they are inserted into
    std::string accountingSystem; ///< name of the account's accounting system, such as "政府会计制度"; empty for none
    /// The clock for the log of changes; tests replace it.
    Clock clock = localTime;
    /// Names of groups in the cash-flow statement, by the first digits of their item codes.
    std::map<std::string, std::string> statementGroups;
    /// Creates connections to databases other than the embedded one; tests replace it.
    ConnectionMaker serverConnection = [] { return std::make_unique<odbc::Connection>(); };
};

} // namespace z7::cashflow::host
