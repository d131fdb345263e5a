#include "data/DataTest.h"
#include "z7cashflow/statements/voucherStatements.h"

namespace z7::cashflow::test {
namespace {

class VoucherQueries : public DataTest {
protected:
    struct Key {
        std::uint8_t iPeriod = 9;
        std::int16_t iSignSeq = 9;
        std::int32_t iNo_id = 9;
        Date dbill_date{9.0};
    };
    Key keyOf(const std::string& coutNo_id) {
        Key key;
        data.GetVoucherKeyFromOut_id(connection, coutNo_id, key.iPeriod, key.iSignSeq, key.iNo_id, key.dbill_date);
        return key;
    }
};

TEST_F(VoucherQueries, KeyedTablesAreKnownByNameAlone) {
    for (const char* name : {"gl_accvouch", "GL_ACCVOUCH", "GL_accvouch", "gl_v_accvouch", "Gl_V_AccVouch"}) {
        EXPECT_TRUE(data.HaveVoucherKey(connection, name)) << name;
    }
    for (const char* name :
         {"", "gl_accvouch ", " gl_accvouch", "dbo.gl_accvouch", "gl_accvouch2", "tempdb..TempVoucher"}) {
        EXPECT_FALSE(data.HaveVoucherKey(connection, name)) << name;
    }
    expectStatements({});
}

TEST_F(VoucherQueries, WhetherAnAccountIsACashFlowAccount) {
    const std::string text = sent(statements::cashAccount, 2011, "1001");
    database.answerInTurn(text, {one("ccode", "1001"), none("ccode")});
    EXPECT_TRUE(data.CodeIsCashFlowKm(connection, "1001"));
    EXPECT_FALSE(data.CodeIsCashFlowKm(connection, "1001"));
    expectStatements({"main: " + text, "main: " + text});
}

TEST_F(VoucherQueries, WhetherAKeyedVoucherTouchesCash) {
    const std::string text = sent(statements::cashLine, "GL_AccVouch", {1, 2, 40000}, 2011);
    database.answerInTurn(text, {one("ccode", "1001"), none("ccode")});
    EXPECT_TRUE(data.HaveCashFlowCodeInVoucher(connection, "GL_AccVouch", 1, 2, 40000));
    EXPECT_FALSE(data.HaveCashFlowCodeInVoucher(connection, "GL_AccVouch", 1, 2, 40000));
    expectStatements({"main: " + text, "main: " + text});
}

TEST_F(VoucherQueries, WhetherAKeylessVoucherTouchesCash) {
    const std::string text = sent(statements::keylessCashLine, "mine", 2011);
    database.answerInTurn(text, {one("ccode", "1001"), none("ccode")});
    EXPECT_TRUE(data.HaveCashFlowCodeInVoucher(connection, "mine", 1, 2, 5));
    EXPECT_FALSE(data.HaveCashFlowCodeInVoucher(connection, "mine", 0, 0, 0));
    expectStatements({"main: " + text, "main: " + text});
}

TEST_F(VoucherQueries, WhetherAnOutsideVoucherTouchesCashInAKeyedTable) {
    for (const std::string table : {"GL_accvouch", "gl_v_accvouch", "GL_V_ACCVOUCH"}) {
        database.clearJournal();
        const std::string text = sent(statements::outsideCashLine, table, "OUT", 2013);
        database.answerInTurn(text, {one("ccode", "1001"), none("ccode")});
        EXPECT_TRUE(data.HaveCashFlowCodeInVoucher2(connection, table, "OUT"));
        EXPECT_FALSE(data.HaveCashFlowCodeInVoucher2(connection, table, "OUT"));
        expectStatements({"main: " + text, "main: " + text});
    }
}

TEST_F(VoucherQueries, WhetherAnOutsideVoucherTouchesCashInAnyOtherTable) {
    for (const std::string table : {"gl_accvouch", "GL_ACCVOUCH", "mine"}) {
        database.clearJournal();
        const std::string text = sent(statements::keylessOutsideCashLine, table, "OUT", 2013);
        database.answer(text, one("ccode", "1001"));
        EXPECT_TRUE(data.HaveCashFlowCodeInVoucher2(connection, table, "OUT"));
        expectStatements({"main: " + text});
    }
}

const std::string keyedSum = sent(statements::cashSum, "gl_v_accvouch", 2011, {1, 2, 40000});

TEST_F(VoucherQueries, CashSumOfAKeyedVoucher) {
    database.answerInTurn(keyedSum, {one("mysum", -50.25), none("mysum")});
    EXPECT_EQ(data.GetCashSumInVoucher(connection, "gl_v_accvouch", 1, 2, 40000), -50.25);
    EXPECT_EQ(data.GetCashSumInVoucher(connection, "gl_v_accvouch", 1, 2, 40000), 0.0);
    expectStatements({"main: " + keyedSum, "main: " + keyedSum});
}

TEST_F(VoucherQueries, CashSumOfAKeylessVoucher) {
    const std::string text = sent(statements::keylessCashSum, "mine", 2011);
    database.answerInTurn(text, {one("mysum", 100.0), one("mysum", Null{})});
    EXPECT_EQ(data.GetCashSumInVoucher(connection, "mine", 1, 2, 5), 100.0);
    EXPECT_EQ(data.GetCashSumInVoucher(connection, "mine", 1, 2, 5), 0.0);
    expectStatements({"main: " + text, "main: " + text});
}

TEST_F(VoucherQueries, CashSumIsRoundedToCents) {
    const std::vector<std::pair<double, double>> sums{{1234.565, 1234.57}, {0.004, 0.0},    {-0.004, 0.0},
                                                      {0.005, 0.01},       {-2.345, -2.35}, {1e12, 1e12}};
    for (const auto& [sum, rounded] : sums) {
        database.answer(keyedSum, one("mysum", sum));
        EXPECT_EQ(data.GetCashSumInVoucher(connection, "gl_v_accvouch", 1, 2, 40000), rounded) << sum;
    }
}

const std::string outsideSum = sent(statements::outsideCashSum, "mine", "OUT");

TEST_F(VoucherQueries, CashSumOfAnOutsideVoucherIsNotRounded) {
    database.answerInTurn(outsideSum, {one("mysum", 1234.565), one("mysum", 0.004), none("mysum")});
    EXPECT_EQ(data.GetCashSumInVoucher2(connection, "mine", "OUT"), 1234.565);
    EXPECT_EQ(data.GetCashSumInVoucher2(connection, "mine", "OUT"), 0.004);
    EXPECT_EQ(data.GetCashSumInVoucher2(connection, "mine", "OUT"), 0.0);
    expectStatements({"main: " + outsideSum, "main: " + outsideSum, "main: " + outsideSum});
}

TEST_F(VoucherQueries, CashSumOfAnOutsideVoucherWithoutAmountsIsAnInvalidNull) {
    database.answer(outsideSum, one("mysum", Null{}));
    EXPECT_ERROR(data.GetCashSumInVoucher2(connection, "mine", "OUT"), errors::invalidNull);
    EXPECT_EQ(database.openRecordsets(), Lines{});
}

const std::string outsideKey = sent(statements::ledgerVoucherOf, 2011, "OUT");

TEST_F(VoucherQueries, KeyOfTheLedgerVoucherIsTakenFromItsFirstLine) {
    database.answer(outsideKey, {{"iperiod", "isignseq", "ino_id", "dbill_date"},
                                 {{std::uint8_t{3}, i16(1), std::int32_t{70000}, Date(40600.0)},
                                  {std::uint8_t{4}, i16(2), std::int32_t{8}, Date(40601.0)}},
                                 {}});
    const Key key = keyOf("OUT");
    EXPECT_EQ(key.iPeriod, 3);
    EXPECT_EQ(key.iSignSeq, 1);
    EXPECT_EQ(key.iNo_id, 70000);
    EXPECT_EQ(key.dbill_date, Date(40600.0));
    expectStatements({"main: " + outsideKey});
}

TEST_F(VoucherQueries, KeyOfAVoucherThatIsNotThereIsZeroOnNoDate) {
    database.answer(outsideKey, none("iperiod"));
    const Key key = keyOf("OUT");
    EXPECT_EQ(key.iPeriod, 0);
    EXPECT_EQ(key.iSignSeq, 0);
    EXPECT_EQ(key.iNo_id, 0);
    EXPECT_EQ(key.dbill_date, Date::none());
    expectStatements({"main: " + outsideKey});
}

TEST_F(VoucherQueries, QuotesGoDownAsTheyCome) {
    database.answerPrefix("select", none("x"));
    (void)data.CodeIsCashFlowKm(connection, "10'01");
    (void)keyOf("O'UT");
    (void)data.HaveCashFlowCodeInVoucher2(connection, "mine", "O'UT");
    EXPECT_NE(database.texts()[0].find("ccode=N'10'01' and"), std::string::npos);
    EXPECT_TRUE(database.texts()[1].ends_with("coutNo_id=N'O'UT'"));
    EXPECT_NE(database.texts()[2].find("coutNo_id=N'O'UT' and"), std::string::npos);
}

TEST_F(VoucherQueries, AFailingStatementIsTheCallersError) {
    database.failPrefix("select", Error(-2147217900, "server", "syntax"));
    EXPECT_ERROR(data.CodeIsCashFlowKm(connection, "1"), -2147217900);
    EXPECT_ERROR(data.HaveCashFlowCodeInVoucher(connection, "mine", 1, 2, 5), -2147217900);
    EXPECT_ERROR(data.HaveCashFlowCodeInVoucher2(connection, "mine", "OUT"), -2147217900);
    EXPECT_ERROR(data.GetCashSumInVoucher(connection, "mine", 1, 2, 5), -2147217900);
    EXPECT_ERROR(data.GetCashSumInVoucher2(connection, "mine", "OUT"), -2147217900);
    EXPECT_ERROR((keyOf("OUT"), 0), -2147217900);
}

} // namespace
} // namespace z7::cashflow::test
