#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The accounting years and periods of an account, from the table ua_period.
class AccountingPeriods {
public:
    /// Reads those of an account. The identifier may contain any characters.
    static AccountingPeriods read(Connection& connection, const std::string& account);

    /// Whether the account has periods in a year.
    [[nodiscard]] bool hasYear(std::int16_t year) const { return years_.contains(year); }
    /// Whether the account has a period of a year.
    [[nodiscard]] bool hasPeriod(std::int16_t year, std::uint8_t period) const;
    /// Whether the account has no periods at all.
    [[nodiscard]] bool empty() const noexcept { return years_.empty(); }
    /// The years for people: "2013, 2014"; empty if there are none.
    [[nodiscard]] std::string yearsText() const;
    /// The periods of a year for people: "1, 2, 3"; empty if the account does not have the year.
    [[nodiscard]] std::string periodsText(std::int16_t year) const;

private:
    std::map<std::int16_t, std::set<std::uint8_t>> years_;
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
