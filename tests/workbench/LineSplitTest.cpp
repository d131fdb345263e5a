#include "workbench/changes/LineSplit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Amount of(const char* text) { return Amount::read(text); }

/// "0101 300.00" for each part.
std::vector<std::string> parts(const LineSplit& split) {
    std::vector<std::string> texts;
    for (const ItemPart& part : split.parts) {
        texts.push_back(part.item + " " + part.amount.plainText());
    }
    return texts;
}

TEST(LineSplitTest, AnItemWithoutAnAmountTakesTheWholeLine) {
    const LineSplit split = splitLine({{"0101", of("700")}, {"0102", of("300")}}, of("1000"), {{"0103", {}}}, "0101");
    EXPECT_THAT(parts(split), ElementsAre("0103 1000.00"));
    EXPECT_TRUE(split.rest.isZero());
    EXPECT_EQ(split.wished, 1U);
}

TEST(LineSplitTest, TheRestStaysOnTheFormerItemsOfTheLine) {
    const LineSplit split = splitLine({{"0101", of("1000")}}, of("1000"), {{"0102", of("300.25")}}, "0109");
    EXPECT_THAT(parts(split), ElementsAre("0102 300.25", "0101 699.75"));
    EXPECT_EQ(split.rest, of("699.75"));
}

TEST(LineSplitTest, WhatIsLeftOverOfANewLineGoesToTheProposedItem) {
    EXPECT_THAT(parts(splitLine({}, of("10"), {{"0102", of("4")}}, "0101")), ElementsAre("0102 4.00", "0101 6.00"));
}

TEST(LineSplitTest, WithoutAnItemForWhatIsLeftOverItIsRefused) {
    for (const char* proposed : {"", "0102"}) {
        const LineSplit split = splitLine({{"0102", of("10")}}, of("10"), {{"0102", of("4")}}, proposed);
        EXPECT_EQ(split.fault, LineSplit::Fault::noItemLeft);
        EXPECT_EQ(split.rest, of("6"));
        EXPECT_THAT(split.parts, IsEmpty());
    }
}

TEST(LineSplitTest, TheAmountIsTakenFromTheOtherItemsFromTheFirstOn) {
    const LineSplit split =
        splitLine({{"0101", of("2")}, {"0102", of("5")}, {"0103", of("3")}}, of("10"), {{"0104", of("4")}}, "");
    EXPECT_THAT(parts(split), ElementsAre("0104 4.00", "0102 3.00", "0103 3.00"));
}

TEST(LineSplitTest, AnAmountThatBecomesSmallerGoesBackToTheFirstOtherItem) {
    const LineSplit split =
        splitLine({{"0101", of("8")}, {"0102", of("1")}, {"0103", of("1")}}, of("10"), {{"0101", of("5")}}, "");
    EXPECT_THAT(parts(split), ElementsAre("0101 5.00", "0102 4.00", "0103 1.00"));
}

TEST(LineSplitTest, SeveralItemsShareALineAndTheLastOneTakesTheRest) {
    const LineSplit split = splitLine({}, of("10"), {{"0101", of("3")}, {"0102", of("2.5")}, {"0103", {}}}, "");
    EXPECT_THAT(parts(split), ElementsAre("0101 3.00", "0102 2.50", "0103 4.50"));
    EXPECT_THAT(parts(splitLine({}, of("10"), {{"0101", of("3")}, {"0101", {}}}, "")), ElementsAre("0101 10.00"));
}

TEST(LineSplitTest, ARedLineIsSplitIntoNegativeAmounts) {
    const LineSplit split = splitLine({{"0101", of("-10")}}, of("-10"), {{"0102", of("-4")}}, "");
    EXPECT_THAT(parts(split), ElementsAre("0102 -4.00", "0101 -6.00"));
}

TEST(LineSplitTest, TooMuchZeroAndTheOtherSignAreRefused) {
    const std::vector<ItemPart> former{{"0101", of("10")}};
    for (const char* amount : {"10.01", "0", "-1"}) {
        EXPECT_EQ(splitLine(former, of("10"), {{"0102", of(amount)}}, "").fault, LineSplit::Fault::tooMuch) << amount;
    }
    EXPECT_EQ(splitLine(former, of("10"), {{"0102", of("6")}, {"0103", of("5")}}, "").fault, LineSplit::Fault::tooMuch);
    EXPECT_EQ(splitLine(former, of("10"), {{"0102", of("10")}, {"0103", {}}}, "").fault, LineSplit::Fault::tooMuch);
    EXPECT_EQ(splitLine(former, of("-10"), {{"0102", of("-10.01")}}, "").fault, LineSplit::Fault::tooMuch);
}

} // namespace
} // namespace z7::cashflow::workbench
