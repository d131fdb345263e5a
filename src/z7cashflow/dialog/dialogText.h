#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/support/Variant.h"

#include <cstdint>
#include <string>

/// Shared by the parts of the dialog: its messages, and amounts in the form of cells and of rows.
namespace z7::cashflow {

/// Shows an information box with the dialog's title.
void showNotice(const std::string& prompt);
/// Asks a question with the dialog's title; true unless the answer is no. buttons are the style bits of
/// MessageBox::Show.
[[nodiscard]] bool asksToGoOn(const std::string& prompt, std::int32_t buttons);

/// An amount in the form of a cell, "1,234.50"; null becomes the empty text, and a text that is not a number is
/// unchanged.
[[nodiscard]] std::string amountInCell(const Variant& amount);
/// An amount in the form of a row, "1234.50"; otherwise as amountInCell.
[[nodiscard]] std::string amountInRow(const Variant& amount);
/// Whether an amount is known and not 0. Error 13 for a text that is not a number.
[[nodiscard]] bool isNonZero(const Variant& amount);

/// Debit and credit.
struct Sides {
    double md = 0.0;
    double mc = 0.0;
};
/// The debit and credit of a collection's rows for one voucher line; rows without a line number count as line 0.
[[nodiscard]] Sides sidesOfLine(const CashFlowCollection& rows, double inid);
/// The part of one side of a voucher line that is not taken; null if the line has no amount on that side.
[[nodiscard]] Variant remainder(const Variant& amount, double taken);

} // namespace z7::cashflow
