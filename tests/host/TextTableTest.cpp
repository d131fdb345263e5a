#include "host/terminal/TextTable.h"

#include "adapters/terminal/printable.h"
#include "host/text/amountText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::host {
namespace {

using testing::ElementsAre;

TEST(TextTable, AlignsWideCharactersOnTwoColumns) {
    TextTable table({{"凭证"}, {"Sum", TextTable::Align::right}, {"End"}});
    table.add({"2024/1/1/1", "1.00", "x"});
    table.add({"收", "12,345.00", "是"});
    EXPECT_THAT(table.lines(), ElementsAre("凭证              Sum  End", "----------  ---------  ---",
                                           "2024/1/1/1       1.00  x", "收          12,345.00  是"));
}

TEST(TextTable, CutsCellsForANarrowTerminalOnly) {
    TextTable table({{"Summary", TextTable::Align::left, true}, {"Name"}});
    table.add({"借方金额借方金额", "whole, however long"});
    table.add({"abcdefghij", "e"});
    table.add({"abcdefghijk", "e"});
    EXPECT_THAT(table.lines(),
                ElementsAre("Summary           Name", "----------------  -------------------",
                            "借方金额借方金额  whole, however long", "abcdefghij        e", "abcdefghijk       e"));
    EXPECT_EQ(table.lines(37), table.lines()) << "it just fits";
    EXPECT_THAT(table.lines(31), ElementsAre("Summary     Name", "----------  -------------------",
                                             "借方金额…   whole, however long", "abcdefghij  e", "abcdefghi…  e"));
    EXPECT_EQ(table.lines(5), table.lines(31)) << "no column gets narrower than ten";
}

TEST(TextTable, CutsTheWidestColumnFirst) {
    TextTable table({{"A", TextTable::Align::left, true}, {"B", TextTable::Align::left, true}});
    table.add({std::string(20, 'a'), std::string(14, 'b')});
    EXPECT_EQ(table.lines(30).back(), std::string(13, 'a') + "…  " + std::string(14, 'b'));
    EXPECT_EQ(table.lines(28).back(), std::string(12, 'a') + "…  " + std::string(12, 'b') + "…");
}

TEST(TextTable, FillsMissingCellsAndLeavesOutTooMany) {
    TextTable table({{"A"}, {"B"}});
    EXPECT_TRUE(table.empty());
    table.add({"1"});
    table.add({"1", "2", "3"});
    EXPECT_FALSE(table.empty());
    EXPECT_THAT(table.lines(), ElementsAre("A  B", "-  -", "1", "1  2"));
}

TEST(TextTable, MakesCellsSafeForATerminal) {
    TextTable table({{"A"}});
    table.add({"\x1b[31mred\nline"});
    EXPECT_EQ(table.lines().back(), "\xEF\xBF\xBD[31mred line");
}

TEST(Printable, LeavesTextAndReplacesWhatMovesTheCursor) {
    EXPECT_EQ(terminal::printable("摘要 Summary é 𠮷"), "摘要 Summary é 𠮷");
    EXPECT_EQ(terminal::printable("a\r\nb\tc\nd\re"), "a b c d e");
    const std::string replaced = "\xEF\xBF\xBD";
    EXPECT_EQ(terminal::printable("\x1b]0;t\x07"), replaced + "]0;t" + replaced);
    EXPECT_EQ(terminal::printable("\xC2\x9B"
                                  "31m"),
              replaced + "31m")
        << "the one-character form of escape and bracket";
    EXPECT_EQ(terminal::printable("a\xE2\x80\xAE"
                                  "b"),
              "a" + replaced + "b")
        << "right-to-left override";
    EXPECT_EQ(terminal::printable("a\xE2\x80\xA8"
                                  "b"),
              "a" + replaced + "b")
        << "line separator";
    EXPECT_EQ(terminal::printable("\xFF"
                                  "a\xE5\x80"),
              replaced + "a" + replaced + replaced);
    EXPECT_EQ(terminal::printable(std::string("a\0b", 3)), "a" + replaced + "b");
    EXPECT_EQ(terminal::printable("\x7F"), replaced);
}

TEST(Printable, CountsColumns) {
    EXPECT_EQ(terminal::displayWidth(""), 0U);
    EXPECT_EQ(terminal::displayWidth("abc"), 3U);
    EXPECT_EQ(terminal::displayWidth("借方"), 4U);
    EXPECT_EQ(terminal::displayWidth("e\xCC\x81"), 1U) << "a combining accent takes no column";
    EXPECT_EQ(terminal::fitToWidth("借方", 3), "借");
    EXPECT_EQ(terminal::fitToWidth("借方", 4), "借方");
    EXPECT_EQ(terminal::fitToWidth("abc", 0), "");
}

const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467"; // man, woman and girl, joined to one

TEST(Printable, KeepsTheJoinerBetweenTwoEmojiAlone) {
    EXPECT_EQ(terminal::printable(family), family);
    const std::string toned = "\U0001F469\U0001F3FD\u200D\U0001F4BB"; // a woman of a skin tone and a computer
    EXPECT_EQ(terminal::printable(toned), toned);
    const std::string heart = "\u2764\uFE0F\u200D\U0001F525"; // a heart, shown as emoji, and a fire
    EXPECT_EQ(terminal::printable(heart), heart);
    const std::string replaced = "\xEF\xBF\xBD";
    EXPECT_EQ(terminal::printable("a\u200D" + family), "a" + replaced + family);
    EXPECT_EQ(terminal::printable("\U0001F468\u200Db"), "\U0001F468" + replaced + "b");
    EXPECT_EQ(terminal::printable("\U0001F468\u200D"), "\U0001F468" + replaced) << "at the end";
    EXPECT_EQ(terminal::printable("\u200D\U0001F468"), replaced + "\U0001F468");
    EXPECT_EQ(terminal::printable("\U0001F468\u200D\u200D\U0001F467"),
              "\U0001F468" + replaced + replaced + "\U0001F467");
    EXPECT_EQ(terminal::printable("\U0001F468\u200D\xFF\U0001F467"), "\U0001F468" + replaced + replaced + "\U0001F467");
}

TEST(Printable, CountsJoinedEmojiAsOneWideCharacter) {
    EXPECT_EQ(terminal::displayWidth(family), 2U);
    EXPECT_EQ(terminal::displayWidth(family + family + "x"), 5U);
    EXPECT_EQ(terminal::displayWidth("\U0001F44D\U0001F3FD"), 2U) << "a hand of a skin tone";
    EXPECT_EQ(terminal::displayWidth("\U0001F1E8\U0001F1F3\U0001F1E9\U0001F1EA"), 4U) << "two flags";
    EXPECT_EQ(terminal::firstCharacter(family + "x"), family);
    EXPECT_EQ(terminal::firstCharacter("e\u0301x"), "e\u0301");
    EXPECT_EQ(terminal::firstCharacter("\xFF\xFF"), "\xFF");
    EXPECT_EQ(terminal::firstCharacter(""), "");
    EXPECT_EQ(terminal::fitToWidth("a" + family + "b", 2), "a") << "never a part of a character";
    EXPECT_EQ(terminal::fitToWidth("a" + family + "b", 3), "a" + family);
}

TEST(TextTable, AlignsJoinedEmoji) {
    TextTable table({{"Summary", TextTable::Align::left, true}, {"End"}});
    table.add({family, "x"});
    table.add({"abcdefghijklm" + family + family, "x"});
    EXPECT_EQ(table.lines()[2], family + std::string(17, ' ') + "x");
    EXPECT_EQ(table.lines(21).back(), "abcdefghijklm" + family + "…  x") << "a cell is cut beside a character";
}

TEST(AmountText, ShowsTwoDecimalsAndThousands) {
    EXPECT_EQ(amountText(1234.5), "1,234.50");
    EXPECT_EQ(amountText(0.0), "0.00");
    EXPECT_EQ(amountText(-1234567.891), "-1,234,567.89");
}

} // namespace
} // namespace z7::cashflow::host
