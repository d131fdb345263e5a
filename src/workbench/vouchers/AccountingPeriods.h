#pragma once

#include "z7cashflow/ports/Connection.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace z7::cashflow::workbench {

/// The accounting years and periods of an account, from the table ua_period.
class AccountingPeriods {
public:
    /// Reads those of an account. The identifier may contain any characters.
    static AccountingPeriods read(Connection& connection, const std::string& account);

    [[nodiscard]] bool hasYear(std::int16_t year) const { return years_.contains(year); }
    [[nodiscard]] bool hasPeriod(std::int16_t year, std::uint8_t period) const;
    [[nodiscard]] bool empty() const noexcept { return years_.empty(); }
    /// The years, or the periods of one year, for people: "2013, 2014".
    [[nodiscard]] std::string yearsText() const;
    [[nodiscard]] std::string periodsText(std::int16_t year) const;

private:
    std::map<std::int16_t, std::set<std::uint8_t>> years_;
};

} // namespace z7::cashflow::workbench
