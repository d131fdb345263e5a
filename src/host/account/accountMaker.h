#pragma once

#include "host/account/tableFiles.h"
#include "host/text/Language.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// An account option of the ledger, such as bCashCode = True.
struct AccountOption {
    std::string name;  ///< as the library spells it
    std::string value; ///< "True" or "False"
};

/// Reads texts of the form NAME=VALUE. Names are taken in any letter case, values are true or false in any letter case.
/// Failure (usage) for an unknown name, a name given twice or an unfit value.
[[nodiscard]] std::vector<AccountOption> readAccountOptions(const std::vector<std::string>& texts);

/// Fills the tables of a new account from files and sets options in the place of those that the files hold, in the
/// caller's transaction. Failure and Interrupted as for loadTableFiles.
LoadedTables fillAccount(Connection& connection, LoadableTables& tables, const std::vector<TableFile>& files,
                         const std::vector<AccountOption>& options, Language language,
                         const std::function<bool()>& stopRequested);

/// Makes the database of an account with records from files and with options in the place of those that the files hold.
/// It is built in a folder beside its place and moved there when it is whole, so that a failure leaves nothing behind.
/// Failure if something of that name exists, if a file cannot be taken (usage), or if the disk refuses (database);
/// Interrupted once stopRequested answers true.
LoadedTables makeAccount(const std::filesystem::path& path, const std::vector<TableFile>& files,
                         const std::vector<AccountOption>& options, Language language,
                         const std::function<bool()>& stopRequested);

} // namespace z7::cashflow::host
