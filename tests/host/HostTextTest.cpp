#include "host/text/HostText.h"

#include "texts/translation.h"

#include <gtest/gtest.h>

namespace z7::cashflow::host {
namespace {

using test::hasChinese;
using test::placesOf;

TEST(HostTexts, StandInBothLanguagesWithTheSamePlaces) {
    for (const HostTextEntry& entry : hostTexts()) {
        const int number = static_cast<int>(entry.id);
        EXPECT_FALSE(entry.chinese.empty()) << number;
        EXPECT_FALSE(entry.english.empty()) << number;
        EXPECT_FALSE(hasChinese(entry.english)) << entry.english;
        const auto chinese = placesOf(entry.chinese);
        const auto english = placesOf(entry.english);
        EXPECT_EQ(chinese, english) << entry.english;
    }
}

TEST(HostTexts, FillTheirPlaces) {
    EXPECT_EQ(hostText(Language::english, HostText::noVoucher, {"2024/1/1/1"}), "There is no voucher 2024/1/1/1");
    EXPECT_EQ(hostText(Language::chinese, HostText::noVoucher, {"2024/1/1/1"}), "没有凭证 2024/1/1/1");
}

} // namespace
} // namespace z7::cashflow::host
