#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The lists of an account that vouchers and rows refer to. Errors of the database come out of each.
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
    bool cash = false; ///< a cash-flow account
    bool end = false;  ///< an end-level account, which vouchers may use
    bool closed = false;
    std::string type; ///< the user's class of accounts; empty if it has none
};

/// The chart of accounts of a year, by code.
[[nodiscard]] std::vector<ListedAccount> listAccounts(Connection& connection, std::int16_t year);

/// A template: the lines of an account on one side normally belong to an item.
struct ListedTemplate {
    std::string account;
    std::string accountName; ///< empty if the chart of accounts lacks the account
    bool debit = false;      ///< the side
    std::string item;
    std::string itemName; ///< empty if the item is not known
    std::optional<Date> start;
    std::optional<Date> end;
};

/// The templates of a year, by account, debit before credit, the older first.
[[nodiscard]] std::vector<ListedTemplate> listTemplates(Connection& connection, std::int16_t year);

} // namespace z7::cashflow::workbench
