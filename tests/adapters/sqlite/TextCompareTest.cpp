#include "adapters/sqlite/functions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace z7::cashflow::sqlite {
namespace {

int sign(int value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

TEST(TextCompare, IsOneOrderForAllPairs) {
    const std::vector<std::string> texts{
        "",  "a", "A ", "ab",   "aB",           "B",    "Ä", "äb", "ÄC", "汉", "汉字", "漢",  "é",  "e\xCC\x81",
        "Z", "ſ", "s",  "\xC3", "\xC3\x84\x80", "\x80", "ÿ", "İ",  "i",  "1",  "10",   "  a", "ａ", "Ａ"};
    for (const std::string& a : texts) {
        EXPECT_EQ(compareTexts(a, a), 0) << a;
        EXPECT_EQ(compareTexts(a, a + "  "), 0) << a;
        for (const std::string& b : texts) {
            EXPECT_EQ(sign(compareTexts(a, b)), -sign(compareTexts(b, a))) << a << " " << b;
            for (const std::string& c : texts) {
                if (compareTexts(a, b) <= 0 && compareTexts(b, c) <= 0) {
                    EXPECT_LE(compareTexts(a, c), 0) << a << " " << b << " " << c;
                }
            }
        }
    }
    EXPECT_EQ(compareTexts("ÄB", "äb"), 0);
    EXPECT_EQ(compareTexts("Ａ", "ａ"), 0);
    EXPECT_NE(compareTexts(" a", "a"), 0);
    EXPECT_LT(compareTexts("a", "B"), 0);
}

TEST(Like, MatchesAsTheServerDoesAndEndsSoon) {
    for (const auto& [text, pattern] : std::vector<std::pair<std::string, std::string>>{{"", ""},
                                                                                        {"", "%"},
                                                                                        {"abc", "ABC"},
                                                                                        {"abc", "a%"},
                                                                                        {"abc", "%c"},
                                                                                        {"abc", "%b%"},
                                                                                        {"abc", "a_c"},
                                                                                        {"汉字", "汉_"},
                                                                                        {"汉字", "__"},
                                                                                        {"ÄÖ", "%ö"},
                                                                                        {"aXbXc", "a%x%c"},
                                                                                        {"abcabd", "%ab_"},
                                                                                        {"a5", "a[0-9]"},
                                                                                        {"ax", "a[^0-9]"},
                                                                                        {"a%", "a[%]"},
                                                                                        {"a]", "a[]]"},
                                                                                        {"a-", "a[-x]"},
                                                                                        {"汉", "[字汉]"}}) {
        EXPECT_TRUE(isLike(text, pattern)) << text << " " << pattern;
    }
    for (const auto& [text, pattern] : std::vector<std::pair<std::string, std::string>>{{"a", ""},
                                                                                        {"", "_"},
                                                                                        {"abc", "ab"},
                                                                                        {"abc", "%b"},
                                                                                        {"汉字", "_"},
                                                                                        {"ax", "a[0-9]"},
                                                                                        {"a5", "a[^0-9]"},
                                                                                        {"a", "[a"},
                                                                                        {"a", "["}}) {
        EXPECT_FALSE(isLike(text, pattern)) << text << " " << pattern;
    }
    EXPECT_FALSE(isLike(std::string(20000, 'a'), "%a%a%a%a%a%a%a%a%b")) << "ends soon also for a hostile pattern";
}

} // namespace
} // namespace z7::cashflow::sqlite
