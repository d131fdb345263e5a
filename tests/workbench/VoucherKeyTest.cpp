#include "workbench/vouchers/VoucherKey.h"

#include <gtest/gtest.h>

namespace z7::cashflow::workbench {
namespace {

TEST(VoucherKey, ReadsFourNumbers) {
    EXPECT_EQ(readVoucherKey("2024/1/2/15"), (VoucherKey{2024, 1, 2, 15}));
    EXPECT_EQ(readVoucherKey("0001/012/0003/0"), (VoucherKey{1, 12, 3, 0}));
    EXPECT_EQ(readVoucherKey("9999/255/32767/2147483647"), (VoucherKey{9999, 255, 32767, 2147483647}));
}

TEST(VoucherKey, RefusesEveryOtherText) {
    for (const char* text : {"",
                             "/",
                             "///",
                             "2024",
                             "2024/1/2",
                             "2024/1/2/",
                             "/1/2/3",
                             "2024//2/3",
                             "2024/1/2/3/4",
                             "2024/1/2/3/",
                             " 2024/1/2/3",
                             "2024/1/2/3 ",
                             "2024/1/2/+3",
                             "2024/1/-2/3",
                             "2024/1/2/3.0",
                             "2024/1/2/x",
                             "2024-1-2-3",
                             "2024/1/2/0x3",
                             "0/1/2/3",
                             "10000/1/2/3",
                             "2024/256/2/3",
                             "2024/1/32768/3",
                             "2024/1/2/2147483648",
                             "2024/1/2/99999999999999999999999",
                             "2024/1/2/3'; drop table code --",
                             "２０２４/1/2/3"}) {
        EXPECT_EQ(readVoucherKey(text), std::nullopt) << text;
    }
}

TEST(VoucherKey, SaysWhichPartIsOutOfItsRange) {
    using Part = KeyPartOutOfRange::Part;
    const auto outOf = [](const char* text) {
        const auto part = keyPartOutOfRange(text);
        return part ? std::optional(part->part) : std::nullopt;
    };
    EXPECT_EQ(outOf("0/1/1/1"), Part::year);
    EXPECT_EQ(outOf("10000/256/1/1"), Part::year) << "the first one is named";
    EXPECT_EQ(outOf("2024/256/1/1"), Part::period);
    EXPECT_EQ(outOf("2024/1/32768/1"), Part::kind);
    EXPECT_EQ(outOf("2024/1/1/99999999999999999999"), Part::number);
    EXPECT_EQ(outOf("2024/255/32767/2147483647"), std::nullopt);
    EXPECT_EQ(outOf("2024/1/1"), std::nullopt) << "no key at all";
    EXPECT_EQ(outOf("2024/256/x/1"), Part::period) << "x may be the sign of a kind";
    EXPECT_EQ(keyPartOutOfRange("2024/300/1/1")->most, 255);
}

TEST(VoucherKey, WritesWhatItReads) {
    const VoucherKey key{2024, 12, 3, 40000};
    EXPECT_EQ(voucherKeyText(key), "2024/12/3/40000");
    EXPECT_EQ(readVoucherKey(voucherKeyText(key)), key);
}

TEST(VoucherKey, EqualsOnlyAKeyOfTheSameYearPeriodKindAndNumber) {
    const VoucherKey key{2024, 1, 2, 15};
    EXPECT_EQ(key, (VoucherKey{2024, 1, 2, 15}));
    EXPECT_NE(key, (VoucherKey{2023, 1, 2, 15}));
    EXPECT_NE(key, (VoucherKey{2024, 2, 2, 15}));
    EXPECT_NE(key, (VoucherKey{2024, 1, 3, 15}));
    EXPECT_NE(key, (VoucherKey{2024, 1, 2, 16}));
}

TEST(WrittenVoucherKey, TakesTheSignOfAKindInPlaceOfItsNumber) {
    const auto written = readWrittenVoucherKey("2024/1/付/5");
    ASSERT_TRUE(written);
    EXPECT_EQ(written->sign, "付");
    EXPECT_EQ(written->key, (VoucherKey{2024, 1, 0, 5}));
    EXPECT_EQ(readVoucherKey("2024/1/付/5"), std::nullopt);
    const auto number = readWrittenVoucherKey("2024/1/2/5");
    ASSERT_TRUE(number);
    EXPECT_EQ(number->sign, "");
    EXPECT_EQ(number->key, (VoucherKey{2024, 1, 2, 5}));
}

TEST(WrittenVoucherKey, HasNoSignElsewhere) {
    for (const char* text : {"付/1/2/5", "2024/付/2/5", "2024/1/2/付", "2024/1//5", "2024/1/付", "2024/1/付/5/6",
                             "a/b/c/d", "2024/256/付/5", "2024/1/付/2147483648"}) {
        EXPECT_FALSE(readWrittenVoucherKey(text)) << text;
    }
    ASSERT_TRUE(keyPartOutOfRange("2024/256/付/5"));
    EXPECT_EQ(keyPartOutOfRange("2024/256/付/5")->part, KeyPartOutOfRange::Part::period);
}

} // namespace
} // namespace z7::cashflow::workbench
