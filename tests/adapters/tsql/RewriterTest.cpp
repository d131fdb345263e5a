#include "adapters/tsql/Rewriting.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::tsql {
namespace {

std::string rewritten(const std::string& statement) {
    std::string text;
    for (const Step& step : rewrite(statement).steps) {
        text += text.empty() ? "" : "; ";
        if (step.kind == Step::Kind::queryInto) {
            text += "into " + qualifiedName(step.target) + ": ";
        } else if (step.kind == Step::Kind::guard) {
            text += step.runNextIfFound ? "if found: " : "if none: ";
        }
        text += step.sql;
    }
    return text;
}

Error errorOf(const std::string& statement) {
    try {
        static_cast<void>(rewrite(statement));
    } catch (const Error& error) {
        return error;
    }
    return Error(0, "", rewritten(statement));
}

/// A part of a test's name: the words of a statement, preceded by its index.
std::string nameFrom(std::string_view statement, std::size_t index) {
    std::string name = std::to_string(index);
    bool begins = true;
    for (const char c : statement.substr(0, 60)) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (letter) {
            name += begins && c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        }
        begins = !letter;
    }
    return name;
}

template <class Case> std::string statementName(const ::testing::TestParamInfo<Case>& info) {
    return nameFrom(info.param.statement, info.index);
}

struct Golden {
    const char* statement;
    const char* expected;
    friend void PrintTo(const Golden& golden, std::ostream* out) { *out << golden.statement; }
};

class GoldenRewriting : public ::testing::TestWithParam<Golden> {};

TEST_P(GoldenRewriting, ReturnsTheExpectedText) { EXPECT_EQ(rewritten(GetParam().statement), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    Statements, GoldenRewriting,
    ::testing::Values(
        Golden{"select * from code", "SELECT * FROM main.\"code\""},
        Golden{"Select Count(*) From gl_v_accvouch Where iperiod=1 and ino_id=-7",
               "SELECT count(*) FROM main.\"gl_v_accvouch\" WHERE \"iperiod\" = ?1 AND \"ino_id\" = ?2"},
        Golden{"select top 1 * from code where ccode=N'1' order by ccode desc",
               "SELECT * FROM main.\"code\" WHERE \"ccode\" = ?2 ORDER BY \"ccode\" DESC LIMIT ?1"},
        Golden{"select top (2) a from t", "SELECT \"a\" FROM main.\"t\" LIMIT ?1"},
        Golden{"select cvalue,cdefault from accinformation WITH(NOLOCK) where csysid =N'GL'",
               "SELECT \"cvalue\", \"cdefault\" FROM main.\"accinformation\" WHERE \"csysid\" = ?1"},
        Golden{"select * from code (nolock)", "SELECT * FROM main.\"code\""},
        Golden{"select * from tempdb..X, zqsystem..y z, dbo.[a b], tempdb.dbo.\"q\"",
               "SELECT * FROM tempdb.\"X\", zqsystem.\"y\" AS \"z\", main.\"a b\", tempdb.\"q\""},
        Golden{"select [a\"]]b] from t", "SELECT \"a\"\"]b\" FROM main.\"t\""},
        Golden{
            "select t.*, x.y as z, count(distinct a) n from t inner join x on t.a=x.a left outer join w on w.b<>x.b",
            "SELECT \"t\".*, \"x\".\"y\" AS \"z\", count(DISTINCT \"a\") AS \"n\" FROM main.\"t\" JOIN main.\"x\" ON "
            "\"t\".\"a\" = \"x\".\"a\" LEFT JOIN main.\"w\" ON \"w\".\"b\" <> \"x\".\"b\""},
        Golden{"select a from (select b.* from b where c=1) t where not (d in (1,2) or e between 3 and 4) and f is not "
               "null",
               "SELECT \"a\" FROM (SELECT \"b\".* FROM main.\"b\" WHERE \"c\" = ?1) AS \"t\" WHERE NOT (\"d\" IN (?2, "
               "?3) OR "
               "\"e\" BETWEEN ?4 AND ?5) AND \"f\" IS NOT NULL"},
        Golden{"select a from t where b not like N'%x%' and exists(select c from u where u.d=t.d)",
               "SELECT \"a\" FROM main.\"t\" WHERE \"b\" NOT LIKE ?1 AND EXISTS (SELECT \"c\" FROM main.\"u\" WHERE "
               "\"u\".\"d\" = \"t\".\"d\")"},
        Golden{"select (sum(md) -sum(mc)) as mysum from t group by t.a,b having sum(md)>0",
               "SELECT (sum(\"md\") - sum(\"mc\")) AS \"mysum\" FROM main.\"t\" GROUP BY \"t\".\"a\", \"b\" HAVING "
               "sum(\"md\") > ?1"},
        Golden{"select cast(0 as bit) as b, cast(c as nvarchar(20)) from t",
               "SELECT z7_cast(?1, 'bit') AS \"b\", z7_cast(\"c\", 'nvarchar(20)') FROM main.\"t\""},
        Golden{"select a + b, a * -2, case a when N'x' then 1 else null end from t",
               "SELECT z7_plus(\"a\", \"b\"), \"a\" * ?1, CASE \"a\" WHEN ?2 THEN ?3 ELSE NULL END FROM main.\"t\""},
        Golden{"select a from t where isnull(b,N'')<>N'x'",
               "SELECT \"a\" FROM main.\"t\" WHERE ifnull(\"b\", ?1) <> ?2 COLLATE z7_text"},
        Golden{"insert into t (a,[b]) values(N'it''s',Null)",
               "INSERT INTO main.\"t\" (\"a\", \"b\") VALUES (?1, NULL)"},
        Golden{"insert into GL_V_CASHTABLE (a) values(Null)",
               "INSERT INTO main.\"gl_cashtable\" (\"a\") VALUES (NULL)"},
        Golden{"insert into gl_v_cashitemdatasource (a) values(Null)",
               "INSERT INTO main.\"GL_CashItemDataSource\" (\"a\") VALUES (NULL)"},
        Golden{"insert into gl_v_code (a) values(Null)", "INSERT INTO main.\"gl_v_code\" (\"a\") VALUES (NULL)"},
        Golden{"insert t select a,1 from u", "INSERT INTO main.\"t\" SELECT \"a\", ?1 FROM main.\"u\""},
        Golden{"delete t where a=1", "DELETE FROM main.\"t\" WHERE \"a\" = ?1"},
        Golden{"delete from t where a=1;insert into t (a) values(2);",
               "DELETE FROM main.\"t\" WHERE \"a\" = ?1; INSERT INTO main.\"t\" (\"a\") VALUES (?1)"},
        Golden{"update t set a=1, b=c where d=2", "UPDATE main.\"t\" SET \"a\" = ?1, \"b\" = \"c\" WHERE \"d\" = ?2"},
        Golden{"UPDATE T SET x =  g.x FROM dbo.t c INNER JOIN dbo.G g ON  c.a = g.a AND c.b=1 Where c.d = 2",
               "UPDATE main.\"t\" AS \"c\" SET \"x\" = \"g\".\"x\" FROM main.\"G\" AS \"g\" WHERE (\"c\".\"a\" = "
               "\"g\".\"a\" AND "
               "\"c\".\"b\" = ?1) AND (\"c\".\"d\" = ?2)"},
        Golden{"update c set c.x=1 from t c", "UPDATE main.\"t\" AS \"c\" SET \"x\" = ?1"},
        Golden{"drop table tempdb..X", "DROP TABLE tempdb.\"X\""},
        Golden{"select a,b into tempdb..X from t where 1=0",
               "into tempdb.\"X\": SELECT \"a\", \"b\" FROM main.\"t\" WHERE ?1 = ?2"},
        Golden{"if not exists(Select top 1 a From t where b=1) delete from u where c=1",
               "if none: SELECT EXISTS (SELECT \"a\" FROM main.\"t\" WHERE \"b\" = ?2 LIMIT ?1); DELETE FROM "
               "main.\"u\" WHERE "
               "\"c\" = ?1"},
        Golden{"if exists(select a from t) drop table t",
               "if found: SELECT EXISTS (SELECT \"a\" FROM main.\"t\"); DROP TABLE main.\"t\""},
        Golden{"select a /* top /* 1 */ */ from -- x\n t", "SELECT \"a\" FROM main.\"t\""},
        Golden{"select a from t union all select b from u order by a",
               "SELECT \"a\" FROM main.\"t\" UNION ALL SELECT \"b\" FROM main.\"u\" ORDER BY \"a\""}),
    statementName<Golden>);

struct Refused {
    const char* statement;
    int number;
    const char* near;
    friend void PrintTo(const Refused& refused, std::ostream* out) { *out << refused.statement; }
};

class RefusedStatement : public ::testing::TestWithParam<Refused> {};

TEST_P(RefusedStatement, NamesThePlace) {
    const Error error = errorOf(GetParam().statement);
    EXPECT_EQ(error.number(), GetParam().number) << error.description();
    EXPECT_NE(error.description().find(GetParam().near), std::string::npos) << error.description();
}

INSTANTIATE_TEST_SUITE_P(
    Statements, RefusedStatement,
    ::testing::Values(
        Refused{"", 102, "end of the statement"}, Refused{" ; ;", 102, "end of the statement"},
        Refused{"select * from gl_accvouch where inid=", 102, "end of the statement"},
        Refused{"select * from t where a='x'y'", 105, "'"}, Refused{"select [a from t", 105, "a from t"},
        Refused{"select a /* from t", 113, "*/"}, Refused{"selct * from t", 102, "'selct'"},
        Refused{"select * frm t", 102, "'frm'"}, Refused{"select * from t where a", 102, "end of the statement"},
        Refused{"select * from t where a=1 b", 102, "'b'"}, Refused{"select * from t where a=1=2", 102, "'='"},
        Refused{"select a=1 from t", 102, "'='"}, Refused{"select * from where", 102, "'where'"},
        Refused{"select * from (select a from t)", 102, "end of the statement"},
        Refused{"select * from t order by 1", 102, "order by"},
        Refused{"select top 5 percent * from t", 102, "'percent'"},
        Refused{"select * from t;drop table t;shutdown", 102, "'shutdown'"}, Refused{"exec sp_who", 102, "'exec'"},
        Refused{"declare @a int", 102, "'declare'"}, Refused{"select * from #t", 102, "'#t'"},
        Refused{"select @a from t", 102, "'@a'"}, Refused{"select getdate()", 195, "getdate"},
        Refused{"select load_extension('x')", 195, "load_extension"},
        Refused{"select * from other.dbo.t", 911, "other"}, Refused{"select * from sys.objects", 208, "sys.objects"},
        Refused{"select * from a.b.c.d", 208, "a.b.c.d"}, Refused{"select * from a.b.c.d.e", 102, "a.b.c.d.e"},
        Refused{"select * from ..t", 102, "'.'"}, Refused{"insert into t (a) values(1,2)", 110, "1 columns"},
        Refused{"insert into t (a,b) values(1)", 109, "2 columns"},
        Refused{"update t set a=1 from u left join t on 1=1", 102, "'left'"},
        Refused{"update t set a=1 from t x, t y", 8154, "ambiguous"},
        Refused{"select cast(a as blob) from t", 243, "blob"},
        Refused{"if not exists(select a from t)", 102, "end of the statement"},
        Refused{"if exists(select a from t) if exists(select a from t) delete t", 102, "'if'"},
        Refused{"select * from t with(index(1))", 102, "'index'"}, Refused{"select \x01 from t", 102, "\\x01"},
        Refused{"pragma writable_schema=1", 102, "'pragma'"}, Refused{"attach 'x' as y", 102, "'attach'"}),
    statementName<Refused>);

TEST(Rewriter, BoundsNesting) {
    const std::string deep(5000, '(');
    EXPECT_EQ(errorOf("select " + deep).number(), 191);
    std::string negated = "select a from t where ";
    for (int i = 0; i < 5000; ++i) {
        negated += "not ";
    }
    EXPECT_EQ(errorOf(negated + "a=1").number(), 191);
    std::string nested = "select a from t";
    for (int i = 0; i < 400; ++i) {
        nested = "select a from (" + nested + ") t";
    }
    EXPECT_EQ(errorOf(nested).number(), 191);
}

TEST(Rewriter, ReportsWhereLiteralsBelong) {
    const Rewriting result = rewrite(
        "select 5 as five from gl_accvouch as v inner join code c on c.ccode='x' where dbill_date<='d' and -3<v.md");
    const std::vector<Parameter>& parameters = result.steps.at(0).parameters;
    ASSERT_EQ(parameters.size(), 4U);
    EXPECT_EQ(parameters[0].use, Parameter::Use::plain);
    EXPECT_EQ(parameters[1].column.column, "ccode");
    ASSERT_EQ(parameters[1].column.tables.size(), 1U);
    EXPECT_EQ(parameters[1].column.tables[0].name, "code");
    EXPECT_EQ(parameters[2].column.tables.size(), 2U) << "an unqualified name may belong to either table";
    EXPECT_TRUE(parameters[3].negative);
    EXPECT_EQ(parameters[3].column.tables.at(0).name, "gl_accvouch");

    const Rewriting insert = rewrite("insert into t (a,b) values(1,'x'),(2,'y')");
    EXPECT_EQ(insert.steps.at(0).parameters.at(3).use, Parameter::Use::assign);
    EXPECT_EQ(insert.steps.at(0).parameters.at(3).column.column, "b");
    const Rewriting update = rewrite("update t set a='x' from t c inner join u on u.b=c.b");
    EXPECT_EQ(update.steps.at(0).parameters.at(0).use, Parameter::Use::assign);
    EXPECT_EQ(update.steps.at(0).parameters.at(0).column.tables.at(0).name, "t");
}

TEST(Rewriter, ReportsWhichLiteralsArePartOfTheText) {
    EXPECT_TRUE(rewrite("select top 1 a from t where b=2").inlined.empty());
    EXPECT_EQ(rewrite("select 7, cast(a as nvarchar(20)) from t").inlined, std::vector<int>{1});
}

TEST(Rewriter, ReportsWhichQueriesCanBeWritten) {
    EXPECT_TRUE(rewrite("select * from t where a=1 order by b").steps.at(0).writable);
    for (const char* statement :
         {"select distinct a from t", "select count(*) from t", "select * from t, u",
          "select * from (select a from t) x", "select a from t group by a", "select a from t union select a from u"}) {
        EXPECT_FALSE(rewrite(statement).steps.at(0).writable) << statement;
    }
}

} // namespace
} // namespace z7::cashflow::tsql
