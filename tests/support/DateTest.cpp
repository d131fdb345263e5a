#include "z7cashflow/support/Date.h"
#include "doubles/ContextGuard.h"

#include <gtest/gtest.h>
#ifndef _WIN32 // Debian has no rapidcheck for Windows
#include <rapidcheck.h>
#endif

#include <limits>

namespace z7::cashflow {
namespace {

TEST(Date, CountsDaysFromTheEndOf1899) {
    EXPECT_EQ(Date().dayNumber(), 0.0);
    EXPECT_EQ(Date::fromCivil(1899, 12, 30), Date(0.0));
    EXPECT_EQ(Date::fromCivil(1900, 1, 1), Date(2.0));
    EXPECT_EQ(Date::none(), Date(2.0));
    EXPECT_EQ(Date::fromCivil(1900, 12, 31), Date(366.0));
    EXPECT_EQ(Date::fromCivil(1901, 1, 1), Date(367.0));
    EXPECT_EQ(Date::fromCivil(2013, 1, 5), Date(41279.0));
    EXPECT_EQ(Date::fromCivil(2013, 1, 5, 12), Date(41279.5));
    EXPECT_EQ(Date::fromCivil(1899, 12, 29), Date(-1.0));
    EXPECT_EQ(Date::fromCivil(9999, 12, 31), Date(2958465.0));
    EXPECT_EQ(Date::fromCivil(100, 1, 1), Date(-657434.0));
}

TEST(Date, RefusesDaysThatDoNotExist) {
    EXPECT_ERROR(Date::fromCivil(2013, 2, 29), errors::typeMismatch);
    EXPECT_ERROR(Date::fromCivil(1900, 2, 29), errors::typeMismatch);
    EXPECT_EQ(test::errorNumberOf([] { (void)Date::fromCivil(2000, 2, 29); }), 0);
    EXPECT_ERROR(Date::fromCivil(2013, 13, 1), errors::typeMismatch);
    EXPECT_ERROR(Date::fromCivil(2013, 0, 1), errors::typeMismatch);
    EXPECT_ERROR(Date::fromCivil(2013, 4, 31), errors::typeMismatch);
    EXPECT_ERROR(Date::fromCivil(2013, 4, 0), errors::typeMismatch);
    EXPECT_ERROR(Date::fromCivil(99, 1, 1), errors::typeMismatch);
    EXPECT_ERROR(Date::fromCivil(10000, 1, 1), errors::typeMismatch);
}

TEST(Date, IsWrittenWithItsTimeOnlyWhereItHasOne) {
    EXPECT_EQ(dateText(Date(41279.0)), "2013-01-05");
    EXPECT_EQ(dateText(Date(41279.5)), "2013-01-05 12:00:00");
    EXPECT_EQ(dateText(Date::fromCivil(2013, 1, 5, 1, 2, 3)), "2013-01-05 01:02:03");
    EXPECT_EQ(dateText(Date(2.0)), "1900-01-01");
    EXPECT_EQ(dateText(Date(0.0)), "1899-12-30");
    EXPECT_EQ(dateText(Date::fromCivil(100, 1, 1)), "0100-01-01");
    EXPECT_EQ(dayText(Date(41279.75)), "2013-01-05");
    EXPECT_EQ(dayText(Date(2.99)), "1900-01-01");
}

TEST(Date, RoundsItsTimeToTheSecond) {
    EXPECT_EQ(dateText(Date(41279.0 + 0.4 / 86400)), "2013-01-05");
    EXPECT_EQ(dateText(Date(41279.0 + 0.6 / 86400)), "2013-01-05 00:00:01");
    EXPECT_EQ(dateText(Date(41279.9999999)), "2013-01-06");
}

TEST(Date, KnowsWhetherTextsAndDatabasesCanHoldIt) {
    EXPECT_TRUE(isValidDate(Date(0.0)));
    EXPECT_TRUE(isValidDate(Date(2.0)));
    EXPECT_TRUE(isValidDate(Date(-657434.0)));
    EXPECT_FALSE(isValidDate(Date(-657435.0)));
    EXPECT_TRUE(isValidDate(Date(2958465.0)));
    EXPECT_FALSE(isValidDate(Date(2958466.0)));
    EXPECT_FALSE(isValidDate(Date(std::numeric_limits<double>::quiet_NaN())));
    EXPECT_FALSE(isValidDate(Date(std::numeric_limits<double>::infinity())));
    EXPECT_FALSE(isValidDate(Date(1e300)));
    EXPECT_ERROR(dateText(Date(2958466.0)), errors::overflow);
    EXPECT_ERROR(dayText(Date(-657435.0)), errors::overflow);
    EXPECT_ERROR(toCivil(Date(1e300)), errors::overflow);
    EXPECT_ERROR(toCivil(Date(std::numeric_limits<double>::quiet_NaN())), errors::overflow);
}

TEST(Date, ComparesByPointInTime) {
    EXPECT_LT(Date(2.0), Date(366.9));
    EXPECT_GT(Date(367.0), Date(366.0));
    EXPECT_NE(Date(2.0), Date(2.5));
}

#ifndef _WIN32
TEST(Date, KeepsEverySecondThroughItsCalendarFields) {
    EXPECT_TRUE(rc::check("fromCivil and toCivil", [] {
        const int day = *rc::gen::inRange(0, 2958466);
        const int second = *rc::gen::inRange(0, 86400);
        const CivilTime noted = toCivil(Date(day));
        const Date date =
            Date::fromCivil(noted.year, noted.month, noted.day, second / 3600, second / 60 % 60, second % 60);
        const CivilTime fields = toCivil(date);
        RC_ASSERT(fields.year == noted.year && fields.month == noted.month && fields.day == noted.day);
        RC_ASSERT(fields.hour * 3600 + fields.minute * 60 + fields.second == second);
        RC_ASSERT(Date::fromCivil(noted.year, noted.month, noted.day) == Date(day));
    }));
}
#endif

} // namespace
} // namespace z7::cashflow
