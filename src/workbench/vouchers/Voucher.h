#pragma once

#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::workbench {

/// An entry line of a voucher, with what the chart of accounts says of its account.
struct VoucherLine {
    enum class Account {
        counts,  ///< an open end-level account
        missing, ///< not in the chart of accounts of the year
        notEnd,  ///< not an end-level account
        closed,
        budget ///< of the budget class, under an accounting system that leaves this class out
    };
    std::int32_t number = 0; ///< inid
    std::string account;     ///< such as "100201"
    std::string accountName; ///< empty if the chart of accounts of the year lacks the account
    std::string summary;
    std::optional<Date> date;
    std::optional<double> debit;  ///< such as 8800.00; nothing if the amount is missing
    std::optional<double> credit; ///< the same for the credit side
    std::string itemClass;        ///< class of the auxiliary item; "98" is that of cash-flow items
    std::string auxiliaryItem;
    bool cash = false; ///< the account is a cash-flow account
    Account state = Account::counts;

    /// Whether the line is on the debit side, as rows are generated: its debit amount is there and not 0.
    [[nodiscard]] bool isDebit() const { return debit.value_or(0.0) != 0.0; }
    /// The amount on that side.
    [[nodiscard]] double amount() const { return isDebit() ? *debit : credit.value_or(0.0); }
};

/// A ledger voucher with its lines, as they stand in the database.
struct Voucher {
    VoucherKey key;
    Date date = Date::none();       ///< of the first line that has one
    std::vector<VoucherLine> lines; ///< in the order of their numbers; empty if the voucher is not there

    /// The line of a number, or a null pointer.
    [[nodiscard]] const VoucherLine* line(std::int32_t number) const;
};

/// Reads a voucher in one statement. The accounting system, such as "政府会计制度", decides whether budget accounts count.
[[nodiscard]] Voucher readVoucher(Connection& connection, const VoucherKey& key, const std::string& accountingSystem);

/// Keeps other desks that do the same away from a voucher until the transaction ends: each of its lines is set to
/// itself. A lock by hint (updlock) or an application lock would need no right to change lines, but the open-source
/// server ignores the one and cannot be relied on for the other, while a changed row is locked by every server. It also
/// keeps lines from being edited meanwhile. It waits as long as the session waits for locks; then the error is one for
/// which isHeldElsewhere is true.
void lockVoucher(Connection& connection, const VoucherKey& key);

/// A stored row of a voucher, whether or not a reader finds it.
struct StoredRow {
    std::int32_t line = 0;
    std::string account;
    std::string item;
    std::string itemName; ///< empty if the item is not known
    double debit = 0.0;
    double credit = 0.0;
    bool itemKnown = true;    ///< fitemss98 has the item
    bool accountKnown = true; ///< code has the account in the year

    friend bool operator==(const StoredRow&, const StoredRow&) = default;
};

/// All rows that are stored under a voucher's key, by line.
[[nodiscard]] std::vector<StoredRow> readStoredRows(Connection& connection, const VoucherKey& key);

} // namespace z7::cashflow::workbench
