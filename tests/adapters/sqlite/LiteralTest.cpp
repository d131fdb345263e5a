#include "adapters/sqlite/EmbeddedDatabase.h"
#include "adapters/tsql/declaredType.h"

#include <gtest/gtest.h>

namespace z7::cashflow::sqlite {
namespace {

using conformance::errorOf;

class LiteralTest : public ::testing::Test {
protected:
    void SetUp() override {
        connection_ = database_.open();
        connection_->Execute(
            "insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,ccode) values(2013,1,1,1,1,N'1')");
    }
    Variant stored(const std::string& column, const std::string& literal) {
        connection_->Execute("update gl_accvouch set " + column + "=" + literal);
        return connection_->Execute("select " + column + " from gl_accvouch")->Fields().Item(0);
    }
    int refusal(const std::string& column, const std::string& literal) {
        return errorOf([&] { stored(column, literal); }).number();
    }
    EmbeddedDatabase database_;
    std::unique_ptr<Connection> connection_;
};

TEST_F(LiteralTest, BecomesTheNumberThatItsColumnHoldsOrIsRefused) {
    EXPECT_EQ(stored("md", "1.23456"), Variant(1.2346));
    EXPECT_EQ(stored("md", "-.5"), Variant(-0.5));
    EXPECT_EQ(stored("md", "5."), Variant(5.0));
    EXPECT_EQ(stored("md", "1e2"), Variant(100.0));
    EXPECT_EQ(stored("md", "N'1,234.5'"), Variant(1234.5));
    EXPECT_EQ(stored("nd_s", "1.23456"), Variant(1.23456));
    EXPECT_EQ(stored("md", "''"), Variant(0.0));
    EXPECT_EQ(stored("idoc", "2.9"), Variant(std::int16_t{2}));
    EXPECT_EQ(stored("idoc", "-2.9"), Variant(std::int16_t{-2}));
    EXPECT_EQ(stored("idoc", "null"), Variant());
    EXPECT_EQ(refusal("nd_s", "N'1,234.5'"), 8114);
    EXPECT_EQ(refusal("nd_s", "1e999"), 8115);
    EXPECT_EQ(refusal("idoc", "99999999999999999999"), 8115);
    EXPECT_EQ(refusal("idoc", "N'汉'"), 8114);
}

TEST_F(LiteralTest, BecomesTheDateThatItsColumnHoldsOrIsRefused) {
    EXPECT_EQ(stored("dbill_date", "''"), Variant(Date::none()));
    EXPECT_EQ(stored("dbill_date", "41277"), Variant(Date::fromCivil(2013, 1, 5))) << "days since 1900-01-01";
    EXPECT_EQ(stored("dbill_date", "'2013-01-05T10:00:00'"), Variant(Date::fromCivil(2013, 1, 5, 10)));
    EXPECT_EQ(refusal("dbill_date", "'20130230'"), 241);
    EXPECT_EQ(refusal("dbill_date", "'05.01.2013'"), 241);
    EXPECT_EQ(refusal("dbill_date", "1e9"), 8115);
}

TEST_F(LiteralTest, StaysAsWrittenInAColumnOfTextsUnlessItIsTooLong) {
    EXPECT_EQ(stored("cdigest", "-1.50"), Variant("-1.50"));
    EXPECT_EQ(stored("cdigest", "N'it''s'"), Variant("it's"));
    EXPECT_EQ(stored("cdigest", "''"), Variant(""));
    EXPECT_EQ(refusal("cexch_name", "N'123456789012345678901'"), 8152);
}

TEST_F(LiteralTest, IsComparedAsAValueOfItsColumn) {
    stored("md", "1.5");
    const auto count = [&](const std::string& condition) {
        return connection_->Execute("select ccode from gl_accvouch where " + condition)->RecordCount();
    };
    EXPECT_EQ(count("md=N'1.50'"), 1);
    EXPECT_EQ(count("inid=1.5"), 0) << "a fraction equals no whole number";
    EXPECT_EQ(count("inid<1.5"), 1);
    EXPECT_EQ(count("ino_id<99999999999"), 1);
    EXPECT_EQ(count("1=inid"), 1);
    EXPECT_EQ(count("inid in ('1',2)"), 1);
    EXPECT_EQ(count("inid between '0' and 1"), 1);
    EXPECT_EQ(count("ccode=1"), 1);
    EXPECT_EQ(count("exists(select x.ccode from gl_accvouch x where x.inid='1' and x.dbill_date is null)"), 1);
}

TEST(DeclaredType, ReadsWhatTheSchemaDeclares) {
    using shared::ColumnType;
    EXPECT_EQ(tsql::declaredColumn("c", "money real").type, ColumnType::money);
    EXPECT_EQ(tsql::declaredColumn("c", "nvarchar(40)").length, 40);
    EXPECT_EQ(tsql::declaredColumn("c", "NVARCHAR(max)").length, 0);
    EXPECT_EQ(tsql::declaredColumn("c", "uniqueidentifier").type, ColumnType::text);
    EXPECT_EQ(tsql::declaredColumn("c", "").type, ColumnType::any);
    EXPECT_EQ(tsql::declaredColumn("c", "int").type, ColumnType::int32);
}

} // namespace
} // namespace z7::cashflow::sqlite
