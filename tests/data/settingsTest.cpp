#include "data/DataTest.h"
#include "z7cashflow/statements/settingStatements.h"

namespace z7::cashflow::test {
namespace {

class Settings : public DataTest {
protected:
    const std::string option = sent(statements::accountOption, "GL", "bCashCode");
    const std::string voucherOption = sent(statements::voucherOptions, "demo");
    const std::string period = sent(statements::accountingPeriod, "001", "2013-01-05", "2013-01-05");
};

TEST_F(Settings, AMissingAccountOptionIsEmptyWhereTheHostHasNoMessageBoxes) {
    modPublic::context().createMessageBox = nullptr;
    database.answer(option, {{"cvalue", "cdefault"}, {}, {}});
    testing::internal::CaptureStderr();
    EXPECT_EQ(data.GetAccInfo(connection, "GL", "bCashCode"), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "GetAccinfo Error!: GL--bCashCode\n");
    EXPECT_EQ(database.openRecordsets(), Lines{});
}

TEST_F(Settings, AnAccountOptionIsItsValueAsTextAndEmptyForNull) {
    database.answerInTurn(option, {{{"cvalue", "cdefault"}, {{"True", "False"}}, {}},
                                   {{"cvalue", "cdefault"}, {{Null{}, "False"}}, {}},
                                   {{"CValue", "CDefault"}, {{std::int32_t{7}, Null{}}}, {}}});
    EXPECT_EQ(data.GetAccInfo(connection, "GL", "bCashCode"), "True");
    EXPECT_EQ(data.GetAccInfo(connection, "GL", "bCashCode"), "");
    EXPECT_EQ(data.GetAccInfo(connection, "GL", "bCashCode"), "7");
    expectStatements({"main(0,1): " + option, "main(0,1): " + option, "main(0,1): " + option});
    EXPECT_EQ(messages->log, Lines{});
}

TEST_F(Settings, AMissingAccountOptionIsReportedEachTime) {
    database.answer(option, {{"cvalue", "cdefault"}, {}, {}});
    EXPECT_EQ(data.GetAccInfo(connection, "GL", "bCashCode"), "");
    EXPECT_EQ(data.GetAccInfo(connection, "GL", "bCashCode"), "");
    const std::string shown = "Show GL--bCashCode|16|GetAccinfo Error!||0";
    EXPECT_EQ(messages->log, (Lines{"Locale 2052", shown, "Locale 2052", shown}));
    EXPECT_EQ(database.openRecordsets(), Lines{});
}

TEST_F(Settings, AnOperatorsOption) {
    database.answerInTurn(voucherOption, {{{"operator", "iUpdateCashFlow"}, {{"demo", true}, {"demo", false}}, {}},
                                          {{"operator", "IUPDATECASHFLOW"}, {{"demo", std::int32_t{1}}}, {}},
                                          {{"operator", "iUpdateCashFlow"}, {{"demo", Null{}}}, {}},
                                          {{"operator", "iUpdateCashFlow"}, {}, {}}});
    EXPECT_EQ(data.GetVoucherOption(connection, "demo", "iUpdateCashFlow"), "True");
    EXPECT_EQ(data.GetVoucherOption(connection, "demo", "iUpdateCashFlow"), "1");
    EXPECT_EQ(data.GetVoucherOption(connection, "demo", "iUpdateCashFlow"), "0");
    EXPECT_EQ(data.GetVoucherOption(connection, "demo", "iUpdateCashFlow"), "0");
    expectStatements(Lines(4, "main(0,1): " + voucherOption));
}

TEST_F(Settings, AnOptionThatIsNotAColumnIsTheCallersError) {
    database.answer(voucherOption, one("operator", "demo"));
    EXPECT_ERROR(data.GetVoucherOption(connection, "demo", "iNoOption"), errors::unknownField);
    database.answer(voucherOption, none("operator"));
    EXPECT_EQ(data.GetVoucherOption(connection, "demo", "iNoOption"), "0");
}

TEST_F(Settings, YearAndPeriodOfADate) {
    database.answerInTurn(period, {{{"iyear", "iid"}, {{i16(2013), std::uint8_t{1}}, {i16(2014), std::uint8_t{2}}}, {}},
                                   {{"iYear", "iID"}, {{"2012", i16(12)}}, {}},
                                   {{"iyear", "iid"}, {}, {}}});
    EXPECT_EQ(data.DateToYearPeriod(connection, Date(41279.0)), "201301");
    EXPECT_EQ(data.DateToYearPeriod(connection, Date(41279.0)), "201212");
    EXPECT_EQ(data.DateToYearPeriod(connection, Date(41279.0)), "190000");
    expectStatements(Lines(3, "main(3,-1): " + period));
}

TEST_F(Settings, YearAndPeriodAreThoseOfTheLoginsAccount) {
    database.answerPrefix("select iyear", {{"iyear", "iid"}, {}, {}});
    login->answers.accountId = "0'99";
    EXPECT_EQ(data.DateToYearPeriod(connection, Date::none()), "190000");
    expectStatements({"main(3,-1): " + sent(statements::accountingPeriod, "0'99", "1900-01-01", "1900-01-01")});
}

TEST_F(Settings, AFailingStatementIsTheCallersError) {
    database.failPrefix("select", Error(208, "server", "no such table"));
    EXPECT_ERROR(data.GetAccInfo(connection, "GL", "bCashCode"), 208);
    EXPECT_ERROR(data.GetVoucherOption(connection, "demo", "x"), 208);
    EXPECT_ERROR(data.DateToYearPeriod(connection, Date(41279.0)), 208);
    EXPECT_EQ(messages->log, Lines{});
}

TEST_F(Settings, TheEmptyOperationDoesNothing) {
    data.CallRef(connection, "reference", Variant(1.0), Variant());
    expectStatements({});
    EXPECT_EQ(messages->log, Lines{});
}

TEST_F(Settings, GuidTextsComeFromTheContextsSource) {
    EXPECT_EQ(data.GetGUID(), GuidSequence::text(1));
    EXPECT_EQ(data.GetGUID(), GuidSequence::text(2));
    modPublic::context().guidSource = [] { return std::nullopt; };
    EXPECT_EQ(data.GetGUID(), "");
}

} // namespace
} // namespace z7::cashflow::test
