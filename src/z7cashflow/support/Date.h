#pragma once

#include "z7cashflow/support/visibility.h"

#include <compare>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// A point in time of the accounting calendar, without a time zone: the number of days since
/// 1899-12-30, the time of day as the fraction. 2013-01-05 is 41279.0, noon of that day 41279.5.
///
/// The value 2.0, which is 1900-01-01, means "no date" wherever a voucher's date is given.
class Date {
public:
    /// 1899-12-30, the date of day number 0.
    constexpr Date() noexcept = default;
    /// The point in time with a day number, which may be any number.
    constexpr explicit Date(double dayNumber) noexcept : days_(dayNumber) {}

    /// The day number, whose fraction is the time of day.
    [[nodiscard]] constexpr double dayNumber() const noexcept { return days_; }

    /// The date value that means that no date is known: 1900-01-01.
    static constexpr Date none() noexcept { return Date(2.0); }

    /// The first moment of a day of the Gregorian calendar. Throws Error 13 if there is no such day
    /// or the year is outside 100 to 9999.
    static Date fromCivil(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

    /// Compares to the exact fraction of a day.
    friend constexpr bool operator==(Date a, Date b) noexcept { return a.days_ == b.days_; }
    /// An earlier date is less.
    friend constexpr std::partial_ordering operator<=>(Date a, Date b) noexcept { return a.days_ <=> b.days_; }

private:
    double days_ = 0.0;
};

/// The calendar fields of a date, its time rounded to the second.
struct CivilTime {
    int year = 1899; ///< 100 to 9999
    int month = 12;  ///< 1 to 12
    int day = 30;    ///< 1 to 31
    int hour = 0;    ///< 0 to 23
    int minute = 0;  ///< 0 to 59
    int second = 0;  ///< 0 to 59
};

/// True for a date whose year is 100 to 9999, which is what texts and databases can hold.
[[nodiscard]] bool isValidDate(Date date) noexcept;

/// Splits a date into its calendar fields. Throws Error 6 if the year is outside 100 to 9999.
[[nodiscard]] CivilTime toCivil(Date date);

/// "yyyy-mm-dd", followed by " hh:mm:ss" only if the date has a time of day.
/// Throws Error 6 if the year is outside 100 to 9999.
[[nodiscard]] std::string dateText(Date date);

/// "yyyy-mm-dd" whatever the time of day. Throws Error 6 if the year is outside 100 to 9999.
[[nodiscard]] std::string dayText(Date date);

} // namespace z7::cashflow

Z7_PUBLIC_END
