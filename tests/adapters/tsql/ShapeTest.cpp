#include "adapters/tsql/Shape.h"
#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace z7::cashflow::tsql {
namespace {

TEST(Shape, MasksLiteralsAndNothingElse) {
    const std::string statement =
        "select top 1 a1,[2],\"3\" from tempdb..X5 where b=N'x''y' and c=-1.5e3 and d='' -- 7 '\n/* 8 */ and e>.5";
    const Shape shape = shapeOf(statement);
    EXPECT_EQ(
        shape.key,
        "select top \x01 a1,[2],\"3\" from tempdb..X5 where b=\x02 and c=-\x01 and d=\x02 -- 7 '\n/* 8 */ and e>\x01");
    ASSERT_EQ(shape.literals.size(), 5U);
    EXPECT_EQ(shape.literals[1].value(), "x'y");
    EXPECT_EQ(shape.literals[1].source, "N'x''y'");
    EXPECT_EQ(shape.literals[2].body, "1.5e3");
    EXPECT_EQ(shape.literals[3].value(), "");
    EXPECT_EQ(shape.literals[4].body, ".5");
}

TEST(Shape, FindsTheSameLiteralsAsTheLexer) {
    for (const std::string statement :
         {"select 1 from n where n='x' and N'y'=n1'z'", "a.5b 5a 5.a 5..6 .e5 1e 1e+ 1e+5", "N'' '''' ''''''",
          "- -1--2\n/3/*4*/5/6", "汉'字'汉1 2汉", "[a]]1]2\"b\"\"3\"4"}) {
        const Shape shape = shapeOf(statement);
        const Tokens tokens(statement);
        ASSERT_EQ(shape.literals.size(), tokens.literals.size()) << statement;
        for (std::size_t i = 0; i < shape.literals.size(); ++i) {
            EXPECT_EQ(shape.literals[i].source, tokens.literals[i].source) << statement;
        }
    }
}

TEST(Shape, OfAHostileValueIsAnotherShape) {
    const std::string honest = shapeOf("select a from t where b=N'x'").key;
    EXPECT_EQ(shapeOf("select a from t where b=N'y -- z'").key, honest);
    EXPECT_NE(shapeOf("select a from t where b=N'x' or '1'='1'").key, honest);
    EXPECT_NE(shapeOf("select a from t where b=5").key, honest) << "a number is no text";
}

TEST(Shape, RefusesWhatIsAmbiguous) {
    const auto numberOf = [](const std::string& text) {
        try {
            static_cast<void>(shapeOf(text));
        } catch (const Error& error) {
            return error.number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf("select 'x"), 105);
    EXPECT_EQ(numberOf("select N'x''"), 105);
    // In the key these bytes represent literals, so no other part of a statement may contain them.
    for (const char* text : {"select \x01", "select [a\x02]", "select \"\x01\"", "select 1 --\x02", "select 1 /*\x01*/",
                             "select [a\x7F]"}) {
        EXPECT_EQ(numberOf(text), 102) << text;
        EXPECT_THROW(Tokens{text}, Error) << text;
    }
    EXPECT_EQ(numberOf("select N'\x01' --\t'\r\n, [a\tb]"), 0);
    EXPECT_EQ(numberOf("select \"x"), 105);
    EXPECT_EQ(numberOf("select /* /* */"), 113);
    EXPECT_EQ(numberOf("select \x01 from t"), 102) << "the byte that stands for a number in a shape";
    EXPECT_EQ(numberOf(std::string("select a\0b", 10)), 102);
}

} // namespace
} // namespace z7::cashflow::tsql
