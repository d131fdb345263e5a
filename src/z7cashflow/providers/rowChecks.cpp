#include "z7cashflow/providers/rowChecks.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/rowGeneration.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/format.h"

#include <cmath>

namespace z7::cashflow {

namespace {

constexpr double tolerance = 0.001;

// The key of the reason why a row is not on its line's account; null if it is.
const char* misplacement(const CashFlow& row, Recordset& lines) {
    if (lines.atEnd()) {
        return "Z7.CW.GL.CashFlow.00002";
    }
    return sameAccount(lines.Fields().Item("ccode"), row.Item("ccode")) ? nullptr : "Z7.CW.GL.CashFlow.00001";
}

double amountOrZero(const Variant& amount) { return amount.isNull() ? 0.0 : toDouble(amount); }

double rowsSum(Connection& objCon, const CashFlowCollection& collection) {
    DataProvider data;
    double debit = 0.0;
    double credit = 0.0;
    for (const auto& row : collection) {
        const double sign = data.CodeIsCashFlowKm(objCon, toText(row->Item("ccode"))) ? 1.0 : -1.0;
        debit += sign * amountOrZero(row->Item("md"));
        credit += sign * amountOrZero(row->Item("mc"));
    }
    return debit - credit;
}

// A part that cannot be read stays empty: the check fails in any case.
template <class Make> std::string partOrEmpty(Make&& make) {
    std::string text;
    ignoringErrors([&] { text = make(); });
    return text;
}

std::string textOrEmpty(const char* key) {
    return partOrEmpty([&] { return modPublic::GetText(key); });
}

// A sum by its name, its side and its amount, looked up in this order.
std::string namedSum(const char* name, double value) {
    std::string text = textOrEmpty(name);
    text += textOrEmpty(value > 0 ? "Z7.CW.GL.CashFlow.00004" : "Z7.CW.GL.CashFlow.00005");
    text += partOrEmpty([&] { return format(std::fabs(value), "0.00"); });
    return text;
}

} // namespace

bool CheckColAgainstVoucher(Connection& objCon, const CashFlowCollection& collection, std::string& strInfo) {
    DataProvider data;
    const bool keyed = data.HaveVoucherKey(objCon, collection.VoucherTable());
    const auto lines = data.GetVoucherTable(objCon, collection.VoucherTable(), collection.voucherKey());
    for (const auto& row : collection) {
        filterToLineOf(*row, *lines, collection, keyed);
        if (const char* reason = misplacement(*row, *lines)) {
            lines->Close();
            strInfo = modPublic::GetText(reason);
            return false;
        }
        if (!row->CheckCashFlow(strInfo)) {
            lines->Close();
            return false;
        }
    }
    lines->Close();
    return true;
}

bool CheckColSum(Connection& objCon, const CashFlowCollection& collection, double voucherSum, std::string& strInfo) {
    if (!CheckColAgainstVoucher(objCon, collection, strInfo)) {
        return false;
    }
    const double sum = rowsSum(objCon, collection);
    if (std::fabs(sum - voucherSum) < tolerance) {
        return true;
    }
    strInfo = namedSum("Z7.CW.GL.CashFlow.00003", voucherSum) + "\r\n";
    strInfo += namedSum("Z7.CW.GL.CashFlow.00006", sum);
    return false;
}

} // namespace z7::cashflow
