#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

/// \file
/// The lists of an account that vouchers and rows refer to. Each function lets errors of the database pass through.
namespace z7::cashflow::workbench {

/// A cash-flow item.
struct ListedItem {
    std::string code; ///< such as "0101"
    std::string name; ///< empty if it has none
};

/// All cash-flow items, by code.
[[nodiscard]] std::vector<ListedItem> listItems(Connection& connection);

/// An account of the chart of accounts.
struct ListedAccount {
    std::string code;    ///< such as "100201"
    std::string name;    ///< empty if it has none
    bool cash = false;   ///< is a cash-flow account
    bool end = false;    ///< is an end-level account, which vouchers may use
    bool closed = false; ///< is closed, so that its lines do not count
    std::string type;    ///< the user-defined account class; empty if it has none
};

/// The chart of accounts of a year, by code.
[[nodiscard]] std::vector<ListedAccount> listAccounts(Connection& connection, std::int16_t year);

/// A template: lines of an account on one side normally belong to this item.
struct ListedTemplate {
    std::string account;       ///< account of the lines
    std::string accountName;   ///< empty if the chart of accounts does not have the account
    bool debit = false;        ///< the side
    std::string item;          ///< code of the cash-flow item
    std::string itemName;      ///< empty if the list of items does not have the item
    std::optional<Date> start; ///< first day on which it applies; empty for no limit
    std::optional<Date> end;   ///< last day on which it applies; empty for no limit
};

/// The templates of a year by account, debit before credit, the oldest first.
[[nodiscard]] std::vector<ListedTemplate> listTemplates(Connection& connection, std::int16_t year);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
