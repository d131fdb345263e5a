#include "z7cashflow/providers/rowChecks.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/rowGeneration.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/Format.h"
#include "z7cashflow/support/conversions.h"

#include <cmath>

namespace z7::cashflow {

namespace {

constexpr double tolerance = 0.001;

// Whether one row fits; if not, the reason.
bool rowFits(const CashFlow& row, Recordset& lines, std::string& strInfo) {
    if (lines.EndOfFile()) {
        strInfo = modPublic::GetText("Z7.CW.GL.CashFlow.00002");
        return false;
    }
    if (!sameAccount(lines.Fields().Item("ccode"), row.Item("ccode"))) {
        strInfo = modPublic::GetText("Z7.CW.GL.CashFlow.00001");
        return false;
    }
    return row.CheckCashFlow(strInfo);
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

// A part that cannot be had stays empty: the answer is no in any case.
template <class Make> std::string partOrEmpty(Make&& make) {
    std::string text;
    ignoringErrors([&] { text = make(); });
    return text;
}

std::string textOrEmpty(const char* key) {
    return partOrEmpty([&] { return modPublic::GetText(key); });
}

std::string directionAndAmount(double value) {
    const char* side = value > 0 ? "Z7.CW.GL.CashFlow.00004" : "Z7.CW.GL.CashFlow.00005";
    return textOrEmpty(side) + partOrEmpty([&] { return format(std::fabs(value), "0.00"); });
}

} // namespace

bool CheckColAgainstVoucher(Connection& objCon, const CashFlowCollection& collection, std::string& strInfo) {
    DataProvider data;
    const bool keyed = data.HaveVoucherKey(objCon, collection.VoucherTable());
    const auto lines = data.GetVoucherTable(objCon, collection.VoucherTable(), collection.iPeriod(),
                                            collection.isignseq(), collection.iNo_id());
    bool fits = true;
    for (const auto& row : collection) {
        filterToLineOf(*row, *lines, collection, keyed);
        fits = rowFits(*row, *lines, strInfo);
        if (!fits) {
            break;
        }
    }
    lines->Close();
    return fits;
}

bool CheckColSum(Connection& objCon, const CashFlowCollection& collection, double voucherSum, std::string& strInfo) {
    if (!CheckColAgainstVoucher(objCon, collection, strInfo)) {
        return false;
    }
    const double sum = rowsSum(objCon, collection);
    if (std::fabs(sum - voucherSum) < tolerance) {
        return true;
    }
    strInfo = textOrEmpty("Z7.CW.GL.CashFlow.00003") + directionAndAmount(voucherSum) + "\r\n";
    strInfo += textOrEmpty("Z7.CW.GL.CashFlow.00006") + directionAndAmount(sum);
    return false;
}

} // namespace z7::cashflow
