#pragma once

#include "workbench/Amount.h"
#include "workbench/open/UnsettledVoucher.h"
#include "workbench/vouchers/Judge.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// An open entry line: part or all of its amount is not allocated.
struct OpenLine {
    VoucherKey voucher;    ///< key of the voucher
    std::int32_t line = 0; ///< number of the entry line, inid
    std::string account;   ///< account of the line
    bool debit = false;    ///< the line's side
    Amount amount;         ///< the part of its amount on that side that is not allocated
    std::string summary;   ///< summary of the line; empty if it has none
    std::string item;      ///< the proposed cash-flow item; empty if there is none
    std::string itemName;  ///< name of that item; empty if it is unknown
};

/// Finds the open lines of the vouchers of one year and proposes an item for each: that of the row that would be
/// generated for the line, otherwise the one used most often in the year's stored rows for the same account and
/// side.
class OpenLineFinder {
public:
    /// Queries how often each item is used in the year. The connection and the judge outlive this object.
    /// Errors of the database pass through.
    OpenLineFinder(Connection& connection, Judge& judge, std::int16_t year);

    /// The open lines of a voucher, by line, on the side to which its rows belong (cash lines or the others).
    /// None if the voucher must be corrected first. A line may intentionally have no row if the sums match.
    /// Errors of the database pass through.
    [[nodiscard]] std::vector<OpenLine> linesOf(const UnsettledVoucher& voucher);

private:
    void propose(OpenLine& line, const CashFlowCollection* generated) const;

    Connection& connection_;
    Judge& judge_;
    std::map<std::string, std::string> itemNames_;
    std::map<std::pair<std::string, bool>, std::string> usualItems_; ///< by account and side
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
