#include "adapters/ado/automation/Bstr.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace z7::adapters::automation {
namespace {

TEST(BstrTest, TextsOfAllPlanesComeBackUnchanged) {
    const std::string text = "ab é 凭证 \xF0\x9F\x92\xB0";
    EXPECT_EQ(Bstr(text).utf8(), text);
    EXPECT_EQ(SysStringLen(Bstr("凭证").get()), 2U);
    EXPECT_EQ(SysStringLen(Bstr("\xF0\x9F\x92\xB0").get()), 2U) << "a pair of surrogates";
}

TEST(BstrTest, ZeroCharactersAreKept) {
    const std::string text("a\0b\0", 4);
    const Bstr bstr{std::string_view(text)};
    EXPECT_EQ(SysStringLen(bstr.get()), 4U);
    EXPECT_EQ(bstr.utf8(), text);
}

TEST(BstrTest, AnUnpairedSurrogateBecomesTheReplacementCharacter) {
    const std::wstring text = {L'a', static_cast<wchar_t>(0xD800), L'b', static_cast<wchar_t>(0xDC00)};
    EXPECT_EQ(utf8(text), "a\xEF\xBF\xBD"
                          "b\xEF\xBF\xBD");
}

TEST(BstrTest, InvalidUtf8BecomesTheReplacementCharacter) {
    EXPECT_EQ(wide("a\xFF"
                   "b"),
              std::wstring({L'a', static_cast<wchar_t>(0xFFFD), L'b'}));
    EXPECT_EQ(wide("\xE5\x87").back(), static_cast<wchar_t>(0xFFFD)) << "a character that is cut off";
}

TEST(BstrTest, NothingIsTheEmptyText) {
    EXPECT_EQ(Bstr().utf8(), "");
    EXPECT_EQ(utf8OfBstr(nullptr), "");
    EXPECT_EQ(utf8({}), "");
    EXPECT_EQ(wide({}), L"");
    EXPECT_NE(Bstr(std::string_view()).get(), nullptr) << "an empty text, not a null pointer";
}

TEST(BstrTest, ATextHasOneOwner) {
    Bstr first("x");
    Bstr second(std::move(first));
    EXPECT_EQ(second.utf8(), "x");
    second = Bstr("y");
    EXPECT_EQ(second.utf8(), "y");
    *second.put() = SysAllocString(L"z");
    EXPECT_EQ(second.utf8(), "z");
    const BSTR taken = second.detach();
    EXPECT_EQ(second.get(), nullptr);
    SysFreeString(taken);
}

} // namespace
} // namespace z7::adapters::automation
