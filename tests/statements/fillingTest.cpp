#include "z7cashflow/statements/Statement.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace z7::cashflow::statements {
namespace {

constexpr Statement<Table, Number, Text> sample{"sample", "select a from {table} where b={count} and c=N'{code}'"};

Error refusalOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "was not refused";
    return Error(0, "", "");
}

Error refusal(const Table& table, const Number& number, const Text& text) {
    return refusalOf([&] { (void)sample.fill(LiteralPolicy::wholeLiterals, table, number, text); });
}

TEST(Filling, PutsValuesInAsTheyAreUnlessThePolicyForbids) {
    EXPECT_EQ(sample.fill(LiteralPolicy::asGiven, "x; drop", "1 or 1=1", "a'b"),
              "select a from x; drop where b=1 or 1=1 and c=N'a'b'");
}

TEST(Filling, RefusesATextWithAQuoteAnywhere) {
    for (const std::string hostile : {"'", "''", "a'b", "a''b", "a'", "'a", "付',9,1,N'0111',450,0,N'6601"}) {
        const Error error = refusal("t", 1, hostile);
        EXPECT_EQ(error.number(), errors::statementRefused) << hostile;
        EXPECT_NE(error.description().find("code is \"" + hostile + "\""), std::string::npos) << error.description();
        EXPECT_NE(error.description().find("statement sample"), std::string::npos) << error.description();
    }
}

TEST(Filling, TakesAnyTextWithoutAQuote) {
    for (const std::string honest :
         {"", "付款凭证", "[a]", "100%", "a\"b", "a;b--c/*d*/", "-- x", "\\", "\xE2\x80\x99", "a\tb", "{code}", "%s"}) {
        EXPECT_EQ(sample.fill(LiteralPolicy::wholeLiterals, "t", 1, honest),
                  "select a from t where b=1 and c=N'" + honest + "'");
    }
}

TEST(Filling, RefusesWhatIsNotExactlyOneNumber) {
    for (const std::string hostile :
         {"",    " ",   "abc", "1 2",  "1,2",  "1;",         "--1", "+-1",      "1-1",   "1--", "1.2.3", ".",
          "-",   "+",   "1e",  "1e+",  "e1",   "0x10",       "1/*", "1 or 1=1", "N'0",   "0'",  "１",    "inf",
          "nan", "1\n", "\t1", "True", "Null", "2013-01-05", "$1",  "- 1",      "1e5.5", "1.e"}) {
        const Error error = refusal("t", hostile, "x");
        EXPECT_EQ(error.number(), errors::statementRefused) << hostile;
        EXPECT_NE(error.description().find("count is \"" + hostile + "\""), std::string::npos) << error.description();
    }
}

TEST(Filling, TakesANumberWithItsSignItsExponentAndTheBlanksAroundIt) {
    for (const std::string honest : {"0", " 2", "2 ", "  2  ", "-2", "+2", " -2.50 ", "1e5", "1E-5", "1.5e+10", "5.",
                                     ".5", "-.5", "00012", "99999999999999999999999999"}) {
        EXPECT_EQ(sample.fill(LiteralPolicy::wholeLiterals, "t", honest, "x"),
                  "select a from t where b=" + honest + " and c=N'x'");
    }
}

TEST(Filling, WritesIntegersInDecimal) {
    const auto filled = [](const Number& number) { return sample.fill(LiteralPolicy::wholeLiterals, "t", number, ""); };
    EXPECT_EQ(filled(true), "select a from t where b=1 and c=N''");
    EXPECT_EQ(filled(std::uint8_t{255}), "select a from t where b=255 and c=N''");
    EXPECT_EQ(filled(std::numeric_limits<std::int32_t>::min()), "select a from t where b=-2147483648 and c=N''");
}

TEST(Filling, RefusesWhatIsNotTheNameOfATable) {
    for (const std::string hostile : {"", " ", "t t", "t;drop table code", "t--", "(select 1)", "[t", "t]", "a.b.c.d",
                                      "1t", "t where 1=1 --", "N't'", "a..b.c.d", ".", "t/**/"}) {
        const Error error = refusal(hostile, 1, "x");
        EXPECT_EQ(error.number(), errors::statementRefused) << hostile;
        EXPECT_NE(error.description().find("table is \"" + hostile + "\""), std::string::npos) << error.description();
    }
}

TEST(Filling, TakesTheNameOfATable) {
    for (const std::string honest : {"gl_accvouch", "sales.dbo.[sales vouchers]", "#own", "tempdb..TempVoucherAB01",
                                     "凭证", "[a]]b]", "dbo.凭证表"}) {
        EXPECT_EQ(sample.fill(LiteralPolicy::wholeLiterals, honest, 1, "x"),
                  "select a from " + honest + " where b=1 and c=N'x'");
    }
}

TEST(Filling, TakesANameOf128CharactersAndNoneOf129) {
    std::string name;
    for (int i = 0; i < 64; ++i) {
        name += "账a";
    }
    EXPECT_NO_THROW((void)sample.fill(LiteralPolicy::wholeLiterals, name, 1, "x"));
    EXPECT_NO_THROW((void)sample.fill(LiteralPolicy::wholeLiterals, "dbo.[" + name + "]", 1, "x"));
    EXPECT_EQ(refusal(name + "a", 1, "x").number(), errors::statementRefused);
    EXPECT_EQ(refusal("dbo.[" + name + "a]", 1, "x").number(), errors::statementRefused);
}

TEST(Filling, NamesTheFirstOfSeveralHostileValues) {
    EXPECT_NE(refusal("t t", "x", "'").description().find("table is \"t t\""), std::string::npos);
    EXPECT_NE(refusal("t", "x", "'").description().find("count is \"x\""), std::string::npos);
}

TEST(Filling, ShortensALongValueInTheMessage) {
    EXPECT_LT(refusal("t", 1, std::string(100'000, '\'')).description().size(), 1000U);
}

TEST(Filling, AKeyTakesThreePlacesInARow) {
    constexpr Statement<VoucherKey, Number> two{"two", "p={period} k={kind} n={number} y={year}"};
    EXPECT_EQ(two.fill(LiteralPolicy::wholeLiterals, VoucherKey{255, -1, 2147483647}, 2013),
              "p=255 k=-1 n=2147483647 y=2013");
}

TEST(Filling, AColumnHasToBeAName) {
    for (const char* hostile : {"", "a,b", "a b", "a)", "a.b", "a'"}) {
        ColumnList list(LiteralPolicy::wholeLiterals, "sample");
        EXPECT_EQ(refusalOf([&] { list.add(hostile); }).number(), errors::statementRefused) << hostile;
        EXPECT_EQ(refusalOf([&] { list.addOfAccount(hostile); }).number(), errors::statementRefused) << hostile;
    }
    ColumnList open(LiteralPolicy::asGiven, "sample");
    open.add("a)");
    std::string text;
    open.appendTo(text, LiteralPolicy::asGiven, {});
    EXPECT_EQ(text, "a)");
}

TEST(Filling, TheValuesOfARowArriveOneByOne) {
    RowValues values(LiteralPolicy::wholeLiterals, "sample");
    values.addText("cCashItem", "01");
    EXPECT_EQ(refusalOf([&] { values.addText("cCashItem", "0101',N'999"); }).number(), errors::statementRefused);
    EXPECT_EQ(refusalOf([&] { values.addNumber("md_f", "N'0"); }).number(), errors::statementRefused);
    EXPECT_EQ(refusalOf([&] { values.addNumber("mc_f", "0'"); }).number(), errors::statementRefused);
    EXPECT_NE(refusalOf([&] { values.addNumber("mc_f", "0,0"); }).description().find("mc_f is \"0,0\""),
              std::string::npos);
    values.addNull();
    values.addNumber("md", " 7 ");
    std::string text;
    values.appendTo(text, LiteralPolicy::asGiven, {});
    EXPECT_EQ(text, "N'01',Null, 7 ") << "a refused value leaves the others as they were";
}

} // namespace
} // namespace z7::cashflow::statements
