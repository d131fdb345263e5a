#include "host/text/reasonText.h"

#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace z7::cashflow::host {
namespace {

using testing::HasSubstr;

/// The description of the error that an action raises.
std::string raisedBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.description();
    }
    ADD_FAILURE() << "no error was raised";
    return {};
}

std::string raised(int number, const std::string& detail = {}) {
    return raisedBy([&] { raisePlatformError(number, detail); });
}

TEST(ReasonText, TellsPlatformErrorsInTheUsersLanguage) {
    for (const int number : {5, 6, 9, 13, 91, 94, 457, 3001, 3021, 3251, 3265, 3704, 3705, 3709}) {
        const std::string plain = raised(number);
        const std::string english = reasonText(Language::english, plain);
        const std::string chinese = reasonText(Language::chinese, plain);
        EXPECT_NE(english, plain) << number;
        EXPECT_NE(chinese, plain) << number;
        EXPECT_NE(chinese, english) << number;
        EXPECT_EQ(reasonText(Language::english, raised(number, "abc")), english + ": abc");
        EXPECT_EQ(reasonText(Language::chinese, raised(number, "abc")), chinese + "：abc");
    }
    EXPECT_EQ(reasonText(Language::english, raised(errors::invalidNull)),
              "A needed value is missing, such as the debit or credit amount of a line");
}

TEST(ReasonText, TellsDetailsInTheUsersLanguage) {
    const auto inChinese = [](const std::function<void()>& action) {
        const std::string text = reasonText(Language::chinese, raisedBy(action));
        return text.substr(text.find("：") + std::string("：").size());
    };
    EXPECT_EQ(inChinese([] { static_cast<void>(toDouble(Variant("twelve"))); }), "“twelve”不是数字");
    EXPECT_EQ(inChinese([] { static_cast<void>(toDate(Variant("soon"))); }), "“soon”不是日期");
    EXPECT_EQ(inChinese([] { static_cast<void>(toDate(Variant(9.0e9))); }), "日期不在公元 100 年至 9999 年之间");
    EXPECT_EQ(inChinese([] { static_cast<void>(Date::fromCivil(2023, 2, 29)); }), "没有这一天");
    EXPECT_EQ(inChinese([] { raisePlatformError(errors::objectNotSet, "a voucher line without the attribute ccode"); }),
              "凭证分录缺少属性 ccode");
    EXPECT_EQ(reasonText(Language::english, raisedBy([] { static_cast<void>(toDouble(Variant("twelve"))); })),
              "A value is not of the kind that is needed: \"twelve\" is no number");
}

TEST(ReasonText, LeavesOtherTextsAsTheyAre) {
    for (const Language language : {Language::english, Language::chinese}) {
        EXPECT_EQ(reasonText(language, "Overflowing"), "Overflowing");
        EXPECT_EQ(reasonText(language, "near \"x\": syntax error"), "near \"x\": syntax error");
        for (const char* text : {"converting 'a\tb'", "converting 'a\tb\tc'", "a\t1\t", "a\t1", "a\t1\t2\t3"}) {
            EXPECT_EQ(reasonText(language, text), text);
        }
    }
}

TEST(ReasonText, TellsTheLineInWords) {
    EXPECT_EQ(reasonText(Language::english, "The item is missing.\t3\t4"), "The item is missing. (line 3)");
    EXPECT_EQ(reasonText(Language::chinese, "项目不能为空\t3\t4"), "项目不能为空（第 3 条分录）");
    EXPECT_EQ(reasonText(Language::english, "debit 1.00\r\ncredit 2.00"), "debit 1.00; credit 2.00");
    EXPECT_EQ(reasonText(Language::chinese, "借方 1.00\r\n贷方 2.00"), "借方 1.00；贷方 2.00");
}

} // namespace
} // namespace z7::cashflow::host
