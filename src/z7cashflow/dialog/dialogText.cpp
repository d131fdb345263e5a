#include "z7cashflow/dialog/dialogText.h"

#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/format.h"

namespace z7::cashflow {

namespace {

constexpr std::int32_t information = 64;
constexpr std::int32_t answerNo = 7;

std::int32_t show(const std::string& prompt, std::int32_t buttons) {
    return modPublic::ShowMessage(prompt, buttons, modPublic::GetText("Z7.CW.GL.CashFlow.00013"), "", 0);
}

} // namespace

void showNotice(const std::string& prompt) { show(prompt, information); }

bool asksToGoOn(const std::string& prompt, std::int32_t buttons) { return show(prompt, buttons) != answerNo; }

std::string amountInCell(const Variant& amount) { return format(amount, "##,##0.00"); }

std::string amountInRow(const Variant& amount) { return format(amount, "##0.00"); }

bool isNonZero(const Variant& amount) { return !amount.isNull() && toDouble(amount) != 0.0; }

Sides sidesOfLine(const CashFlowCollection& rows, double inid) {
    const auto numberOrZero = [](const Variant& value) { return value.isNull() ? 0.0 : toDouble(value); };
    Sides sums;
    for (const auto& row : rows) {
        if (numberOrZero(row->Item("inid")) == inid) {
            sums.md += numberOrZero(row->Item("md"));
            sums.mc += numberOrZero(row->Item("mc"));
        }
    }
    return sums;
}

Variant remainder(const Variant& amount, double taken) {
    return amount.isNull() ? Variant() : Variant(toDouble(amount) - taken);
}

} // namespace z7::cashflow
