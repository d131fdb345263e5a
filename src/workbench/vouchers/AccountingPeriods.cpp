#include "workbench/vouchers/AccountingPeriods.h"

#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::workbench {

AccountingPeriods AccountingPeriods::read(Connection& connection, const std::string& account) {
    std::string quoted;
    for (const char c : account) {
        quoted += c == '\'' ? std::string("''") : std::string(1, c);
    }
    const auto records =
        connection.Execute("select iyear,iid from zqsystem..ua_period where cacc_id=N'" + quoted + "'");
    AccountingPeriods periods;
    for (; !records->atEnd(); records->MoveNext()) {
        periods.years_[toInt16(records->Fields().Item("iyear"))].insert(toByte(records->Fields().Item("iid")));
    }
    return periods;
}

bool AccountingPeriods::hasPeriod(std::int16_t year, std::uint8_t period) const {
    const auto found = years_.find(year);
    return found != years_.end() && found->second.contains(period);
}

std::string AccountingPeriods::yearsText() const {
    std::string text;
    for (const auto& [year, periods] : years_) {
        text += (text.empty() ? "" : ", ") + std::to_string(year);
    }
    return text;
}

std::string AccountingPeriods::periodsText(std::int16_t year) const {
    std::string text;
    const auto found = years_.find(year);
    if (found != years_.end()) {
        for (const std::uint8_t period : found->second) {
            text += (text.empty() ? "" : ", ") + std::to_string(period);
        }
    }
    return text;
}

} // namespace z7::cashflow::workbench
