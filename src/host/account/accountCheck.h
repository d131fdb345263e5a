#pragma once

#include "host/account/AccountPlace.h"
#include "host/cli/GlobalOptions.h"
#include "host/text/HostText.h"
#include "z7cashflow/ports/Connection.h"

#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// Something in an account that does not hold.
struct AccountFinding {
    const char* kind;                   ///< the word for it in JSON, such as "line-account"
    HostText text;                      ///< the sentence for people
    std::vector<std::string> arguments; ///< what fills its places
};

/// What a check of a whole account found.
struct CheckedAccount {
    std::vector<AccountFinding> findings; ///< empty if the account holds
    std::optional<HostText> remark;       ///< what could not be checked, and why that need not be a fault
};

/// What does not hold in an account: items of templates, drafts, entry lines and rows that the list of items lacks;
/// accounts of entry lines that the chart of accounts of their year lacks; dates of vouchers that no period of their
/// year covers; an account identifier without periods; vouchers whose debit is not their credit. At most 20 findings of
/// a kind, and a last one that counts the others. Reads only. A table that is not there is a finding, in the language;
/// every other Error of the database goes to the caller.
[[nodiscard]] std::vector<AccountFinding> checkAccount(Connection& connection, const std::string& account,
                                                       Language language);

/// The same for the account of the options, which is not open yet and is opened for it. For an account in a file the
/// files are read through first; where they are damaged, nothing else is looked at. For one on a server the version of
/// its schema is compared; the remark says if it has none that can be read. Failure (database) if the account cannot be
/// opened.
[[nodiscard]] CheckedAccount checkAccount(const AccountPlace& place, const GlobalOptions& options);

/// The only account identifier of which there are periods; nothing if there are several or none.
[[nodiscard]] std::optional<std::string> onlyAccount(Connection& connection);

} // namespace z7::cashflow::host
