#include "z7cashflow/support/names.h"

#include <gtest/gtest.h>

#include <string>

namespace z7::cashflow {
namespace {

TEST(Names, AreLettersOfAnyScriptDigitsAndAFewSigns) {
    for (const std::string name : {"a", "_", "_9$#@", "code", "凭证", "é1", "Ω", "ж٣", "#t", "##t", "[a b]", "[a]]b]",
                                   "[[]", "[']", "[--]", "[　]", "[😀]"}) {
        EXPECT_EQ(nameLength(name), name.size()) << name;
        EXPECT_EQ(nameLength(name + " x"), name.size()) << name;
        EXPECT_EQ(nameLength(name + ";drop"), name.size()) << name;
    }
}

TEST(Names, AreNothingElse) {
    for (const char* text : {"",
                             " a",
                             "9a",
                             "$a",
                             "@a",
                             "#",
                             "##",
                             "###a",
                             "'a'",
                             "\"a\"",
                             "(a)",
                             "-",
                             "　a",
                             "\xC2\xA0",
                             "\xEF\xBB\xBF"
                             "a",
                             "（",
                             "😀",
                             "[",
                             "[]",
                             "[a",
                             "[a]]",
                             "[a\x01]",
                             "[a\n]",
                             "[\x7F]",
                             "[\xC2\x85]",
                             "[\xFF]",
                             "a\xFF",
                             "a\xE5\x87",
                             "\xED\xA0\x80"}) {
        EXPECT_EQ(nameLength(text), 0U) << text;
    }
}

TEST(Names, EndBeforeWhatLooksLikeABlankOrASign) {
    for (const char* behind : {"\xE3\x80\x80"
                               "drop",
                               "\xC2\xA0",
                               "\xE2\x80\xA8"
                               "x",
                               "\xC2\x85", "（1）", "，b", "；", "’", "\xE2\x80\x8B", "－－"}) {
        EXPECT_EQ(nameLength("a" + std::string(behind)), 1U) << behind;
    }
}

TEST(Names, HaveAtMost128Characters) {
    const std::string longest(128, 'a');
    EXPECT_EQ(nameLength(longest), 128U);
    EXPECT_EQ(nameLength(longest + "a"), 0U);
    EXPECT_EQ(nameLength("[" + longest + "]"), 130U);
    EXPECT_EQ(nameLength("[" + longest + "a]"), 0U);
    std::string wide;
    for (int i = 0; i < 128; ++i) {
        wide += "账";
    }
    EXPECT_EQ(nameLength(wide), wide.size());
    EXPECT_EQ(nameLength(wide + "账"), 0U);
}

TEST(TableNames, AreOneToThreeNames) {
    for (const std::string name : {"t", "dbo.t", "base.dbo.t", "base..t", "[a.b].[c]", "tempdb..#t", "账套.dbo.凭证"}) {
        EXPECT_EQ(tableNameLength(name), name.size()) << name;
        EXPECT_EQ(tableNameLength(name + " where"), name.size()) << name;
    }
    for (const char* text : {"", ".t", "a.", "a..", "a.b.", "a...b", "a.9", "a.'b'", "a.b..c", "a. b"}) {
        EXPECT_EQ(tableNameLength(text), 0U) << text;
    }
    EXPECT_EQ(tableNameLength("a.b.c.d"), 5U) << "the fourth is left over";
}

} // namespace
} // namespace z7::cashflow
