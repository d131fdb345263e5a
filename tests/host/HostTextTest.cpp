#include "host/text/HostText.h"

#include "texts/translation.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace z7::cashflow::host {
namespace {

using test::hasChinese;
using test::placesOf;

// The signs of voucher kinds in keys, such as 2024/6/付/10, are the same in every language.
std::string withoutSigns(std::string_view english) {
    std::string text(english);
    const std::string sign = "/付/";
    for (std::size_t at = text.find(sign); at != std::string::npos; at = text.find(sign, at)) {
        text.replace(at, sign.size(), "/2/");
    }
    return text;
}

TEST(HostTexts, StandInBothLanguagesWithTheSamePlaces) {
    for (const HostTextEntry& entry : hostTexts()) {
        const int number = static_cast<int>(entry.id);
        EXPECT_FALSE(entry.chinese.empty()) << number;
        EXPECT_FALSE(entry.english.empty()) << number;
        EXPECT_FALSE(hasChinese(withoutSigns(entry.english))) << entry.english;
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
