#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/support/Variant.h"

#include <cstdint>
#include <string>

/// What the parts of the dialog have in common: its messages, and amounts as cells and rows hold them.
namespace z7::cashflow {

/// Shows an information box under the dialog's title.
void showNotice(const std::string& prompt);
/// Asks a question under the dialog's title; true unless the answer is no. buttons are the style bits of
/// MessageBox::Show.
[[nodiscard]] bool asksToGoOn(const std::string& prompt, std::int32_t buttons);

/// An amount as a cell shows it, "1,234.50"; null is the empty text, and a text that is not a number stays as it is.
[[nodiscard]] std::string amountInCell(const Variant& amount);
/// An amount as a row holds it, "1234.50"; else as amountInCell.
[[nodiscard]] std::string amountInRow(const Variant& amount);
/// Whether an amount is known and not 0. Error 13 for a text that is not a number.
[[nodiscard]] bool isNonZero(const Variant& amount);

/// Debit and credit.
struct Sides {
    double md = 0.0;
    double mc = 0.0;
};
/// What the rows of a collection hold of one voucher line; rows without a line number count as line 0.
[[nodiscard]] Sides sidesOfLine(const CashFlowCollection& rows, double inid);
/// What is left of one side of a voucher line; null where the line has no amount there.
[[nodiscard]] Variant remainder(const Variant& amount, double taken);

} // namespace z7::cashflow
