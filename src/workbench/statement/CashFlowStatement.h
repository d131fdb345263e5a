#pragma once

#include "workbench/Amount.h"
#include "z7cashflow/ports/Connection.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace z7::cashflow::workbench {

/// How wide a column of a statement is.
enum class Span { year, quarter, month };

/// What a statement is wanted of.
struct StatementRequest {
    std::int16_t year = 0;
    std::uint8_t firstPeriod = 1;
    std::uint8_t lastPeriod = 0; ///< 0: to the last period that the year has lines or rows in, at least to 12
    Span span = Span::year;
    bool byCurrency = false;
    /// Balances of cash accounts, by code, from before the first voucher of the ledger.
    std::map<std::string, Amount> openings;
    /// Names of groups by the beginning of their items' codes, such as "01". An item belongs to the longest code that
    /// its own begins with; one without such a code belongs to the group of its first two characters.
    std::map<std::string, std::string> groups;
};

/// Cash that came in and went out. A payment is a positive amount.
struct Flow {
    Amount receipts;
    Amount payments;
    [[nodiscard]] Amount net() const { return receipts - payments; }
    Flow& operator+=(const Flow& other);
};

/// What was received and paid in one currency, in its own amounts; the empty name stands for rows without a currency,
/// in the ledger's.
struct CurrencyFlow {
    std::string currency;
    Flow flow;
};

/// A line of the statement: one cash-flow item, or one group of items.
struct StatementLine {
    std::string code;
    std::string name;  ///< empty where no item has the code
    std::string group; ///< code of the item's group; empty for a group and for the total
    Flow total;
    std::vector<Flow> columns;            ///< one for each column of the statement
    std::vector<CurrencyFlow> currencies; ///< by name; only where they were asked for
};

/// The movement of one cash account over the statement's periods: receipts are its debits, payments its credits.
struct CashAccount {
    std::string code;
    std::string name;
    Amount opening;
    Flow flow;
    [[nodiscard]] Amount closing() const { return opening + flow.net(); }
};

/// Why the rows of a voucher do not account for its cash.
enum class Gap {
    unallocated,    ///< the voucher moves cash and no row is stored
    hiddenRows,     ///< rows are stored that no reader sees: their item or their account does not exist
    voucherMissing, ///< rows are stored for a voucher that the ledger does not have
    sumsDiffer,     ///< the rows add up to something else
};

/// A voucher whose rows do not account for its cash.
struct VoucherGap {
    std::uint8_t period = 0;
    std::int16_t kind = 0;
    std::int32_t number = 0;
    Amount cash;             ///< debits less credits of its lines on cash accounts
    Amount rows;             ///< the effect on cash of its rows
    std::int32_t stored = 0; ///< rows stored, seen by readers or not
    Gap gap = Gap::sumsDiffer;
    [[nodiscard]] Amount difference() const { return cash - rows; }
};

/// What one voucher adds to a figure.
struct VoucherFlow {
    std::string code; ///< of the item or the cash account
    std::uint8_t period = 0;
    std::int16_t kind = 0;
    std::int32_t number = 0;
    Flow flow;
};

/// A column: the periods from first to last.
struct StatementColumn {
    std::uint8_t first = 0;
    std::uint8_t last = 0;
};

/// The cash-flow statement of one year or some of its periods, and its proof against the cash accounts.
struct CashFlowStatement {
    std::int16_t year = 0;
    std::uint8_t firstPeriod = 0;
    std::uint8_t lastPeriod = 0;
    std::vector<StatementColumn> columns;
    std::vector<StatementLine> groups; ///< in the order of their codes
    std::vector<StatementLine> items;  ///< in the order of their codes; items without a row are left out
    StatementLine total;
    std::vector<CashAccount>
        accounts;                  ///< in the order of their codes; accounts without movement and balance are left out
    CashAccount cash;              ///< all cash accounts together
    std::vector<Flow> cashColumns; ///< the movement of all cash accounts in each column
    std::vector<VoucherGap> gaps;  ///< the vouchers that make up the difference, in the order of their keys

    /// What moved on the cash accounts less what the rows account for.
    [[nodiscard]] Amount difference() const { return cash.flow.net() - total.total.net(); }
    /// Whether every voucher's cash is accounted for.
    [[nodiscard]] bool proven() const { return gaps.empty() && difference().isZero(); }
};

/// Draws up the statement from the stored rows that readers of a voucher see. A row's effect on cash is its debit less
/// its credit if its account is a cash account, and the opposite if not, as when a voucher's rows are compared with its
/// cash. The cash accounts are those whose lines count as a voucher's cash: flagged as cash, end-level and open in the
/// year; the opening balance is what the ledger holds from before the first period, and what the request adds.
///
/// Reads only, one grouped statement for each of its parts, so that memory depends on items, accounts and gaps and not
/// on vouchers. Error 5 if the first period lies after the last or an opening names an account that is not a cash
/// account; error 6 if a sum is too large; errors of the database as they are.
[[nodiscard]] CashFlowStatement drawUpStatement(Connection& connection, const StatementRequest& request);

/// The vouchers of some periods of a year whose rows do not account for their cash, in the order of their keys. Errors
/// as drawUpStatement.
[[nodiscard]] std::vector<VoucherGap> findGaps(Connection& connection, std::int16_t year, std::uint8_t first,
                                               std::uint8_t last);

/// The first account of the request's openings whose lines do not count as cash in the year; empty if there is none.
/// Errors of the database.
[[nodiscard]] std::string unknownOpening(Connection& connection, const StatementRequest& request);

/// The vouchers under the figures of a statement's items, by item and voucher: as many records as there are. Errors of
/// the database.
[[nodiscard]] std::vector<VoucherFlow> vouchersOfItems(Connection& connection, const CashFlowStatement& statement);
/// The same for the figures of its cash accounts.
[[nodiscard]] std::vector<VoucherFlow> vouchersOfAccounts(Connection& connection, const CashFlowStatement& statement);

} // namespace z7::cashflow::workbench
