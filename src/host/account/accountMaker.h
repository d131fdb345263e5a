#pragma once

#include "host/account/tableFiles.h"
#include "host/text/Language.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// An option of the account in the general ledger, such as bCashCode = True.
struct AccountOption {
    std::string name;  ///< spelled as the library spells it
    std::string value; ///< "True" or "False"
};

/// Reads texts of the form NAME=VALUE. Names and values (true or false) may be in any letter case. Failure (usage)
/// for an unknown name, a name given twice, or an invalid value.
[[nodiscard]] std::vector<AccountOption> readAccountOptions(const std::vector<std::string>& texts);

/// Fills the tables of a new account from files, then sets options, replacing those of the files, all within the
/// caller's transaction. Failure and Interrupted as for loadTableFiles.
LoadedTables fillAccount(Connection& connection, LoadableTables& tables, const std::vector<TableFile>& files,
                         const std::vector<AccountOption>& options, Language language,
                         const std::function<bool()>& stopRequested);

/// Creates an account's database with records from files, and with options that replace those of the files. It is
/// built in a hidden folder beside its destination and moved there when complete, so that a failure leaves nothing
/// behind. Failure (usage) if a file of that name exists or an input file is refused, (database) if the disk fails;
/// Interrupted once stopRequested returns true.
LoadedTables makeAccount(const std::filesystem::path& path, const std::vector<TableFile>& files,
                         const std::vector<AccountOption>& options, Language language,
                         const std::function<bool()>& stopRequested);

} // namespace z7::cashflow::host
