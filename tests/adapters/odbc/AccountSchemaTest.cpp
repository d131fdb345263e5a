#include "adapters/odbc/accountSchema.h"
#include "adapters/odbc/databaseKeyword.h"
#include "adapters/odbc/quoting.h"
#include "adapters/odbc/scripts.h"

#include "adapters/conformance/DatabaseUnderTest.h"
#include "adapters/odbc/ConnectionOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::odbc {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(ScriptBatches, EndAtLinesThatSayGo) {
    EXPECT_THAT(scriptBatches("create table a (b int)\ngo\ncreate table c (d int)\n"),
                ElementsAre("create table a (b int)\n", "create table c (d int)\n"));
    EXPECT_THAT(scriptBatches("a\r\n  GO \t\r\nb\nGo"), ElementsAre("a\r\n", "b\n"));
    EXPECT_THAT(scriptBatches("go\ngo\n\ngo"), IsEmpty());
    EXPECT_THAT(scriptBatches(""), IsEmpty());
    EXPECT_THAT(scriptBatches("a"), ElementsAre("a"));
}

TEST(ScriptBatches, KeepGoThatSeparatesNothing) {
    for (const char* script : {"select N'x\ngo\ny'", "select '\ngo\n'", "select [a\ngo\n]", "select \"\ngo\n\"",
                               "a /* \ngo\n */ b", "a /* /* \ngo\n */ \ngo\n */ b", "a\ngo 2\n", "a\ngoes\n", "a go\nb",
                               "a\n-- \n--go\n", "select N'it''s\ngo\n'"}) {
        EXPECT_THAT(scriptBatches(script), ElementsAre(script));
    }
    EXPECT_THAT(scriptBatches("a -- it's\ngo\nb"), ElementsAre("a -- it's\n", "b")) << "the quote is in a comment";
    EXPECT_THAT(scriptBatches("a N'--'\ngo\nb"), ElementsAre("a N'--'\n", "b")) << "the comment is in a text";
}

TEST(ScriptBatches, LeaveCommentsAloneOut) {
    EXPECT_THAT(scriptBatches("-- a\ngo\n/* b */\ngo\n-- c\nd\ngo\n -- e"), ElementsAre("-- c\nd\n"));
    EXPECT_EQ(conformance::errorOf([] { static_cast<void>(scriptBatches("select 'x\ngo\n")); }).number(), 105);
    EXPECT_EQ(conformance::errorOf([] { static_cast<void>(scriptBatches("/* x\ngo\n")); }).number(), 113);
}

TEST(AccountSchema, KnowsTheNamesOfItsScripts) {
    EXPECT_THAT(accountNames(), ElementsAre("gl_accvouch", "gl_cashtable", "code", "fitemss98", "GL_CashItemDataSource",
                                            "GL_VouchDraft", "GL_VoucherOption", "GL_myoutput", "accinformation",
                                            "dsign", "gl_v_accvouch", "gl_v_code", "gl_v_cashtable",
                                            "GL_V_CashItemDataSource", "z7_schema_version", "z7_run", "z7_run_row"));
    EXPECT_THAT(systemNames(), ElementsAre("ua_period"));
}

TEST(AccountSchema, SaysItsVersionInAView) {
    EXPECT_THAT(scripts::accountViews, HasSubstr("create view z7_schema_version as select " +
                                                 std::to_string(accountSchemaVersion) + " as version;"));
}

TEST(DatabaseKeyword, IsReadInItsPosition) {
    EXPECT_EQ(databaseNamed("Driver={FreeTDS};DATABASE = company ;UID=u"), "company");
    EXPECT_EQ(databaseNamed("DSN=x;Database={a;b}}c}"), "a;b}c");
    EXPECT_EQ(databaseNamed("driver=odbc;odbc={Driver={{x}};Database=inner};year=2013"), "inner");
    EXPECT_EQ(databaseNamed("DSN=x;PWD={Database=no};Server=s"), std::nullopt);
    EXPECT_EQ(databaseNamed("DSN=x"), std::nullopt);
    EXPECT_EQ(conformance::errorOf([] { static_cast<void>(databaseNamed("nonsense")); }).number(), 5);
}

TEST(DatabaseKeyword, IsReplacedAndAllElseStays) {
    for (const char* text : {"DSN=x;Database=a;PWD={p;}}q};year=2013;timeout=7", "DSN=x;PWD={p;}}q};timeout=7",
                             "driver=odbc;odbc={DSN=x;PWD={p;}}}}q}};Database=a};timeout=7"}) {
        const ConnectionOptions options = parseConnectionString(withDatabase(text, "ma{;}ster"));
        EXPECT_EQ(options.driverText, "DSN=x;PWD={p;}}q};Database={ma{;}}ster}") << text;
        EXPECT_EQ(options.timeout, 7);
        EXPECT_FALSE(options.year);
        EXPECT_EQ(databaseNamed(withDatabase(text, "ma{;}ster")), "ma{;}ster");
        EXPECT_FALSE(options.secrets.empty());
    }
}

TEST(Quoting, DoublesWhatWouldEndIt) {
    EXPECT_EQ(serverText("it's"), "N'it''s'");
    EXPECT_EQ(serverName("a]b[c"), "[a]]b[c]");
}

} // namespace
} // namespace z7::cashflow::odbc
