#include "adapters/tsql/RewritingCache.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace z7::cashflow::tsql {
namespace {

/// What an adapter keeps with a step; movable but not copyable, like a prepared statement.
struct KnownStep {
    Step step;
    std::unique_ptr<int> prepared;
};
using Cache = RewritingCache<KnownStep>;

TEST(RewritingCache, ReturnsTheSameStepsAndTheirOwnLiteralsForTextsOfOneShape) {
    Cache cache(8);
    const std::string first = "select a from t where b=N'x' and c=1; delete from t where c=2";
    const auto steps = cache.stepsOf(first);
    ASSERT_EQ(steps->size(), 2U);
    EXPECT_EQ((*steps)[0].step.sql, "SELECT \"a\" FROM main.\"t\" WHERE \"b\" = ?1 AND \"c\" = ?2");
    EXPECT_EQ((*steps)[1].step.kind, Step::Kind::change);
    (*steps)[0].prepared = std::make_unique<int>(7);

    const std::string second = "select a from t where b=N'it''s' and c=3; delete from t where c=4";
    EXPECT_EQ(cache.stepsOf(second), steps) << "with what the adapter has put there";
    ASSERT_EQ(cache.literals().size(), 3U);
    EXPECT_EQ(cache.literals()[0].value(), "it's");
    EXPECT_EQ(cache.literals()[2].body.data(), second.data() + second.size() - 1) << "they point into the text";
    EXPECT_EQ(cache.size(), 1U);

    EXPECT_NE(cache.stepsOf("select a from t where b=5 and c=1; delete from t where c=2"), steps);
    EXPECT_EQ(cache.size(), 2U);
}

TEST(RewritingCache, RewritesAnewWhereALiteralOfTheRewrittenTextIsAnother) {
    Cache cache(8);
    const auto two = cache.stepsOf("select cast(a as nvarchar(2)) x from t where b=N'1'");
    const auto three = cache.stepsOf("select cast(a as nvarchar(3)) x from t where b=N'1'");
    EXPECT_EQ(two->front().step.items.front().castType, "nvarchar(2)");
    EXPECT_EQ(three->front().step.items.front().castType, "nvarchar(3)");
    EXPECT_EQ(cache.stepsOf("select cast(a as nvarchar(3)) x from t where b=N'2'"), three) << "the last one is kept";
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_EQ(cache.stepsOf("select cast(a as nvarchar(2)) x from t where b=N'2'")->front().step.items.front().castType,
              "nvarchar(2)");
}

TEST(RewritingCache, KeepsNothingThatNamesATableOfOneVoucher) {
    Cache cache(8);
    for (const std::string text :
         {"select * from tempdb..X1", "select a from t; select a from t where exists (select * from tempdb..X1)",
          "insert into tempdb..X1 (a) values(1)", "drop table tempdb..X1", "drop table t",
          "select * into tempdb..X1 from t", "select * into t2 from t",
          "if exists (select * from tempdb..sysobjects where name=N'X1') drop table tempdb..X1"}) {
        EXPECT_NE(cache.stepsOf(text), cache.stepsOf(text)) << text;
    }
    EXPECT_EQ(cache.size(), 0U);
    static_cast<void>(cache.stepsOf("select iid from zqsystem..ua_period"));
    EXPECT_EQ(cache.size(), 1U);
}

TEST(RewritingCache, KeepsNoTextBeyond64Kib) {
    Cache cache(8);
    std::string text = "select a from t where b=1";
    text.insert(text.find("where"), (std::size_t{64} * 1024) - text.size(), ' ');
    EXPECT_EQ(cache.stepsOf(text), cache.stepsOf(text));
    EXPECT_EQ(cache.size(), 1U);
    text.insert(text.find("where"), 1, ' ');
    EXPECT_NE(cache.stepsOf(text), cache.stepsOf(text));
    EXPECT_EQ(cache.size(), 1U);
}

TEST(RewritingCache, ForgetsTheShapeThatWasNotAskedForTheLongest) {
    Cache cache(2);
    const auto a = cache.stepsOf("select a from t");
    const auto b = cache.stepsOf("select b from t");
    EXPECT_EQ(cache.stepsOf("select a from t"), a);
    static_cast<void>(cache.stepsOf("select c from t"));
    EXPECT_EQ(cache.size(), 2U);
    EXPECT_EQ(cache.stepsOf("select a from t"), a);
    EXPECT_EQ(b->front().step.sql, "SELECT \"b\" FROM main.\"t\"") << "the caller's copy lives on";
    EXPECT_NE(cache.stepsOf("select b from t"), b);
    cache.clear();
    EXPECT_EQ(cache.size(), 0U);
    EXPECT_NE(cache.stepsOf("select a from t"), a);
}

TEST(RewritingCache, RefusesAStatementEachTimeAndKeepsTheOthers) {
    Cache cache(2);
    const auto known = cache.stepsOf("select a from t");
    const auto errorOf = [&cache](const std::string& text) {
        try {
            static_cast<void>(cache.stepsOf(text));
        } catch (const Error& error) {
            return error.number();
        }
        return 0;
    };
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(errorOf("select a from"), 102);
        EXPECT_EQ(errorOf("select 'a"), 105);
    }
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_EQ(cache.stepsOf("select a from t"), known);
}

} // namespace
} // namespace z7::cashflow::tsql
