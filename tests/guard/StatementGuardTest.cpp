#include "adapters/guard/StatementGuard.h"

#include "adapters/guard/libraryStatements.h"
#include "doubles/ContextGuard.h"

#include <gtest/gtest.h>

#include <string>

namespace z7::cashflow::guard {
namespace {

bool passes(const std::string& statement) {
    try {
        StatementGuard().check(statement);
        return true;
    } catch (const Error&) {
        return false;
    }
}

TEST(StatementGuard, LetsEverySamplePass) {
    for (std::string sample : libraryStatements()) {
        const auto replace = [&](const std::string& what, const std::string& with) {
            for (std::size_t at = sample.find(what); at != std::string::npos; at = sample.find(what)) {
                sample.replace(at, what.size(), with);
            }
        };
        replace(tablePlaceholder, "gl_accvouch");
        replace(temporaryPlaceholder, "tempdb..TempVoucher0A1B2C3D00000000");
        replace(valuePlaceholder, "Null");
        EXPECT_TRUE(passes(sample)) << sample;
    }
}

TEST(StatementGuard, LetsTextsOfAnyContentPassAsLongAsTheyStayTexts) {
    for (const char* code : {"", "1001", "现金", "a b", "a--b", "/*", ";drop table x", "%", "a''b", "''"}) {
        EXPECT_TRUE(passes("select citemname from fitemss98 where citemcode=N'" + std::string(code) + "'")) << code;
    }
}

TEST(StatementGuard, LetsNegativeNumbersFractionsAndExponentsPass) {
    for (const char* number : {"0", "-1", "32767", "1.5", "-0.25", "1E+15"}) {
        EXPECT_TRUE(passes("select * from dsign where isignseq=" + std::string(number))) << number;
    }
}

TEST(StatementGuard, RefusesWhatAQuoteInAValueTurnsAStatementInto) {
    for (const char* code :
         {"'", "x'", "x' or '1'='1", "x' or 1=1 --", "x'--", "x';drop table code;--", "x';delete from code where N''='",
          "x' union select cvalue from accinformation where N''='", "x'/*", "x' or citemcode like N'%", "x'\n",
          "x' and N'"}) {
        EXPECT_FALSE(passes("select citemname from fitemss98 where citemcode=N'" + std::string(code) + "'")) << code;
    }
}

TEST(StatementGuard, RefusesWhatIsNoNumberInTheNumbersPlace) {
    for (const char* number : {"", "1 or 1=1", "1;drop table code", "abc", "1-1", "--1", "- 1", "(1)", "1,2", "0x1",
                               "N'1'", "1 --", "True", "+1"}) {
        EXPECT_FALSE(passes("select * from dsign where isignseq=" + std::string(number))) << number;
    }
}

TEST(StatementGuard, TakesTableNamesAsNamesOnly) {
    const auto statement = [](const std::string& table) {
        return "select code.ccode from " + table +
               " as TempVoucher inner join code on  TempVoucher.ccode=code.ccode  where code.bCashItem=1 and "
               "code.bclose=0 and "
               "code.iyear=2013";
    };
    for (const char* table :
         {"gl_accvouch", "GL_V_ACCVOUCH", "tempdb..TempVoucher0AF", "sales.dbo.voucher", "dbo.voucher",
          "sales..voucher", "[sales vouchers]", "[a].[b].[c]", "[a]]b]", "_x9", "凭证", "#own", "##shared"}) {
        EXPECT_TRUE(passes(statement(table))) << table;
    }
    for (const char* table : {"",
                              " ",
                              "a b",
                              "a,b",
                              "a;b",
                              "(select 1)",
                              "a--",
                              "a/**/",
                              "9a",
                              "a.",
                              ".a",
                              "a...b",
                              "a.b.c.d",
                              "[a",
                              "[a]b]",
                              "[]",
                              "a as b",
                              "N'a'",
                              "\"a\"",
                              "a.'b'",
                              "[\x01\x01] x",
                              "a--\x01",
                              "[a\nb]",
                              "a　drop　table　code",
                              "a\xC2\xA0"
                              "drop",
                              "a\xE2\x80\xA8"
                              "b",
                              "ａ（select）",
                              "a\xFF",
                              "\xEF\xBB\xBF"
                              "a"}) {
        EXPECT_FALSE(passes(statement(table))) << table;
    }
}

TEST(StatementGuard, TakesNumbersOfAnInsertAsTheyWereGiven) {
    const auto statement = [](const std::string& amount) {
        std::string text;
        for (const std::string& sample : libraryStatements()) {
            if (sample.starts_with("insert into gl_cashtable ")) {
                text = sample;
            }
        }
        const std::string place = valuePlaceholder;
        text.replace(text.find(place), place.size(), amount);
        for (std::size_t at = text.find(place); at != std::string::npos; at = text.find(place)) {
            text.replace(at, place.size(), "Null");
        }
        return text;
    };
    for (const char* amount : {"5", "-5", "+5", " 5", "5 ", "  -1.5E+3  ", " +0.5 ", "N'x'", "'x'", "Null"}) {
        EXPECT_TRUE(passes(statement(amount))) << amount;
    }
    for (const char* amount : {"",    " ",     "+",     "-",   "--5", "+-5", "-+5", "++5",   "5,6", "1,000",
                               "5 6", "+Null", " Null", "5\n", "+ 5", "5;",  "5)",  "+N'x'", "5--", "(5)"}) {
        EXPECT_FALSE(passes(statement(amount))) << amount;
    }
}

TEST(StatementGuard, NamesTheTextBehindATableNameFullOfMarks) {
    for (const std::string& table :
         {"[" + std::string(100, '\x01') + "] x", std::string("[\x02] x"), std::string("a --\x01")}) {
        const Error error = test::errorOf([&] { StatementGuard().check("select dbill_date from " + table); });
        EXPECT_EQ(error.number(), statementRefused);
        EXPECT_NE(error.description().find("\\x0"), std::string::npos) << error.description();
    }
    const Error error = test::errorOf(
        [&] { StatementGuard().check("select gl_cashtable.* from code where iyear=2013 and x=N'a' -- 5"); });
    EXPECT_EQ(error.number(), statementRefused);
}

TEST(StatementGuard, LetsOnlyTablesOfTheLibrarysOwnMakingBeDropped) {
    EXPECT_TRUE(passes("Drop table tempdb..TempVoucher0123456789ABCDEF00000000"));
    for (const char* table :
         {"code", "tempdb..Other", "tempdb..TempVoucherX", "tempdb..TempVoucher0,code", "dbo.code"}) {
        EXPECT_FALSE(passes("drop table " + std::string(table))) << table;
    }
}

TEST(StatementGuard, RefusesStatementsOfOthers) {
    for (const char* statement : {"", " ", "select 1", "delete from gl_cashtable", "update code set bclose=0",
                                  "select * from dsign where isignseq=1 ", " select * from dsign where isignseq=1",
                                  "select * from dsign where isignseq=1;", "SELECT * from dsign where isignseq=1"}) {
        EXPECT_FALSE(passes(statement)) << statement;
    }
}

TEST(StatementGuard, NamesTheTextAtWhichAStatementDeparts) {
    StatementGuard guard;
    try {
        guard.check("select citemname from fitemss98 where citemcode=N'x' or '1'='1'");
        FAIL() << "the statement passed";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), statementRefused);
        EXPECT_EQ(error.source(), "Z7CashFlow");
        EXPECT_NE(error.description().find("(\" or '1'='1'\""), std::string::npos) << error.description();
    }
}

TEST(StatementGuard, SaysOnceMoreWhatItSaidBefore) {
    StatementGuard guard;
    const std::string honest = "select * from dsign where isignseq=1";
    guard.check(honest);
    EXPECT_NO_THROW(guard.check(honest));
    const std::string hostile = honest + " or 1=1";
    EXPECT_THROW(guard.check(hostile), Error);
    EXPECT_THROW(guard.check(hostile), Error);
}

TEST(StatementGuard, RefusesAnUnclosedQuoteUnderItsOwnNumber) {
    for (const char* code : {"x", "x''", "O'Brien'", "''", "x'' or citemcode=N''"}) {
        const Error error = test::errorOf(
            [&] { StatementGuard().check("select citemname from fitemss98 where citemcode=N'" + std::string(code)); });
        EXPECT_EQ(error.number(), 10020) << code;
        EXPECT_EQ(error.source(), "Z7CashFlow") << code;
    }
}

TEST(StatementGuard, RefusesTextsAndCommentsThatDoNotEnd) {
    EXPECT_FALSE(passes("select citemname from fitemss98 where citemcode=N'x"));
    EXPECT_FALSE(passes("select * from dsign where isignseq=1/*"));
    EXPECT_FALSE(passes(std::string("select * from dsign where isignseq=\x01", 36)));
    EXPECT_FALSE(passes("select citemname from fitemss98 where citemcode=\x02"));
}

} // namespace
} // namespace z7::cashflow::guard
