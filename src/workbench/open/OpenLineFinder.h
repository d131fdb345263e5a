#pragma once

#include "workbench/Amount.h"
#include "workbench/open/UnsettledVoucher.h"
#include "workbench/vouchers/Judge.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::workbench {

/// An entry line that still takes a row: nothing is stored for its amount or for a part of it.
struct OpenLine {
    VoucherKey voucher;
    std::int32_t line = 0; ///< number of the entry line, inid
    std::string account;
    bool debit = false; ///< the line's side
    Amount amount;      ///< what is not allocated of the amount on that side
    std::string summary;
    std::string item; ///< the proposed cash-flow item; empty if there is none
    std::string itemName;
};

/// Finds the open lines of vouchers of one year with an item for each: the one that the line's rows would be generated
/// with, else the one that the year's stored rows of the same account and side have most often.
class OpenLineFinder {
public:
    /// Reads how often each item is used in the year. The connection and the judge outlive it. Errors of the database.
    OpenLineFinder(Connection& connection, Judge& judge, std::int16_t year);

    /// The open lines of a voucher in their order: those on the side where rows stand. None if the voucher has to be
    /// corrected first. A line may stay without a row on purpose, as long as the sums match. Errors of the database.
    [[nodiscard]] std::vector<OpenLine> linesOf(const UnsettledVoucher& voucher);

private:
    void propose(OpenLine& line, const CashFlowCollection* generated) const;

    Connection& connection_;
    Judge& judge_;
    std::map<std::string, std::string> itemNames_;
    std::map<std::pair<std::string, bool>, std::string> usualItems_; ///< by account and side
};

} // namespace z7::cashflow::workbench
