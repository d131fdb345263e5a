#include "host/windows/wideText.h"

#include "host/cli/environment.h"
#include "host/terminal/StopSignals.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <csignal>

namespace z7::cashflow::host {
namespace {

TEST(WideText, ConvertsBothWays) {
    for (const auto& [narrow, wide] : {std::pair<std::string, std::wstring>{"", L""},
                                       {"company.db", L"company.db"},
                                       {"凭证", L"\u51ED\u8BC1"},
                                       {"\xF0\x9F\x98\x80", L"\xD83D\xDE00"},
                                       {std::string("a\0b", 3), std::wstring(L"a\0b", 3)}}) {
        EXPECT_EQ(wideText(narrow), wide);
        EXPECT_EQ(utf8Text(wide), narrow);
    }
}

TEST(WideText, MarksWhatIsNotValid) {
    EXPECT_EQ(wideText("a\xFF"), L"a\xFFFD");
    EXPECT_EQ(utf8Text(L"a\xD83D"), "a\xEF\xBF\xBD");
}

TEST(WideText, FindsTheBeginningOfACharacter) {
    EXPECT_EQ(incompleteBytes(""), 0U);
    EXPECT_EQ(incompleteBytes("a"), 0U);
    EXPECT_EQ(incompleteBytes("凭"), 0U);
    EXPECT_EQ(incompleteBytes("a\xE5"), 1U);
    EXPECT_EQ(incompleteBytes("a\xE5\x87"), 2U);
    EXPECT_EQ(incompleteBytes("\xF0\x9F\x98"), 3U);
    EXPECT_EQ(incompleteBytes("\xF0\x9F\x98\x80"), 0U);
    EXPECT_EQ(incompleteBytes("\x87\x87\x87\x87"), 0U) << "no beginning at all";
}

TEST(EnvironmentOnWindows, HasVariablesWithChineseLetters) {
    SetEnvironmentVariableW(L"Z7CF_TRIED", L"\u51ED\u8BC1");
    EXPECT_EQ(environmentVariable("Z7CF_TRIED"), "凭证");
    SetEnvironmentVariableW(L"Z7CF_TRIED", L"");
    EXPECT_EQ(environmentVariable("Z7CF_TRIED").value_or("none"), "");
    SetEnvironmentVariableW(L"Z7CF_TRIED", nullptr);
    EXPECT_EQ(environmentVariable("Z7CF_TRIED"), std::nullopt);
}

TEST(EnvironmentOnWindows, KeepsSettingsInTheRoamingFolder) {
    SetEnvironmentVariableW(L"APPDATA", L"C:\\users\\\u4F1A\u8BA1\\Roaming");
    ASSERT_TRUE(settingsFolder().has_value());
    EXPECT_EQ(settingsFolder()->native(), L"C:\\users\\\u4F1A\u8BA1\\Roaming");
    SetEnvironmentVariableW(L"APPDATA", nullptr);
    EXPECT_EQ(settingsFolder(), std::nullopt);
}

} // namespace
} // namespace z7::cashflow::host
