#include "adapters/shared/session/ConnectionText.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <string>

namespace z7::cashflow::shared {
namespace {

std::string refusal(const std::string& text) {
    try {
        const ConnectionText taken(text, "test");
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), errors::badArgument);
        EXPECT_EQ(error.source(), "test");
        return error.description();
    }
    return {};
}

TEST(ConnectionText, IsKeywordsAndValuesWithBlanksAround) {
    const ConnectionText text(" ; Driver = {a}}b;c} ;; year=2013 ; pwd = x y;last={}", "test");
    ASSERT_EQ(text.parts().size(), 4U);
    EXPECT_EQ(text.parts()[0].keyword, "driver");
    EXPECT_EQ(text.parts()[0].value, "a}b;c");
    EXPECT_EQ(text.parts()[0].source, "Driver = {a}}b;c} ");
    EXPECT_EQ(text.find("pwd")->value, "x y");
    EXPECT_EQ(text.find("last")->value, "");
    EXPECT_EQ(text.find("nosuch"), nullptr);
    EXPECT_EQ(text.number(*text.find("year"), 1, 9999), 2013);
}

TEST(ConnectionText, RefusalsNameThePlaceAndNoValue) {
    EXPECT_EQ(refusal("sesame"), "The connection string cannot be used: each part must be keyword=value");
    EXPECT_EQ(refusal("a;b=1"), "The connection string cannot be used: each part must be keyword=value");
    EXPECT_EQ(refusal("a={sesame"), "The connection string cannot be used: the brace of a is not closed");
    EXPECT_EQ(refusal("a={x}sesame;b=1"),
              "The connection string cannot be used: something follows the closing brace of a");
    EXPECT_EQ(refusal("a=sesame;A=open"), "The connection string cannot be used: the keyword \"a\" is given twice");
    EXPECT_EQ(refusal(std::string("a=b\0c", 5)), "The connection string cannot be used: it holds a zero byte");
    EXPECT_EQ(refusal("a=" + std::string(9000, 'x')),
              "The connection string cannot be used: it has more than 8000 bytes");
}

TEST(ConnectionText, NumbersAreWholeAndInTheirRange) {
    for (const char* value : {"", "x", "1x", "0", "10000", "99999999999", "+5", "1.0"}) {
        const ConnectionText text(std::string("year=") + value, "test");
        EXPECT_THROW(static_cast<void>(text.number(*text.find("year"), 1, 9999)), Error) << value;
    }
}

TEST(ConnectionText, ValuesSurviveTheirQuoting) {
    for (const char* value : {"plain", "a;b", "a}b", "{a}", " a", "a=b", "}"}) {
        const ConnectionText text("driver=" + connectionValue(value), "test");
        EXPECT_EQ(text.find("driver")->value, value);
    }
}

} // namespace
} // namespace z7::cashflow::shared
