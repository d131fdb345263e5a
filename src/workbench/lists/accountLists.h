#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The lists of an account that vouchers and rows refer to. Each function lets errors of the database pass through.
namespace z7::cashflow::workbench {

/// A cash-flow item.
struct ListedItem {
    std::string code;
    std::string name;
};

/// All cash-flow items, by code.
[[nodiscard]] std::vector<ListedItem> listItems(Connection& connection);

/// An account of the chart of accounts.
struct ListedAccount {
    std::string code;
    std::string name;
    bool cash = false; ///< is a cash-flow account
    bool end = false;  ///< is an end-level account, which vouchers may use
    bool closed = false;
    std::string type; ///< the user-defined account class; empty if it has none
};

/// The chart of accounts of a year, by code.
[[nodiscard]] std::vector<ListedAccount> listAccounts(Connection& connection, std::int16_t year);

/// A template: lines of an account on one side normally belong to this item.
struct ListedTemplate {
    std::string account;
    std::string accountName; ///< empty if the chart of accounts does not have the account
    bool debit = false;      ///< the side
    std::string item;
    std::string itemName; ///< empty if the list of items does not have the item
    std::optional<Date> start;
    std::optional<Date> end;
};

/// The templates of a year by account, debit before credit, the oldest first.
[[nodiscard]] std::vector<ListedTemplate> listTemplates(Connection& connection, std::int16_t year);

} // namespace z7::cashflow::workbench
