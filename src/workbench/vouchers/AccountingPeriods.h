#pragma once

#include "z7cashflow/ports/Connection.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace z7::cashflow::workbench {

/// The accounting years of an account with their periods, as ua_period has them.
class AccountingPeriods {
public:
    /// Reads those of an account, whatever signs its identifier has.
    static AccountingPeriods read(Connection& connection, const std::string& account);

    [[nodiscard]] bool hasYear(std::int16_t year) const { return years_.contains(year); }
    [[nodiscard]] bool hasPeriod(std::int16_t year, std::uint8_t period) const;
    [[nodiscard]] bool empty() const noexcept { return years_.empty(); }
    /// The years, and the periods of one year, for people: "2013, 2014".
    [[nodiscard]] std::string yearsText() const;
    [[nodiscard]] std::string periodsText(std::int16_t year) const;

private:
    std::map<std::int16_t, std::set<std::uint8_t>> years_;
};

} // namespace z7::cashflow::workbench
