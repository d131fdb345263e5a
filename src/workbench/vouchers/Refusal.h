#pragma once

#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The origin of a row's cash-flow item.
enum class ItemOrigin {
    storedRow,         ///< the stored row itself
    auxiliaryItem,     ///< the auxiliary item of the entry line
    line,              ///< the item entered on the entry line
    templateOfAccount, ///< the template of the line's account and side
    document           ///< the document that a person or a subsystem has passed in
};

/// One thing that is wrong with a voucher or its rows. Which members are used depends on the kind; the others keep
/// their defaults.
struct Finding {
    /// What is wrong, with the members that describe it.
    enum class Kind {
        voucherGone,       ///< the voucher no longer has any lines
        dateMissing,       ///< no line has a date
        dateOutside,       ///< line, date, year: the date is outside the accounting periods of the year
        amountMissing,     ///< line, account, debit: the line has no amount on that side
        itemUnknown,       ///< line, account, debit, item, origin: the row's item is not in fitemss98
        accountUnknown,    ///< line, account: the row's account is not in the chart of accounts (code) of the year
        rowsNotFound,      ///< rows: the number of stored rows that readers find, for an unknown reason
        sumsDiffer,        ///< voucherSum, rowsSum
        noTemplate,        ///< line, account, debit, amount: no item on the line, no template for its account and side
        lineWithoutRow,    ///< line, account, debit, amount: the stored rows do not cover the line
        accountNotInYear,  ///< line, account: the line does not count, because its account is not in the chart,
        accountClosed,     ///< is closed,
        accountNotEnd,     ///< or is not an end-level account
        rowWithoutLine,    ///< line, account: the voucher does not have the row's line
        rowOnOther,        ///< line, account, otherAccount: the row's account, and the different account of its line
        rowsDoubled,       ///< rows: the number of rows stored twice; without the duplicates the rows match
        notStoredYet,      ///< no rows are stored, and generated rows would match
        newRowsMatch,      ///< newly generated rows would match, unlike the stored ones
        heldElsewhere,     ///< another session holds the voucher
        noRowsDocument,    ///< the document does not contain cash-flow rows
        otherVoucher,      ///< voucher: the voucher to which the document's rows belong
        changedSince,      ///< run: the rows are no longer those that this run stored
        lineMissing,       ///< line: the voucher does not have this line
        amountExceedsLine, ///< line, account, debit, amount: the amount is 0, exceeds the line, or has the wrong sign
        restWithoutItem,   ///< line, account, debit, amount: the part of the line that remains without an item
        noLedgerVoucher    ///< voucher, year: the outside key that no valid voucher of the ledger has in the year
    };
    Kind kind = Kind::voucherGone;             ///< what is wrong
    std::int32_t line = 0;                     ///< number of the entry line, inid
    std::string account;                       ///< account of the line or of the row
    std::string otherAccount;                  ///< for rowOnOther: the account of the line
    bool debit = false;                        ///< the side: debit, or credit if false
    double amount = 0.0;                       ///< amount on that side, such as 8800.00; negative on a red line
    std::string item;                          ///< code of the cash-flow item
    ItemOrigin origin = ItemOrigin::storedRow; ///< where that item comes from
    double voucherSum = 0.0;                   ///< debit less credit of the voucher's lines on cash-flow accounts
    double rowsSum = 0.0;                      ///< the same for its rows
    std::int32_t rows = 0;                     ///< a number of rows
    Date date = Date::none();                  ///< date of the line
    std::int32_t year = 0;                     ///< accounting year
    std::string voucher;                       ///< a voucher's key as text, or an outside key
    std::int32_t run = 0;                      ///< number of a run in the log
};

/// Why a voucher was refused: 10008 to 10026, or an error of a conversion, a document or a statement that concerns
/// only this voucher.
struct Refusal {
    Error error; ///< as raised; a refusal by the program itself has no description
    std::vector<Finding>
        findings; ///< what is wrong in detail, the most important first; empty if nothing more is known
};

/// A refusal by the program itself, not by the library.
[[nodiscard]] inline Refusal ownRefusal(int number, std::vector<Finding> findings) {
    return {Error(number, "z7cf", std::string()), std::move(findings)};
}

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
