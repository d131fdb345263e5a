#pragma once

#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// An entry line of a voucher, with the properties of its account in the chart of accounts.
struct VoucherLine {
    /// Whether an account's lines count for cash-flow rows, and why not.
    enum class Account {
        counts,  ///< an open end-level account
        missing, ///< not in the chart of accounts of the year
        notEnd,  ///< not an end-level account
        closed,
        budget ///< of the budget class, under an accounting system that leaves it out
    };
    std::int32_t number = 0;         ///< inid
    std::string account;             ///< such as "100201"
    std::string accountName;         ///< empty if the chart of accounts of the year does not have it
    std::string summary;             ///< summary of the line; empty if it has none
    std::optional<Date> date;        ///< date of the voucher on this line; empty if it is missing
    std::optional<double> debit;     ///< such as 8800.00; empty if the amount is missing
    std::optional<double> credit;    ///< the same for the credit side
    std::string itemClass;           ///< class of the auxiliary item; "98" is that of cash-flow items
    std::string auxiliaryItem;       ///< code of the auxiliary item; empty if it has none
    bool cash = false;               ///< the account is a cash-flow account
    Account state = Account::counts; ///< whether the line counts

    /// Whether the line is on the debit side for the generation of rows: its debit amount exists and is not 0.
    [[nodiscard]] bool isDebit() const { return debit.value_or(0.0) != 0.0; }
    /// The amount on that side.
    [[nodiscard]] double amount() const { return isDebit() ? *debit : credit.value_or(0.0); }
};

/// A ledger voucher and its lines, as stored in the database.
struct Voucher {
    VoucherKey key;                 ///< its key
    Date date = Date::none();       ///< of the first line that has a date
    std::vector<VoucherLine> lines; ///< by number; empty if the voucher does not exist

    /// The line with a number, or a null pointer.
    [[nodiscard]] const VoucherLine* line(std::int32_t number) const;
};

/// Reads a voucher with one statement. The accounting system, such as "政府会计制度", decides whether budget accounts
/// count.
[[nodiscard]] Voucher readVoucher(Connection& connection, const VoucherKey& key, const std::string& accountingSystem);

/// Locks a voucher until the transaction ends, by setting each of its lines to itself; other sessions that do the
/// same have to wait. A lock hint (updlock) or an application lock would not need the right to update lines, but
/// the open-source server ignores the former and cannot be relied on for the latter, whereas every server locks an
/// updated row. It also keeps the lines from being edited meanwhile. Waits as long as the session waits for locks;
/// isHeldElsewhere is true for the error that follows.
void lockVoucher(Connection& connection, const VoucherKey& key);

/// A stored row of a voucher, whether or not readers find it.
struct StoredRow {
    std::int32_t line = 0;    ///< number of its entry line, inid; 0 if it has none
    std::string account;      ///< such as "6001"
    std::string item;         ///< code of the cash-flow item
    std::string itemName;     ///< empty if the item is unknown
    double debit = 0.0;       ///< such as 8000.00; 0 on the credit side
    double credit = 0.0;      ///< the same for the credit side
    bool itemKnown = true;    ///< the item is in fitemss98
    bool accountKnown = true; ///< the account is in the chart of accounts (code) of the year

    /// Equal if all members are equal.
    friend bool operator==(const StoredRow&, const StoredRow&) = default;
};

/// All rows stored for a voucher, by line.
[[nodiscard]] std::vector<StoredRow> readStoredRows(Connection& connection, const VoucherKey& key);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
