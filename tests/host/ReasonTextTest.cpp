#include "host/text/reasonText.h"

#include "host/text/chineseReasons.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/textPlaces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

namespace z7::cashflow::host {
namespace {

using testing::HasSubstr;
using testing::Not;

/// The error that an action raises, in Chinese.
std::string inChinese(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return reasonText(Language::chinese, error);
    }
    ADD_FAILURE() << "no error was raised";
    return {};
}

TEST(ChineseReasons, FollowTheReasonsOfTheLibraryOneByOne) {
    ASSERT_EQ(chineseReasons().size(), reasonTable().size());
    for (std::size_t i = 1; i < reasonTable().size(); ++i) {
        const ReasonEntry& english = reasonTable()[i];
        const ChineseReason& chinese = chineseReasons()[i];
        EXPECT_EQ(chinese.id, english.id);
        const auto placesInEnglish = placesOf(english.english);
        const auto placesInChinese = placesOf(chinese.chinese);
        EXPECT_EQ((std::set(placesInChinese.begin(), placesInChinese.end())),
                  (std::set(placesInEnglish.begin(), placesInEnglish.end())))
            << english.english;
    }
}

TEST(ChineseReasons, AreChineseWithFullWidthMarksAndNoStopAtTheEnd) {
    for (const ChineseReason& entry : chineseReasons().subspan(1)) {
        const std::string text(entry.chinese);
        EXPECT_TRUE(std::any_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; })) << text;
        for (const char* mark : {",", ";", ":", "\"", "(", ")"}) {
            EXPECT_THAT(text, Not(HasSubstr(mark)));
        }
        EXPECT_FALSE(text.ends_with("。")) << text;
    }
}

TEST(ReasonText, SaysWhatConversionsFoundInTheUsersLanguage) {
    EXPECT_EQ(inChinese([] { static_cast<void>(toDouble(Variant("twelve"))); }), "“twelve”不是数字");
    EXPECT_EQ(inChinese([] { static_cast<void>(toDate(Variant("soon"))); }), "“soon”不是日期");
    EXPECT_EQ(inChinese([] { static_cast<void>(toDate(Variant(9.0e9))); }), "日期不在公元 100 年至 9999 年之间");
    EXPECT_EQ(inChinese([] { static_cast<void>(Date::fromCivil(2023, 2, 29)); }), "日期不存在");
    EXPECT_EQ(inChinese([] { static_cast<void>(toDouble(Variant())); }), "必填的值为空，例如分录没有借方或贷方金额");
    EXPECT_EQ(inChinese([] { raisePlatformError(Reason::attributeMissing, {"ccode"}); }), "凭证分录缺少属性 ccode");
    EXPECT_EQ(reasonText(Language::english, Error("Z7CashFlow", {Reason::notANumber, {"twelve"}})),
              "\"twelve\" is not a number");
}

TEST(ReasonText, AddsTheReasonToATextThatIsLaidDown) {
    const Error error(1000, "CashFlow", "现金流量行没有该字段！", {Reason::rowFieldUnknown, {"iyear"}});
    EXPECT_EQ(reasonText(Language::chinese, error), "现金流量行没有该字段！（现金流量行没有字段“iyear”）");
    EXPECT_EQ(
        reasonText(Language::english, Error(1000, "CashFlow", "No such field.", {Reason::rowFieldUnknown, {"iyear"}})),
        "No such field. (The row has no field named \"iyear\")");
}

TEST(ReasonText, LeavesTheTextsOfADatabaseAsTheyAre) {
    for (const Language language : {Language::english, Language::chinese}) {
        EXPECT_EQ(reasonText(language, Error(1, "SQLite", "near \"x\": syntax error")), "near \"x\": syntax error");
        for (const char* text : {"converting 'a\tb'", "converting 'a\tb\tc'", "a\t1\t", "a\t1", "a\t1\t2\t3"}) {
            EXPECT_EQ(reasonText(language, std::string(text)), text);
        }
    }
}

TEST(ReasonText, NamesTheLineInWords) {
    EXPECT_EQ(reasonText(Language::english, Error(10008, "CashFlow", "The item is missing.\t3\t4")),
              "The item is missing. (line 3)");
    EXPECT_EQ(reasonText(Language::chinese, std::string("项目不能为空\t3\t4")), "项目不能为空（第 3 条分录）");
    EXPECT_EQ(reasonText(Language::english, std::string("debit 1.00\r\ncredit 2.00")), "debit 1.00; credit 2.00");
    EXPECT_EQ(reasonText(Language::chinese, std::string("借方 1.00\r\n贷方 2.00")), "借方 1.00；贷方 2.00");
}

} // namespace
} // namespace z7::cashflow::host
