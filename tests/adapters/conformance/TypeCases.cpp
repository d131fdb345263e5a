#include "adapters/conformance/DatabaseUnderTest.h"

#include <tuple>

namespace z7::cashflow::conformance {
namespace {

class TypeCases : public DatabaseCase {
protected:
    void SetUp() override {
        DatabaseCase::SetUp();
        addVoucher();
    }
};

TEST_P(TypeCases, ColumnsComeInTheirTypes) {
    const auto records = run("select * from gl_accvouch where inid=1");
    FieldList& line = records->Fields();
    EXPECT_TRUE(line.Item("iyear").is<std::int16_t>());
    EXPECT_TRUE(line.Item("iperiod").is<std::uint8_t>());
    EXPECT_TRUE(line.Item("isignseq").is<std::int16_t>());
    EXPECT_TRUE(line.Item("ino_id").is<std::int32_t>());
    EXPECT_EQ(line.Item("md"), Variant(100.25));
    EXPECT_EQ(line.Item("mc"), Variant(0.0)) << "a whole amount is a double as well";
    EXPECT_TRUE(line.Item("nd_s").is<double>());
    EXPECT_EQ(line.Item("dbill_date"), Variant(Date::fromCivil(2013, 1, 5)));
    EXPECT_EQ(line.Item("csign"), Variant("付"));
    EXPECT_EQ(line.Item("cdigest"), Variant());
    EXPECT_EQ(run("select bend from code where ccode='1001'")->Fields().Item("bend"), Variant(true));
    EXPECT_EQ(run("select bclose from code where ccode='1001'")->Fields().Item("bclose"), Variant(false));
}

TEST_P(TypeCases, ExpressionsComeInTheTypeOfTheirValue) {
    EXPECT_EQ(first("select count(*) from code"), Variant(std::int32_t{3}));
    EXPECT_EQ(first("select sum(md) from gl_accvouch"), Variant(100.25));
    EXPECT_EQ(first("select sum(md) from gl_accvouch where 1=0"), Variant());
    EXPECT_EQ(run("select count(*) as n from code")->Fields().Name(0), "n");
    Z7_NEEDS(database_->leavesExpressionsUnnamed());
    EXPECT_EQ(run("select count(*) from code")->Fields().Name(0), "");
}

TEST_P(TypeCases, SumsOfMoneyAreExact) {
    run("update gl_accvouch set md=0.1 where inid=1; update gl_accvouch set md=0.2 where inid=2; "
        "update gl_accvouch set md=-0.3 where inid=3");
    EXPECT_EQ(first("select sum(md) from gl_accvouch"), Variant(0.0));
}

TEST_P(TypeCases, LiteralsTakeTheTypeOfTheirColumn) {
    const std::string date = "update gl_accvouch set dbill_date=";
    for (const char* text : {"N'2013-1-6'", "'2013/01/06'", "N'2013-01-06 00:00:00'", "'20130106'"}) {
        run(date + text);
        EXPECT_EQ(first("select dbill_date from gl_accvouch"), Variant(Date::fromCivil(2013, 1, 6))) << text;
        EXPECT_EQ(count("select * from gl_accvouch where dbill_date='2013-1-06'"), 3) << text;
    }
    run(date + "N'2013-01-06 10:30:00'");
    EXPECT_EQ(first("select dbill_date from gl_accvouch"), Variant(Date::fromCivil(2013, 1, 6, 10, 30)));
    EXPECT_EQ(count("select * from gl_accvouch where dbill_date>='2013-1-6' and dbill_date<'2013-1-7'"), 3);

    run("update gl_accvouch set md=N' 12.5 ', cdigest=1.50, iflag='7'");
    EXPECT_EQ(first("select md from gl_accvouch"), Variant(12.5));
    EXPECT_EQ(first("select cdigest from gl_accvouch"), Variant("1.50"));
    EXPECT_EQ(first("select iflag from gl_accvouch"), Variant(std::uint8_t{7}));
    EXPECT_EQ(count("select * from gl_accvouch where inid='2'"), 1);
}

TEST_P(TypeCases, LiteralsThatAreNoneOfTheirColumnAreRefused) {
    // The server has a number for each pair of types; the embedded database has one for dates and one for numbers.
    const auto numberOf = [this](const std::string& statement) { return errorOf([&] { run(statement); }).number(); };
    const int day = numberOf("update gl_accvouch set dbill_date=N'2013-02-30'");
    const int word = numberOf("select * from gl_accvouch where dbill_date<='soon'");
    const int amount = numberOf("update gl_accvouch set md=N'12a'");
    const int line = numberOf("select * from gl_accvouch where inid='x'");
    EXPECT_EQ(count("select * from gl_accvouch where md=100.25 and dbill_date='2013-01-05'"), 1)
        << "nothing is changed";
    Z7_NEEDS(database_->tellsErrorNumbers());
    EXPECT_THAT(day, ::testing::AnyOf(241, 242));
    EXPECT_EQ(word, 241);
    EXPECT_THAT(amount, ::testing::AnyOf(8114, 235));
    EXPECT_THAT(line, ::testing::AnyOf(8114, 245));
}

TEST_P(TypeCases, NumbersOutOfRangeAreRefused) {
    std::vector<int> numbers;
    for (const auto& [column, number] : {std::tuple<const char*, const char*>{"iflag", "256"},
                                         {"iflag", "-1"},
                                         {"idoc", "32768"},
                                         {"ioutyear", "-32769"},
                                         {"ino_id", "2147483648"},
                                         {"md", "922337203685478"}}) {
        SCOPED_TRACE(column);
        numbers.push_back(errorOf([&, c = column, n = number] {
                              run("update gl_accvouch set " + std::string(c) + "=" + n);
                          }).number());
    }
    run("update gl_accvouch set idoc=-32768 where inid=1");
    EXPECT_EQ(first("select idoc from gl_accvouch where inid=1"), Variant(std::int16_t{-32768}));
    Z7_NEEDS(database_->tellsErrorNumbers());
    EXPECT_THAT(numbers, ::testing::Each(::testing::AnyOf(8115, 220))); // the server has 220 for its smallest types
}

TEST_P(TypeCases, TextsThatAreTooLongAreRefusedByCharacters) {
    const auto of = [](const std::string& character, int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += character;
        }
        return text;
    };
    run("update gl_accvouch set cdigest=N'" + of("汉", 300) + "' where inid=1");
    EXPECT_EQ(first("select cdigest from gl_accvouch where inid=1"), Variant(of("汉", 300)));
    EXPECT_EQ(errorOf([&] { run("update gl_accvouch set cdigest=N'" + of("汉", 301) + "' where inid=1"); }).number(),
              8152);
}

TEST_P(TypeCases, TextsCompareWithoutCaseAndEndBlanks) {
    Z7_NEEDS(database_->comparesWithoutCase());
    run("insert into fitemss98 (citemcode,citemname) values(N'Ä1',N'Straße 汉字')");
    EXPECT_EQ(count("select * from fitemss98 where citemcode=N'ä1'"), 1);
    EXPECT_EQ(count("select * from fitemss98 where citemcode=N'ä1  '"), 1);
    EXPECT_EQ(count("select * from fitemss98 where citemcode=N' ä1'"), 0);
    EXPECT_EQ(count("select * from fitemss98 where citemname=N'STRAßE 汉字'"), 1);
    EXPECT_EQ(count("select * from fitemss98 where citemname=N'STRAßE 汉宇'"), 0);
    EXPECT_EQ(count("select * from fitemss98 where citemname like N'%RASSE%'"), 0);
    EXPECT_EQ(count("select * from fitemss98 where citemname like N'str__e 汉%'"), 1);
    EXPECT_EQ(count("select * from fitemss98 where N'OTHER'=N'other'"), 3);
    EXPECT_EQ(count("select * from fitemss98 where isnull(citemname,N'')=N'oTHER'"), 1);
    EXPECT_EQ(errorOf([&] { run("insert into fitemss98 (citemcode) values(N'ä1 ')"); }).sqlState(), "23000");
    EXPECT_EQ(first("select citemcode from fitemss98 where citemcode=N'ä1'"), Variant("Ä1")) << "as it was written";
}

TEST_P(TypeCases, TextsThatLookLikeNumbersStayTexts) {
    for (const char* text : {"1E500000000", "0012", "1.50", " 7", "-0"}) {
        run(std::string("update gl_accvouch set cdigest=N'") + text + "'");
        EXPECT_EQ(first("select cdigest from gl_accvouch"), Variant(text));
        EXPECT_EQ(count(std::string("select * from gl_accvouch where cdigest='") + text + "'"), 3);
    }
}

INSTANTIATE_TEST_SUITE_P(Adapters, TypeCases, ::testing::ValuesIn(databasesUnderTest()), adapterName);

} // namespace
} // namespace z7::cashflow::conformance
