#pragma once

#include "workbench/Amount.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The width of the statement's columns.
enum class Span { year, quarter, month };

/// What a statement is to cover.
struct StatementRequest {
    std::int16_t year = 0;        ///< accounting year
    std::uint8_t firstPeriod = 1; ///< first accounting period
    std::uint8_t lastPeriod = 0;  ///< 0: up to the last period of the year with lines or rows, at least 12
    Span span = Span::year;       ///< width of the columns
    bool byCurrency = false;      ///< whether the lines also have the amounts of each currency
    /// Balances of cash accounts before the ledger's first voucher, by account code.
    std::map<std::string, Amount> openings;
    /// Names of groups by the first digits of their items' codes, such as "01". An item belongs to the longest
    /// group code with which its own code begins, otherwise to the group of its first two characters.
    std::map<std::string, std::string> groups;
};

/// Cash received and paid. Payments are positive amounts.
struct Flow {
    Amount receipts; ///< cash received
    Amount payments; ///< cash paid
    /// What remains: receipts less payments.
    [[nodiscard]] Amount net() const { return receipts - payments; }
    /// Adds receipts to receipts and payments to payments. Error 6 if a sum is too large.
    Flow& operator+=(const Flow& other);
};

/// Receipts and payments in one currency, in its own amounts; the empty name stands for the ledger's currency.
struct CurrencyFlow {
    std::string currency; ///< such as "美元"; empty for the ledger's currency
    Flow flow;            ///< in that currency
};

/// A line of the statement: a cash-flow item or a group of items.
struct StatementLine {
    std::string code;                     ///< code of the item or of the group; empty for the total
    std::string name;                     ///< empty if no item has the code
    std::string group;                    ///< group code of the item; empty for a group and for the total
    Flow total;                           ///< of all columns
    std::vector<Flow> columns;            ///< one for each column of the statement
    std::vector<CurrencyFlow> currencies; ///< by name; only if requested
};

/// The movement of one cash account in the statement's periods: receipts are its debits, payments its credits.
struct CashAccount {
    std::string code; ///< such as "1001"; empty for all cash accounts together
    std::string name; ///< empty for all cash accounts together
    Amount opening;   ///< balance before the first period
    Flow flow;        ///< in the periods of the statement
    /// Balance after the last period.
    [[nodiscard]] Amount closing() const { return opening + flow.net(); }
};

/// Why the rows of a voucher do not cover its cash.
enum class Gap {
    unallocated,    ///< the voucher moves cash, but no row is stored
    hiddenRows,     ///< rows are stored, but readers do not find them: their item or account does not exist
    voucherMissing, ///< rows are stored for a voucher that is not in the ledger
    sumsDiffer,     ///< the sums differ
};

/// A voucher whose rows do not cover its cash.
struct VoucherGap {
    std::uint8_t period = 0;   ///< of the voucher
    std::int16_t kind = 0;     ///< of the voucher
    std::int32_t number = 0;   ///< of the voucher
    Amount cash;               ///< debit less credit of its lines on cash accounts
    Amount rows;               ///< the effect of its rows on cash
    std::int32_t stored = 0;   ///< number of stored rows, whether or not readers find them
    Gap gap = Gap::sumsDiffer; ///< why
    /// The cash that the rows do not cover.
    [[nodiscard]] Amount difference() const { return cash - rows; }
};

/// The contribution of one voucher to a figure.
struct VoucherFlow {
    std::string code;        ///< code of the item or of the cash account
    std::uint8_t period = 0; ///< of the voucher
    std::int16_t kind = 0;   ///< of the voucher
    std::int32_t number = 0; ///< of the voucher
    Flow flow;               ///< what the voucher contributes
};

/// A column: the periods from first to last.
struct StatementColumn {
    std::uint8_t first = 0; ///< first period
    std::uint8_t last = 0;  ///< last period, included
};

/// The cash-flow statement of one year or some of its periods, and its proof against the cash accounts.
struct CashFlowStatement {
    std::int16_t year = 0;                ///< accounting year
    std::uint8_t firstPeriod = 0;         ///< first period
    std::uint8_t lastPeriod = 0;          ///< last period, included
    std::vector<StatementColumn> columns; ///< in the order of their periods
    std::vector<StatementLine> groups;    ///< sorted by code
    std::vector<StatementLine> items;     ///< sorted by code; only items with rows
    StatementLine total;                  ///< all items together
    std::vector<CashAccount> accounts;    ///< sorted by code; only accounts with movements or a balance
    CashAccount cash;                     ///< all cash accounts together
    std::vector<Flow> cashColumns;        ///< movement of all cash accounts in each column
    std::vector<VoucherGap> gaps;         ///< the vouchers that make up the difference, sorted by key

    /// Movement of the cash accounts less the net of the statement.
    [[nodiscard]] Amount difference() const { return cash.flow.net() - total.total.net(); }
    /// Whether every voucher's cash is covered by its rows.
    [[nodiscard]] bool proven() const { return gaps.empty() && difference().isZero(); }
};

/// Draws up the statement from the stored rows that readers find. The effect of a row on cash is its debit less its
/// credit if it is on a cash account, otherwise the opposite, as in the comparison of a voucher's rows with its
/// cash. Cash accounts are those whose lines count as a voucher's cash: flagged as cash, end-level and open in the
/// year. The opening balance is that of the ledger before the first period, plus that of the request.
///
/// Reads only. Each part of the statement is one grouped query, so memory depends on items, accounts and gaps, not
/// on vouchers. Error 5 if the first period is after the last or an opening balance names an account that is not a
/// cash account; error 6 if a sum is too large; errors of the database pass through.
[[nodiscard]] CashFlowStatement drawUpStatement(Connection& connection, const StatementRequest& request);

/// The vouchers in some periods of a year whose rows do not cover their cash, sorted by key. Errors as for
/// drawUpStatement.
[[nodiscard]] std::vector<VoucherGap> findGaps(Connection& connection, std::int16_t year, std::uint8_t first,
                                               std::uint8_t last);

/// The first account among the request's opening balances whose lines do not count as cash in the year; empty if
/// there is none. Errors of the database pass through.
[[nodiscard]] std::string unknownOpening(Connection& connection, const StatementRequest& request);

/// The vouchers that make up the figures of a statement's items, by item and voucher. Errors of the database pass
/// through.
[[nodiscard]] std::vector<VoucherFlow> vouchersOfItems(Connection& connection, const CashFlowStatement& statement);
/// The same for the figures of its cash accounts.
[[nodiscard]] std::vector<VoucherFlow> vouchersOfAccounts(Connection& connection, const CashFlowStatement& statement);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
