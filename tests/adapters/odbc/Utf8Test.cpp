#include "adapters/odbc/utf8.h"

#include <gtest/gtest.h>

namespace z7::cashflow::odbc {
namespace {

TEST(OdbcUtf8, FindsTheFirstByteThatIsNone) {
    EXPECT_EQ(findBadUtf8(""), std::string_view::npos);
    EXPECT_EQ(findBadUtf8("a\x7F é 现 😀 \xF4\x8F\xBF\xBF"), std::string_view::npos);
    for (const std::string_view bad :
         {"\x80", "\xC0\xAF", "\xC1\x81", "\xC3", "\xE0\x80\x80", "\xE4\xBD", "\xED\xA0\x80", "\xF0\x80\x80\x80",
          "\xF0\x9F\x98", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xC3(", "\xE4\xBD("}) {
        EXPECT_EQ(findBadUtf8("ab" + std::string(bad)), 2U) << bad.size();
    }
}

TEST(OdbcUtf8, GoesToUtf16AndBack) {
    EXPECT_EQ(widened("aé现😀"), u"aé现😀");
    for (const std::string_view text : {std::string_view("aé现😀"), std::string_view("\0\x7F", 2), std::string_view()}) {
        EXPECT_EQ(narrowed(widened(text)), text);
    }
    EXPECT_EQ(narrowed(std::u16string{u'a', char16_t(0xD83D)}), "a\xEF\xBF\xBD");
    EXPECT_EQ(narrowed(std::u16string{char16_t(0xDE00), u'a'}), "\xEF\xBF\xBD"
                                                                "a");
    EXPECT_EQ(widened("a\xFF"), (std::u16string{u'a', char16_t(0xFFFD)}));
}

} // namespace
} // namespace z7::cashflow::odbc
