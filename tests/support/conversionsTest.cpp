#include "z7cashflow/support/conversions.h"
#include "doubles/ContextGuard.h"

#include <gtest/gtest.h>
#ifndef _WIN32 // Debian has no rapidcheck for Windows
#include <rapidcheck.h>
#endif

#include <clocale>
#include <cmath>
#include <limits>

namespace z7::cashflow {
namespace {

std::int16_t i16(int number) { return static_cast<std::int16_t>(number); }

TEST(NumberText, WritesNoMoreThanFifteenSignificantDigits) {
    EXPECT_EQ(numberText(0.1 + 0.2), "0.3");
    EXPECT_EQ(numberText(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(numberText(2.0 / 3.0), "0.666666666666667");
    EXPECT_EQ(numberText(1234.565), "1234.565");
    EXPECT_EQ(numberText(100.0), "100");
    EXPECT_EQ(numberText(-0.5), "-0.5");
    EXPECT_EQ(numberText(123456789012345.0), "123456789012345");
    EXPECT_EQ(numberText(12345678901234.56), "12345678901234.6");
}

TEST(NumberText, HasNoExponentBetweenTheBounds) {
    EXPECT_EQ(numberText(999999999999999.0), "999999999999999");
    EXPECT_EQ(numberText(-999999999999999.0), "-999999999999999");
    EXPECT_EQ(numberText(100000000000000.0), "100000000000000");
    EXPECT_EQ(numberText(0.00001), "0.00001");
    EXPECT_EQ(numberText(1e-14), "0.00000000000001");
    EXPECT_EQ(numberText(-2.5e-10), "-0.00000000025");
    EXPECT_EQ(numberText(1.5e-15), "0.0000000000000015");
}

TEST(NumberText, WritesAnExponentOutsideTheBounds) {
    EXPECT_EQ(numberText(1.5e15), "1.5E+15");
    EXPECT_EQ(numberText(-2e100), "-2E+100");
    EXPECT_EQ(numberText(9.5e-16), "9.5E-16");
}

TEST(NumberText, ReadsBackOutsideTheBounds) {
    for (const double number : {1e16, 1.5e20, -3e100, 1e-16, 2.25e-30, -1e-200}) {
        const auto back = readNumber(numberText(number));
        ASSERT_TRUE(back) << numberText(number);
        EXPECT_NEAR(*back / number, 1.0, 1e-14) << numberText(number);
        EXPECT_NE(numberText(number).find('E'), std::string::npos) << numberText(number);
    }
}

TEST(NumberText, ZeroHasNoSign) {
    EXPECT_EQ(numberText(0.0), "0");
    EXPECT_EQ(numberText(-0.0), "0");
}

#ifndef _WIN32
TEST(NumberText, ReadsBackAsTheSameNumberToFifteenDigits) {
    EXPECT_TRUE(rc::check("numberText and readNumber", [](int units, unsigned char decimals) {
        const double number = units / std::pow(10.0, decimals % 8);
        const auto back = readNumber(numberText(number));
        RC_ASSERT(back.has_value());
        RC_ASSERT(std::abs(*back - number) <= std::abs(number) * 1e-14);
        RC_ASSERT(numberText(*back) == numberText(number));
    }));
}
#endif

TEST(ToText, WritesEachTypeInItsForm) {
    EXPECT_EQ(toText("text"), "text");
    EXPECT_EQ(toText(""), "");
    EXPECT_EQ(toText(std::uint8_t{255}), "255");
    EXPECT_EQ(toText(i16(-32768)), "-32768");
    EXPECT_EQ(toText(std::int32_t{2147483647}), "2147483647");
    EXPECT_EQ(toText(0.25), "0.25");
    EXPECT_EQ(toText(true), "True");
    EXPECT_EQ(toText(false), "False");
    EXPECT_EQ(toText(Date(41279.0)), "2013-01-05");
    EXPECT_EQ(toText(Date(41279.5)), "2013-01-05 12:00:00");
}

TEST(ToText, RefusesNullWhereAValueIsNeeded) {
    EXPECT_ERROR(toText(Null{}), errors::invalidNull);
    EXPECT_EQ(toTextOrEmpty(Null{}), "");
    EXPECT_EQ(toTextOrEmpty(i16(7)), "7");
}

TEST(ToText, DoesNotFollowTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, name);
        EXPECT_EQ(toText(1234.5), "1234.5") << name;
        EXPECT_EQ(toDouble("1,234.5"), 1234.5) << name;
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(ToInteger, RoundsHalfToEven) {
    EXPECT_EQ(toInt16(0.5), 0);
    EXPECT_EQ(toInt16(1.5), 2);
    EXPECT_EQ(toInt16(2.5), 2);
    EXPECT_EQ(toInt16(3.5), 4);
    EXPECT_EQ(toInt16(-2.5), -2);
    EXPECT_EQ(toInt16(-3.5), -4);
    EXPECT_EQ(toInt16("2.5"), 2);
    EXPECT_EQ(toInt16("2.51"), 3);
    EXPECT_EQ(toInt32(1000000.5), 1000000);
    EXPECT_EQ(toInt32("1000001.5"), 1000002);
    EXPECT_EQ(toByte(254.5), 254);
    EXPECT_EQ(toByte(-0.5), 0);
}

TEST(ToInteger, RefusesWhatIsOutOfRange) {
    EXPECT_EQ(toByte(255.4), 255);
    EXPECT_ERROR(toByte(255.5), errors::overflow);
    EXPECT_ERROR(toByte(i16(-1)), errors::overflow);
    EXPECT_ERROR(toByte("256"), errors::overflow);
    EXPECT_EQ(toInt16(32767.4), 32767);
    EXPECT_ERROR(toInt16(32767.5), errors::overflow);
    EXPECT_EQ(toInt16(-32768.5), -32768);
    EXPECT_ERROR(toInt16(-32768.6), errors::overflow);
    EXPECT_ERROR(toInt16("32768"), errors::overflow);
    EXPECT_ERROR(toInt16(std::int32_t{40000}), errors::overflow);
    EXPECT_EQ(toInt32(2147483647.4), 2147483647);
    EXPECT_ERROR(toInt32(2147483647.5), errors::overflow);
    EXPECT_EQ(toInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_ERROR(toInt32(1e300), errors::overflow);
    EXPECT_ERROR(toInt32(std::numeric_limits<double>::infinity()), errors::overflow);
}

TEST(ToInteger, DistinguishesTextThatIsNotANumberFromNull) {
    EXPECT_ERROR(toByte("x"), errors::typeMismatch);
    EXPECT_ERROR(toInt16(""), errors::typeMismatch);
    EXPECT_ERROR(toInt32("1a"), errors::typeMismatch);
    EXPECT_ERROR(toByte(Null{}), errors::invalidNull);
    EXPECT_ERROR(toInt16(Null{}), errors::invalidNull);
    EXPECT_ERROR(toInt32(Null{}), errors::invalidNull);
    EXPECT_ERROR(toDouble(Null{}), errors::invalidNull);
    EXPECT_ERROR(toDouble("abc"), errors::typeMismatch);
}

TEST(ToInteger, TakesBooleansAndDatesByTheirNumber) {
    EXPECT_EQ(toInt16(true), -1);
    EXPECT_EQ(toInt16(false), 0);
    EXPECT_EQ(toInt32(Date(41279.0)), 41279);
    EXPECT_EQ(toDouble(Date(41279.5)), 41279.5);
    EXPECT_EQ(toDouble(true), -1.0);
}

#ifndef _WIN32
TEST(ToInteger, EqualsExactRoundingForEveryHalf) {
    EXPECT_TRUE(rc::check("half to even", [](std::int16_t whole) {
        const double half = whole + 0.5;
        const double expected = 2.0 * std::nearbyint(half / 2.0);
        RC_PRE(expected >= -32768.0 && expected <= 32767.0);
        RC_ASSERT(toInt16(half) == static_cast<std::int16_t>(expected));
    }));
}
#endif

TEST(ToDouble, RefusesNumbersBeyondADouble) { EXPECT_ERROR(toDouble("1e999"), errors::overflow); }

TEST(ToBool, ReadsWordsInAnyCaseAndNumbers) {
    EXPECT_TRUE(toBool("true"));
    EXPECT_TRUE(toBool("TRUE"));
    EXPECT_TRUE(toBool("True"));
    EXPECT_FALSE(toBool("false"));
    EXPECT_FALSE(toBool("FALSE"));
    EXPECT_FALSE(toBool("0"));
    EXPECT_TRUE(toBool("1"));
    EXPECT_TRUE(toBool("-1"));
    EXPECT_TRUE(toBool("0.1"));
    EXPECT_FALSE(toBool("0.0"));
    EXPECT_TRUE(toBool(i16(5)));
    EXPECT_FALSE(toBool(0.0));
    EXPECT_TRUE(toBool(true));
    EXPECT_ERROR(toBool("yes"), errors::typeMismatch);
    EXPECT_ERROR(toBool(""), errors::typeMismatch);
    EXPECT_ERROR(toBool(Null{}), errors::invalidNull);
}

TEST(ToDate, ReadsTextsByTheDateRuleAndNumbersAsDayNumbers) {
    EXPECT_EQ(toDate("2013-1-5"), Date(41279.0));
    EXPECT_EQ(toDate(Date(3.0)), Date(3.0));
    EXPECT_EQ(toDate(i16(2)), Date(2.0));
    EXPECT_ERROR(toDate("tomorrow"), errors::typeMismatch);
    EXPECT_ERROR(toDate(Null{}), errors::invalidNull);
}

TEST(ReadNumber, TakesBlanksSignCommasFractionAndExponent) {
    EXPECT_EQ(readNumber("5"), 5.0);
    EXPECT_EQ(readNumber("  5 "), 5.0);
    EXPECT_EQ(readNumber("+5"), 5.0);
    EXPECT_EQ(readNumber("-5.25"), -5.25);
    EXPECT_EQ(readNumber(".5"), 0.5);
    EXPECT_EQ(readNumber("1,234,567.5"), 1234567.5);
    EXPECT_EQ(readNumber("1e3"), 1000.0);
    EXPECT_EQ(readNumber("1.5E-2"), 0.015);
    EXPECT_EQ(readNumber("1E+2"), 100.0);
    EXPECT_EQ(readNumber("007"), 7.0);
}

TEST(ReadNumber, RefusesEverythingElse) {
    for (const char* text :
         {"",    " ",     "a", "1a", "a1", "--1", "+-1", "1 2",  "0x10", "inf", "nan", "infinity", "1e",  "e1",
          "1e+", "1.2.3", "-", ".",  ",",  "1-",  "#1",  "True", "１",   ",1",  "1,",  "1,,2",     "1,.5"}) {
        EXPECT_FALSE(readNumber(text)) << text;
    }
    EXPECT_FALSE(readNumber(std::string_view("1\0", 2)));
}

TEST(LeadingNumber, ReadsWhatTheTextBeginsWith) {
    EXPECT_EQ(leadingNumber("12a"), 12.0);
    EXPECT_EQ(leadingNumber("-3.5x"), -3.5);
    EXPECT_EQ(leadingNumber("1,234"), 1.0);
    EXPECT_EQ(leadingNumber("abc"), 0.0);
    EXPECT_EQ(leadingNumber(""), 0.0);
    EXPECT_EQ(leadingNumber("100.50"), 100.5);
    EXPECT_EQ(leadingNumber("12e2x"), 1200.0);
    EXPECT_EQ(leadingNumber("-1.5E-1 debit"), -0.15);
    EXPECT_EQ(leadingNumber("12e"), 12.0);
    EXPECT_EQ(leadingNumber("7e+account"), 7.0);
}

TEST(ReadDate, TakesYearFirstForms) {
    EXPECT_EQ(readDate("2013-01-05"), Date(41279.0));
    EXPECT_EQ(readDate("2013-1-5"), Date(41279.0));
    EXPECT_EQ(readDate("2013/1/5"), Date(41279.0));
    EXPECT_EQ(readDate("2013.01.05"), Date(41279.0));
    EXPECT_EQ(readDate("  2013-01-05  "), Date(41279.0));
    EXPECT_EQ(readDate("2013-01-05 12:00"), Date(41279.5));
    EXPECT_EQ(readDate("2013-01-05 12:00:00"), Date(41279.5));
    EXPECT_EQ(readDate("2013-01-05 6:00"), Date(41279.25));
    EXPECT_EQ(readDate("1900-01-01"), Date::none());
    EXPECT_EQ(readDate("1900.1.1"), Date::none());
    EXPECT_EQ(readDate("2012-02-29"), Date::fromCivil(2012, 2, 29));
}

TEST(ReadDate, RefusesEverythingElse) {
    for (const char* text : {"",
                             " ",
                             "20130105",
                             "2",
                             "41279",
                             "5-1-2013",
                             "05/01/2013",
                             "12:00",
                             "12:00:00",
                             "2013-02-29",
                             "2013-13-01",
                             "2013-00-01",
                             "2013-01-00",
                             "2013-01-32",
                             "2013-1",
                             "2013-",
                             "2013-01-05x",
                             "x2013-01-05",
                             "13-01-05",
                             "913-01-05",
                             "2013-01-05 25:00",
                             "2013-01-05 12:60",
                             "2013-01-05 12:00:60",
                             "2013-01-05T12:00",
                             "1900-02-29",
                             "20130-01-05",
                             "2013-001-05",
                             "-2013-01-05",
                             "2013 01 05",
                             "January 5, 2013"}) {
        EXPECT_FALSE(readDate(text)) << text;
    }
}

#ifndef _WIN32
TEST(ReadDate, ReadsEveryDayThatIsWritten) {
    EXPECT_TRUE(rc::check("dateText and readDate", [] {
        const Date date(*rc::gen::inRange(-657434, 2958466));
        RC_ASSERT(readDate(dateText(date)) == date);
    }));
}
#endif

TEST(EqualByValue, ComparesNumbersByValueAndTextsExactly) {
    EXPECT_TRUE(equalByValue("1", i16(1)));
    EXPECT_TRUE(equalByValue("01", "1"));
    EXPECT_TRUE(equalByValue("1.0", std::uint8_t{1}));
    EXPECT_TRUE(equalByValue(std::int32_t{40000}, 40000.0));
    EXPECT_FALSE(equalByValue("1", i16(2)));
    EXPECT_TRUE(equalByValue("abc", "abc"));
    EXPECT_FALSE(equalByValue("abc", "ABC"));
    EXPECT_FALSE(equalByValue("", i16(0)));
    EXPECT_FALSE(equalByValue(Null{}, Null{}));
    EXPECT_FALSE(equalByValue(Null{}, ""));
    EXPECT_FALSE(equalByValue(i16(0), Null{}));
}

TEST(IsNullOrEmpty, IsTrueForNothingElse) {
    EXPECT_TRUE(isNullOrEmpty(Null{}));
    EXPECT_TRUE(isNullOrEmpty(""));
    EXPECT_FALSE(isNullOrEmpty(" "));
    EXPECT_FALSE(isNullOrEmpty(i16(0)));
    EXPECT_FALSE(isNullOrEmpty(false));
}

TEST(FoldCase, MakesCasesOfAllScriptsEqual) {
    EXPECT_EQ(foldCase("AbC1"), foldCase("aBc1"));
    EXPECT_EQ(foldCase("ÀÉ"), foldCase("àé"));
    EXPECT_EQ(foldCase("ДЯ"), foldCase("дя"));
    EXPECT_EQ(foldCase("借方"), "借方");
    EXPECT_NE(foldCase("a"), foldCase("b"));
    EXPECT_NE(foldCase("a"), foldCase("á"));
}

TEST(FoldCase, KeepsBytesThatAreNoText) {
    EXPECT_EQ(foldCase(std::string_view("\xff\xfe")), "\xff\xfe");
    EXPECT_NE(foldCase(std::string_view("\xff")), foldCase(std::string_view("\xfe")));
}

TEST(AsciiCase, TouchesAsciiLettersAlone) {
    EXPECT_EQ(asciiLower("GL_AccVouch"), "gl_accvouch");
    EXPECT_EQ(asciiUpper("True1"), "TRUE1");
    EXPECT_EQ(asciiLower("É借"), "É借");
    EXPECT_EQ(asciiUpper("é借"), "é借");
}

TEST(Characters, AreCodePoints) {
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("abc"), 3U);
    EXPECT_EQ(characterCount("借贷a"), 3U);
    EXPECT_EQ(characterCount("😀"), 1U);
    EXPECT_EQ(leftCharacters("借贷a", 1), "借");
    EXPECT_EQ(leftCharacters("借贷a", 2), "借贷");
    EXPECT_EQ(leftCharacters("ab", 9), "ab");
    EXPECT_EQ(leftCharacters("ab", 0), "");
}

TEST(Texts, AreShortenedAfterSixtyCharactersAndMarked) {
    std::string text;
    for (int i = 0; i < 60; ++i) {
        text += "借";
    }
    EXPECT_EQ(shortened(""), "");
    EXPECT_EQ(shortened(text), text);
    EXPECT_EQ(shortened(text + "a"), text + "...");
}

} // namespace
} // namespace z7::cashflow
