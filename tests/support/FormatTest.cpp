#include "z7cashflow/support/format.h"
#include "doubles/ContextGuard.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>
#ifndef _WIN32 // Debian has no rapidcheck for Windows
#include <rapidcheck.h>
#endif

#include <cmath>

namespace z7::cashflow {
namespace {

std::int16_t i16(int number) { return static_cast<std::int16_t>(number); }

TEST(Format, RoundsHalfAwayFromZeroOnTheDecimalText) {
    EXPECT_EQ(format(1234.565, "0.00"), "1234.57");
    EXPECT_EQ(format(1234.565, "#.00"), "1234.57");
    EXPECT_EQ(format(-1234.565, "#.00"), "-1234.57");
    EXPECT_EQ(format(1.005, "0.00"), "1.01");
    EXPECT_EQ(format(2.5, "0"), "3");
    EXPECT_EQ(format(3.5, "0"), "4");
    EXPECT_EQ(format(-2.5, "0"), "-3");
    EXPECT_EQ(format(0.005, "0.00"), "0.01");
    EXPECT_EQ(format(0.0049999, "0.00"), "0.00");
    EXPECT_EQ(format(99.995, "0.00"), "100.00");
    EXPECT_EQ(format(100.004, "0.00"), "100.00");
}

TEST(Format, ShowsAmountsWithGroups) {
    EXPECT_EQ(format(1234.565, "##,##0.00"), "1,234.57");
    EXPECT_EQ(format(1234567.891, "##,##0.00"), "1,234,567.89");
    EXPECT_EQ(format(-1234.5, "##,##0.00"), "-1,234.50");
    EXPECT_EQ(format(999.0, "##,##0.00"), "999.00");
    EXPECT_EQ(format(999.995, "##,##0.00"), "1,000.00");
    EXPECT_EQ(format(0.0, "##,##0.00"), "0.00");
    EXPECT_EQ(format(1234567.891, "##0.00"), "1234567.89");
}

TEST(Format, LeavesOutTheWholeDigitThatIsNotAskedFor) {
    EXPECT_EQ(format(0.0, "#.00"), ".00");
    EXPECT_EQ(format(0.5, "#.00"), ".50");
    EXPECT_EQ(format(-0.57, "#.00"), "-.57");
    EXPECT_EQ(toDouble(format(0.0, "#.00")), 0.0);
    EXPECT_EQ(toDouble(format(0.004, "#.00")), 0.0);
}

TEST(Format, ZeroHasNoSign) {
    EXPECT_EQ(format(-0.0, "0.00"), "0.00");
    EXPECT_EQ(format(-0.004, "0.00"), "0.00");
    EXPECT_EQ(format(-0.004, "#.00"), ".00");
    EXPECT_EQ(format(-0.004, "##,##0.00"), "0.00");
    EXPECT_EQ(format(-0.4, "00"), "00");
}

TEST(Format, FillsUpWithZeros) {
    EXPECT_EQ(format(i16(3), "00"), "03");
    EXPECT_EQ(format(std::uint8_t{12}, "00"), "12");
    EXPECT_EQ(format(std::int32_t{123}, "00"), "123");
    EXPECT_EQ(format("3", "00"), "03");
    EXPECT_EQ(format("0", "00"), "00");
    EXPECT_EQ(format("99", "00"), "99");
    EXPECT_EQ(format("1,234.5", "0.00"), "1234.50");
}

TEST(Format, LeavesTextThatIsNotANumber) {
    EXPECT_EQ(format("A", "00"), "A");
    EXPECT_EQ(format("1E", "00"), "1E");
    EXPECT_EQ(format("E1", "00"), "E1");
    EXPECT_EQ(format("", "0.00"), "");
    EXPECT_EQ(format("no number", "0.00"), "no number");
    EXPECT_EQ(format(Null{}, "0.00"), "");
    EXPECT_EQ(format(Null{}, "00"), "");
}

TEST(Format, TakesLargeAmounts) {
    EXPECT_EQ(format(999999999999.99, "##,##0.00"), "999,999,999,999.99");
    EXPECT_EQ(format(1e15, "0"), "1000000000000000");
    EXPECT_EQ(format(1e20, "0"), "100000000000000000000");
    EXPECT_EQ(format(1e-20, "0.00"), "0.00");
}

#ifndef _WIN32
TEST(Format, KeepsWholeCents) {
    EXPECT_TRUE(rc::check("cents", [](std::int32_t cents) {
        const std::string text = format(cents / 100.0, "##0.00");
        RC_ASSERT(std::llround(toDouble(text) * 100) == cents);
        std::string grouped = format(cents / 100.0, "##,##0.00");
        std::erase(grouped, ',');
        RC_ASSERT(grouped == text);
    }));
}
#endif

} // namespace
} // namespace z7::cashflow
