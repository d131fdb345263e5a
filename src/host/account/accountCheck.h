#pragma once

#include "host/account/AccountPlace.h"
#include "host/cli/GlobalOptions.h"
#include "host/text/HostText.h"
#include "z7cashflow/ports/Connection.h"

#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// An inconsistency in an account.
struct AccountFinding {
    const char* kind;                   ///< the word for its kind in JSON, such as "line-account"
    HostText text;                      ///< the sentence for people
    std::vector<std::string> arguments; ///< the arguments of that sentence
};

/// The result of checking a whole account.
struct CheckedAccount {
    std::vector<AccountFinding> findings; ///< empty if the account is consistent
    std::optional<HostText> remark;       ///< what could not be checked, and why this need not be a fault
};

/// The inconsistencies of an account: items of templates, drafts, entry lines and rows that the list of items does
/// not have; accounts of entry lines that the chart of accounts of their year does not have; dates of vouchers
/// outside the accounting periods of their year; an account identifier without accounting periods; vouchers whose
/// debit and credit differ. At most 20 findings of each kind, and one more that counts the rest. Reads only. A
/// missing table is a finding, in the given language; any other Error of the database passes through.
[[nodiscard]] std::vector<AccountFinding> checkAccount(Connection& connection, const std::string& account,
                                                       Language language);

/// The same for the account of the options, which is opened for the check. The files of an embedded account are
/// read through first; if they are damaged, nothing else is checked. On a server the version of the schema is
/// compared; the remark says if no version can be read. Failure (database) if the account cannot be opened.
[[nodiscard]] CheckedAccount checkAccount(const AccountPlace& place, const GlobalOptions& options);

/// The version that a server's account says of its schema; empty if it says none or the login may not read it.
[[nodiscard]] std::optional<std::int32_t> serverSchemaVersion(Connection& connection);

/// The only account identifier that has accounting periods; empty if there are several or none.
[[nodiscard]] std::optional<std::string> onlyAccount(Connection& connection);

} // namespace z7::cashflow::host
