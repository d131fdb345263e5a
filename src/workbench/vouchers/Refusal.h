#pragma once

#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/Error.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::workbench {

/// Where a row has its cash-flow item from.
enum class ItemOrigin { storedRow, auxiliaryItem, line, templateOfAccount, document };

/// One thing that is wrong with a voucher or its rows. Which members count depends on the kind; the others have their
/// defaults.
struct Finding {
    enum class Kind {
        voucherGone,    ///< the voucher has no line any more
        dateMissing,    ///< no line has a date
        dateOutside,    ///< line, date, year: the date lies in no period of the year
        amountMissing,  ///< line, account, debit: the line has no amount on that side
        itemUnknown,    ///< line, account, debit, item, origin: the row names an item that fitemss98 does not have
        accountUnknown, ///< line, account: the row stands on an account that code does not have in the year
        rowsNotFound,   ///< rows: readers find that many of the stored rows, for a reason that is not known
        sumsDiffer,     ///< voucherSum, rowsSum
        noTemplate, ///< line, account, debit, amount: the line has no item, and its account no template for the side
        lineWithoutRow,    ///< line, account, debit, amount: the stored rows leave the line out
        accountNotInYear,  ///< line, account: the line does not count, because the account is missing in the year,
        accountClosed,     ///< is closed,
        accountNotEnd,     ///< or is not an end-level account
        rowWithoutLine,    ///< line, account: the row's line is not in the voucher
        rowOnOther,        ///< line, account, otherAccount: the row stands on the first account, its line on the other
        rowsDoubled,       ///< rows: that many rows are stored twice; without the doubles the rows match
        notStoredYet,      ///< nothing is stored, and the rows that would be generated match
        newRowsMatch,      ///< rows generated anew would match in place of the stored ones
        heldElsewhere,     ///< another session holds the voucher
        noRowsDocument,    ///< the document is not one of cash-flow rows
        otherVoucher,      ///< voucher: the document holds rows of this voucher
        changedSince,      ///< run: the rows are no longer those that this run left
        lineMissing,       ///< line: the voucher has no such line
        amountExceedsLine, ///< line, account, debit, amount: the amount is 0, exceeds the line's, or has the other sign
        restWithoutItem,   ///< line, account, debit, amount: so much of the line is left over and has no item
        noLedgerVoucher    ///< voucher, year: the ledger has no valid voucher with this outside key in the year
    };
    Kind kind = Kind::voucherGone;
    std::int32_t line = 0; ///< number of the entry line, inid
    std::string account;
    std::string otherAccount;
    bool debit = false;  ///< the side: debit, or credit if false
    double amount = 0.0; ///< amount on that side, such as 8800.00; negative on a red line
    std::string item;
    ItemOrigin origin = ItemOrigin::storedRow;
    double voucherSum = 0.0; ///< debit less credit of the voucher's cash-flow accounts
    double rowsSum = 0.0;    ///< the same for its rows
    std::int32_t rows = 0;
    Date date = Date::none();
    std::int32_t year = 0;
    std::string voucher;
    std::int32_t run = 0;
};

/// Why a voucher was refused: 10008 to 10026, or the error of a conversion, a document or a statement that concerns
/// this voucher alone.
struct Refusal {
    Error error; ///< as it was raised; a refusal of the program's own has no description
    std::vector<Finding>
        findings; ///< what is wrong in detail, the most important first; empty if nothing more is known
};

/// A refusal of the program's own.
[[nodiscard]] inline Refusal ownRefusal(int number, std::vector<Finding> findings) {
    return {Error(number, "z7cf", std::string()), std::move(findings)};
}

} // namespace z7::cashflow::workbench
