#include "z7cashflow/support/guid.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <set>

namespace z7::cashflow {
namespace {

using Bytes = std::array<std::uint8_t, 16>;

std::string textOf(const Bytes& bytes) {
    return guidText([bytes] { return std::optional(bytes); });
}

TEST(Guid, WritesThreeLittleEndianWordsAndFourBytes) {
    EXPECT_EQ(textOf({0x78, 0x56, 0x34, 0x12, 0xF0, 0xDE, 0xBC, 0x9A, 0x01, 0x02, 0x03, 0x04, 0x10, 0x22, 0xAB, 0xFF}),
              "12345678"
              "9ABCDEF0"
              "04030201"
              "1022ABFF"
              "00000000");
}

TEST(Guid, FillsWordsUpWithZeros) {
    EXPECT_EQ(textOf({0x05, 0, 0, 0, 0, 0x0A, 0, 0, 0, 0, 0, 0x0B, 0x11, 0x22, 0x33, 0x44}), "00000005"
                                                                                             "00000A00"
                                                                                             "0B000000"
                                                                                             "11223344"
                                                                                             "00000000");
    EXPECT_EQ(textOf({}), std::string(40, '0'));
}

TEST(Guid, PadsASingleDigitWithAZeroButNotASingleLetter) {
    EXPECT_EQ(textOf({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x05, 0x0A, 0x0F, 0x09}),
              std::string(24, '0') + "05" + "A" + "F" + "09" + "00000000");
    EXPECT_EQ(textOf({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x0E, 0x1E, 0xE1, 0x0D}),
              std::string(24, '0') + "E" + "1E" + "E1" + "D" + "00000000");
}

TEST(Guid, IsEmptyWithoutRandomBytes) {
    EXPECT_EQ(guidText([]() -> std::optional<Bytes> { return std::nullopt; }), "");
    EXPECT_EQ(guidText([]() -> std::optional<Bytes> { throw Error(5, "source", "no bytes"); }), "");
}

TEST(Guid, OfTheSystemIsNewEachTimeAndSafeInATableName) {
    const GuidSource source = systemGuidSource();
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::string text = guidText(source);
        EXPECT_TRUE(seen.insert(text).second) << text;
        EXPECT_LE(text.size(), 40U);
        EXPECT_GE(text.size(), 36U);
        EXPECT_TRUE(text.ends_with("00000000")) << text;
        EXPECT_EQ(text.find_first_not_of("0123456789ABCDEF"), std::string::npos) << text;
    }
}

TEST(Guid, OfTheSystemIsMarkedAsRandomAndOtherwiseHasNoFixedBit) {
    const GuidSource source = systemGuidSource();
    Bytes inAll{};
    Bytes inAny{};
    inAll.fill(0xFF);
    for (int i = 0; i < 256; ++i) {
        const auto bytes = source();
        ASSERT_TRUE(bytes);
        for (std::size_t at = 0; at < bytes->size(); ++at) {
            inAll[at] &= (*bytes)[at];
            inAny[at] |= (*bytes)[at];
        }
    }
    Bytes always{};
    Bytes possible{};
    possible.fill(0xFF);
    always[7] = 0x40;
    possible[7] = 0x4F;
    always[8] = 0x80;
    possible[8] = 0xBF;
    EXPECT_EQ(inAll, always);
    EXPECT_EQ(inAny, possible);
}

} // namespace
} // namespace z7::cashflow
