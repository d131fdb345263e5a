#include "workbench/Amount.h"

#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

namespace z7::cashflow::workbench {
namespace {

int errorOf(const std::string& text) {
    try {
        (void)Amount::read(text);
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

TEST(Amount, SumsOfTenthsAreExact) {
    Amount sum;
    for (int i = 0; i < 1000; ++i) {
        sum += Amount::of(0.1);
    }
    EXPECT_EQ(sum, Amount::of(100.0));
    EXPECT_TRUE((Amount::of(0.1) + Amount::of(0.2) - Amount::of(0.3)).isZero());
}

TEST(Amount, NullIsNothing) { EXPECT_TRUE(Amount::of(Variant()).isZero()); }

TEST(Amount, TextHasThousandsCommasAndTwoDecimals) {
    EXPECT_EQ(Amount::of(0.0).text(), "0.00");
    EXPECT_EQ(Amount::of(999.9).text(), "999.90");
    EXPECT_EQ(Amount::of(-1000.0).text(), "-1,000.00");
    EXPECT_EQ(Amount::of(1234567.89).text(), "1,234,567.89");
    EXPECT_EQ(Amount::of(-123456.0).text(), "-123,456.00");
    EXPECT_EQ(Amount::of(-123456.0).plainText(), "-123456.00");
}

TEST(Amount, TextShowsAllDecimalsWhereTwoWouldHideSome) {
    EXPECT_EQ(Amount::of(0.005).text(), "0.0050");
    EXPECT_EQ(Amount::of(-0.0001).text(), "-0.0001");
}

TEST(Amount, ReadsWhatItWrites) {
    for (const double value : {0.0, 0.0001, -1234567.8901, 899999999999.99}) {
        EXPECT_EQ(Amount::read(Amount::of(value).text()), Amount::of(value));
    }
}

TEST(Amount, RefusesWhatIsNotAnAmount) {
    EXPECT_EQ(errorOf("a"), errors::typeMismatch);
    EXPECT_EQ(errorOf(""), errors::typeMismatch);
    EXPECT_EQ(errorOf("0.00001"), errors::typeMismatch);
    EXPECT_EQ(errorOf("1e300"), errors::overflow);
}

TEST(Amount, RefusesASumThatADoubleCouldNotHold) {
    Amount sum = Amount::of(900000000000.0);
    EXPECT_THROW(sum += Amount::of(0.0001), Error);
    Amount other = Amount::of(-900000000000.0);
    EXPECT_THROW(other -= Amount::of(0.0001), Error);
}

} // namespace
} // namespace z7::cashflow::workbench
