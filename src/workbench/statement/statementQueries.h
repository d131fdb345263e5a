#pragma once

#include <cstdint>
#include <string>

/// The queries of the cash-flow statement. They group in the database, so that a result has one record per item,
/// account or gap rather than per row. Only numbers are inserted into them, so nothing needs quoting.
namespace z7::cashflow::workbench::queries {

/// The periods of a year that a statement covers.
struct Range {
    std::int16_t year = 0;
    std::uint8_t first = 0;
    std::uint8_t last = 0;
};

/// last_period: the last period of the year with a line; null if there is none.
[[nodiscard]] std::string lastPeriod(std::int16_t year);
/// item_code, item_name, iperiod, receipts, payments (negative), by item and period.
[[nodiscard]] std::string items(const Range& range);
/// item_code, currency, receipts, payments (negative), in the currency's own amounts, by item and currency.
[[nodiscard]] std::string currencies(const Range& range);
/// citemcode, citemname of all items.
[[nodiscard]] std::string itemNames();
/// ccode, ccode_name of the cash accounts whose lines count: end-level and open in the year.
[[nodiscard]] std::string cashAccounts(std::int16_t year);
/// ccode, debit, credit of the cash accounts before the range.
[[nodiscard]] std::string openingBalances(const Range& range);
/// ccode, iperiod, debit, credit of the cash accounts in the range, by account and period.
[[nodiscard]] std::string cashMovements(const Range& range);
/// iperiod, isignseq, ino_id, cash, effect, stored, seen of each voucher whose cash and rows differ by at least
/// 0.001.
[[nodiscard]] std::string gaps(const Range& range);
/// item_code, iperiod, isignseq, ino_id, receipts, payments (negative), by item and voucher.
[[nodiscard]] std::string itemVouchers(const Range& range);
/// ccode, iperiod, isignseq, ino_id, debit, credit of the cash accounts in the range, by account and voucher.
[[nodiscard]] std::string accountVouchers(const Range& range);
/// One record for each line of a voucher.
[[nodiscard]] std::string voucherLines(std::int16_t year, std::uint8_t period, std::int16_t kind, std::int32_t number);

} // namespace z7::cashflow::workbench::queries
