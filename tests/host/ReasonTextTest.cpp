#include "host/text/reasonText.h"

#include "adapters/odbc/ConnectionOptions.h"
#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/SqliteReason.h"
#include "adapters/tsql/Rewriting.h"
#include "host/text/ChineseReason.h"
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
            const bool onlyPlaces = text.empty() || text == "{0}";
            EXPECT_NE(std::any_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; }), onlyPlaces)
                << text;
            for (const char* mark : {",", ";", ":", "\"", "(", ")"}) {
                EXPECT_THAT(text, Not(HasSubstr(mark)));
            }
            EXPECT_FALSE(text.ends_with("。")) << text;
        }
    }
}

TEST(EnglishReasons, SaySomethingOfTheirOwnInEveryRoomWithPlacesCountedFromZero) {
    for (const ReasonRoom& room : reasonRooms()) {
        std::set<std::string_view> texts;
        for (const ReasonEntry& entry : room.english) {
            EXPECT_TRUE(texts.insert(entry.english).second) << entry.english;
            const auto places = distinctPlaces(entry.english);
            EXPECT_TRUE(places.empty() || *places.rbegin() + 1 == places.size()) << entry.english;
            EXPECT_FALSE(entry.english.ends_with('.')) << entry.english;
        }
    }
}

TEST(ChineseReasons, FillTheirPlacesWithArgumentsAndThenWithCauses) {
    const Explanation why{shared::DatabaseReason::columnValueBad, {"md"}, {{Reason::keyUnknown, {"k"}}}};
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

TEST(ReasonText, TranslatesWhatAnAdapterAddsToTheWordsOfADatabase) {
    const Error library(11, "SQLite", "database disk image is malformed");
    const Error damaged(11, "SQLite", {sqlite::SqliteReason::fileDamaged, {"a.db"}, {library.asCause()}});
    EXPECT_EQ(damaged.description(), "database disk image is malformed: a.db is damaged; put it back from a backup");
    EXPECT_EQ(reasonText(Language::chinese, damaged), "database disk image is malformed：a.db 已损坏，请从备份恢复");
    EXPECT_EQ(inChinese([&] {
                  throw Error(11, "SQLite", {sqlite::SqliteReason::cannotOpen, {"a.db"}, {damaged.asCause()}});
              }),
              "a.db 无法打开：database disk image is malformed：a.db 已损坏，请从备份恢复");
}

TEST(ReasonText, TranslatesConnectionStringsAndStatements) {
    EXPECT_EQ(inChinese([] { static_cast<void>(sqlite::parseConnectionString("driver=sqlite;year=x;database=a")); }),
              "连接字符串不能使用：year 应为 1 至 9999 的整数");
    EXPECT_EQ(inChinese([] { static_cast<void>(odbc::parseConnectionString("server=s")); }),
              "连接字符串不能使用：其中既没有驱动程序（Driver={...}），也没有数据源（DSN=...）");
    EXPECT_EQ(inChinese([] { static_cast<void>(tsql::rewrite("select 'x")); }), "字符串“x”之后的引号没有闭合");
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
