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

std::set<std::size_t> distinctPlaces(std::string_view text) {
    const auto places = placesOf(text);
    return {places.begin(), places.end()};
}

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
    for (const ReasonRoom& room : reasonRooms()) {
        ASSERT_EQ(room.chinese.size(), room.english.size());
        for (std::size_t i = 0; i < room.english.size(); ++i) {
            EXPECT_EQ(room.chinese[i].place, room.english[i].place);
            EXPECT_EQ(distinctPlaces(room.chinese[i].chinese), distinctPlaces(room.english[i].english))
                << room.english[i].english;
        }
    }
}

TEST(ChineseReasons, AreChineseWithFullWidthMarksAndNoStopAtTheEnd) {
    for (const ReasonRoom& room : reasonRooms()) {
        for (const ChineseReason& entry : room.chinese) {
            const std::string text(entry.chinese);
            const bool isNone = &room.english[entry.place] == &entryOf(Reason::none);
            EXPECT_NE(std::any_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; }), isNone) << text;
            for (const char* mark : {",", ";", ":", "\"", "(", ")"}) {
                EXPECT_THAT(text, Not(HasSubstr(mark)));
            }
            EXPECT_FALSE(text.ends_with("。")) << text;
        }
    }
}

TEST(ChineseReasons, FillTheirPlacesWithArgumentsAndThenWithCauses) {
    const Explanation why{Reason::columnValueBad, {"md"}, {{Reason::keyUnknown, {"k"}}}};
    EXPECT_EQ(chineseText(why), "“列表中没有键“k””不能存入列 md");
    EXPECT_EQ(englishText(why), "\"The list has no entry with the key \"k\"\" is not a value for column md");
}

enum class ForeignReason { strange };

const ReasonEntry& entryOf(ForeignReason /*reason*/) noexcept {
    static constexpr ReasonEntry entry(ForeignReason::strange, 7, "strange {0}");
    return entry;
}

TEST(ChineseReasons, AreEnglishForARoomThatTheProgramDoesNotKnow) {
    EXPECT_EQ(chineseText({ForeignReason::strange, {"thing"}}), "strange thing");
    EXPECT_EQ(Error("s", {ForeignReason::strange, {}}).number(), 7);
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
