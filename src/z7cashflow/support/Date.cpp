#include "z7cashflow/support/Date.h"

#include "z7cashflow/support/Error.h"

#include <chrono>
#include <cmath>
#include <cstdint>

namespace z7::cashflow {

namespace {

constexpr std::int64_t secondsPerDay = 86400;
constexpr int minYear = 100;
constexpr int maxYear = 9999;

// The chrono calendar counts from 1970-01-01, which is day 25569 of this one.
constexpr std::int64_t epochDay = 25569;

constexpr std::int64_t dayOf(int year, unsigned month, unsigned day) {
    using namespace std::chrono;
    const year_month_day ymd{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    return sys_days(ymd).time_since_epoch().count() + epochDay;
}

constexpr std::int64_t firstDay = dayOf(minYear, 1, 1);
constexpr std::int64_t lastDay = dayOf(maxYear, 12, 31);

struct DayAndSecond {
    std::int64_t day;
    std::int64_t second;
};

// Before day 0 the fraction still counts forwards from midnight: the whole part names the day, the size of the
// fraction the time. -1.25 is six in the morning of 1899-12-29.
DayAndSecond split(Date date) {
    double whole = 0.0;
    const double fraction = std::fabs(std::modf(date.dayNumber(), &whole));
    auto day = static_cast<std::int64_t>(whole);
    auto second = static_cast<std::int64_t>(std::llround(fraction * static_cast<double>(secondsPerDay)));
    if (second == secondsPerDay) {
        ++day;
        second = 0;
    }
    return {day, second};
}

void appendTwoDigits(std::string& text, int value) {
    text += static_cast<char>('0' + value / 10);
    text += static_cast<char>('0' + value % 10);
}

std::string dayOnly(const CivilTime& civil) {
    std::string text;
    appendTwoDigits(text, civil.year / 100);
    appendTwoDigits(text, civil.year % 100);
    text += '-';
    appendTwoDigits(text, civil.month);
    text += '-';
    appendTwoDigits(text, civil.day);
    return text;
}

} // namespace

Date Date::fromCivil(int year, int month, int day, int hour, int minute, int second) {
    using namespace std::chrono;
    const bool inRange = year >= minYear && year <= maxYear && month >= 1 && month <= 12 && day >= 1 && day <= 31 &&
                         hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
    if (!inRange || !year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                    std::chrono::day(static_cast<unsigned>(day)))
                         .ok()) {
        raisePlatformError(Reason::noSuchDate);
    }
    const auto days = static_cast<double>(dayOf(year, static_cast<unsigned>(month), static_cast<unsigned>(day)));
    const double time = (hour * 3600 + minute * 60 + second) / static_cast<double>(secondsPerDay);
    return Date(days < 0 ? days - time : days + time);
}

bool isValidDate(Date date) noexcept {
    return date.dayNumber() > static_cast<double>(firstDay - 1) &&
           date.dayNumber() < static_cast<double>(lastDay + 1) && split(date).day >= firstDay &&
           split(date).day <= lastDay;
}

CivilTime toCivil(Date date) {
    if (!isValidDate(date)) {
        raisePlatformError(Reason::dateOutOfRange);
    }
    const auto [day, second] = split(date);
    const std::chrono::year_month_day ymd{std::chrono::sys_days(std::chrono::days(day - epochDay))};
    CivilTime civil;
    civil.year = static_cast<int>(ymd.year());
    civil.month = static_cast<int>(static_cast<unsigned>(ymd.month()));
    civil.day = static_cast<int>(static_cast<unsigned>(ymd.day()));
    civil.hour = static_cast<int>(second / 3600);
    civil.minute = static_cast<int>(second / 60 % 60);
    civil.second = static_cast<int>(second % 60);
    return civil;
}

std::string dateText(Date date) {
    const CivilTime civil = toCivil(date);
    std::string text = dayOnly(civil);
    if (civil.hour != 0 || civil.minute != 0 || civil.second != 0) {
        text += ' ';
        appendTwoDigits(text, civil.hour);
        text += ':';
        appendTwoDigits(text, civil.minute);
        text += ':';
        appendTwoDigits(text, civil.second);
    }
    return text;
}

std::string dayText(Date date) { return dayOnly(toCivil(date)); }

} // namespace z7::cashflow
