// Vouchers and rows given as XML, on the embedded database: both contracts, and what remains in tempdb.

#include "outside/CompanyTest.h"
#include "z7cashflow/data/DataProvider.h"

#include <algorithm>

namespace z7::cashflow::test {
namespace {

class EmbeddedXml : public CompanyTest {
protected:
    static std::string voucherXml(const std::string& root, const std::string& outsideKey) {
        return "<v " + root + "><e inid='1' ccode='1001' md='250.5'" + outsideKey +
               "/><e inid='2' ccode='6001' mc='250.5'" + outsideKey + "/></v>";
    }
    /// The first word of each statement and the session that ran it.
    Lines statementKinds() {
        Lines kinds;
        for (const std::string& statement : company.takeStatements()) {
            kinds.push_back(statement.substr(0, statement.find(' ', statement.find(": ") + 2)));
        }
        return kinds;
    }

    const std::string wholeKey = "iperiod='1' isignseq='1' ino_id='6' dbill_date='2013-01-05'";
};

TEST_F(EmbeddedXml, AStoredVoucherIsFoundByItsWholeKeyInBothContracts) {
    storeRow();
    EXPECT_EQ(rowsOf(gl.GetCashFlowColFromXml(connection, voucherXml(wholeKey, ""))), Lines{"line 2 item 02 0 250.5"});
    EXPECT_EQ(rowsOf(out.GetCashFlowColFromXml(connection, voucherXml(wholeKey, ""))), Lines{"line 2 item 02 0 250.5"});
    EXPECT_EQ(company.records("select count(*) as n from gl_v_accvouch"), Lines{"n=6"}) << "the view is still there";
    EXPECT_EQ(company.temporaryTables(), 0);
}

TEST_F(EmbeddedXml, AStoredVoucherIsFoundByItsOutsideKey) {
    storeRow();
    const std::string xml = gl.GetCashFlowColFromXml(connection, voucherXml("", " coutno_id='OUT'"));
    EXPECT_EQ(rowsOf(xml), Lines{"line 2 item 02 0 250.5"});
    EXPECT_TRUE(xml.starts_with("<root iperiod='1' isignseq='1' ino_id='6'>"));
    EXPECT_EQ(company.temporaryTables(), 0);
}

TEST_F(EmbeddedXml, AVoucherWithoutStoredRowsReturnsNoRowsInBothContracts) {
    EXPECT_EQ(gl.GetCashFlowColFromXml(connection, voucherXml(wholeKey, "")), noRows());
    EXPECT_EQ(out.GetCashFlowColFromXml(connection, voucherXml(wholeKey, "")), noRows());
    EXPECT_EQ(gl.GetCashFlowColFromXml(connection, voucherXml("", " coutno_id='OUT'")), noRows());
    EXPECT_EQ(out.GetCashFlowColFromXml(connection, "<v/>"), noRows());
    EXPECT_EQ(company.temporaryTables(), 0);
}

TEST_F(EmbeddedXml, GenerationReturnsNoRowsIfNoLineHasTheOutsideKey) {
    for (const std::string& root : {wholeKey, std::string()}) {
        EXPECT_EQ(gl.GetCashFlowColFromXml(connection, voucherXml(root, ""), true), noRows());
        EXPECT_EQ(out.GetCashFlowColFromXml(connection, voucherXml(root, ""), true), noRows());
    }
    EXPECT_EQ(company.temporaryTables(), 0);
}

TEST_F(EmbeddedXml, GenerationFailsInTheDatabaseWhereALineCarriesTheOutsideKeyAndLeavesTheTable) {
    const Error error =
        errorOf([&] { (void)gl.GetCashFlowColFromXml(connection, voucherXml(wholeKey, " coutno_id='OUT'"), true); });
    EXPECT_NE(error.source(), "CashFlow");
    EXPECT_NE(error.description().find("ccashitem_id"), std::string::npos) << error.description();
    EXPECT_EQ(company.temporaryTables(), 1);
    EXPECT_NE(
        errorNumberOf([&] { (void)out.GetCashFlowColFromXml(connection, voucherXml("", " coutno_id='OUT'"), true); }),
        0);
    EXPECT_EQ(company.temporaryTables(), 2);
}

TEST_F(EmbeddedXml, TheTableIsFilledOnAnotherSessionAndReadAndDroppedOnTheHosts) {
    EXPECT_EQ(gl.GetCashFlowColFromXml(connection, voucherXml("", ""), true), noRows());
    EXPECT_EQ(statementKinds(), (Lines{"main: drop", "main: select", "own: select", "main: select", "main: Drop"}));
}

TEST_F(EmbeddedXml, TheOutsideContractReadsItsOptionsFirstAndKeepsThem) {
    company.setOption("bCashCode", "true");
    company.setOption("bAutoDisplay", "TRUE");
    EXPECT_EQ(out.GetCashFlowColFromXml(connection, voucherXml(wholeKey, "")), noRows());
    const Lines statements = company.takeStatements();
    ASSERT_GE(statements.size(), 2U);
    EXPECT_NE(statements[0].find("cname = N'bCashCode'"), std::string::npos);
    EXPECT_NE(statements[1].find("cname = N'bAutoDisplay'"), std::string::npos);
    EXPECT_TRUE(modPublic::context().bCashCode);
    EXPECT_TRUE(modPublic::context().bAutoDisplay);
    company.setOption("bCashCode", "no");
    (void)gl.GetCashFlowColFromXml(connection, voucherXml(wholeKey, ""));
    EXPECT_TRUE(modPublic::context().bCashCode) << "the ledger's contract leaves the flags as they are";
    EXPECT_EQ(modPublic::context().yearOverride, 0);
}

TEST_F(EmbeddedXml, TheOptionsAreKeptAlsoWhereTheXmlIsRefused) {
    company.setOption("bCashCode", "True");
    EXPECT_ERROR(out.GetCashFlowColFromXml(connection, "no xml"), 1005);
    EXPECT_TRUE(modPublic::context().bCashCode);
    EXPECT_EQ(company.temporaryTables(), 0);
}

TEST_F(EmbeddedXml, AValueThatDoesNotFitItsColumnLeavesTheField) {
    const std::string text = "<v><e inid='1' ccode='1001' md='12a' mc=' 1,234.565 ' dt_date='5.1.2013' cexch_name='" +
                             std::string(21, 'x') + "' cDefine5='1E3' unknown='1'/></v>";
    std::uint8_t iPeriod = 0;
    std::int16_t iSignSeq = 0;
    std::int32_t iNo_id = 0;
    Date date;
    std::string outsideKey;
    const std::string table =
        DataProvider().VoucherXmlToDB(connection, text, iPeriod, iSignSeq, iNo_id, date, outsideKey, false);
    EXPECT_EQ(company.records("select inid,md,mc,dt_date,cexch_name,cDefine5,idoc from " + table),
              Lines{"inid=1 md=0 mc=1234.565 cDefine5=1000 idoc=0"});
    EXPECT_EQ(outsideKey, GuidSequence::text(2));
    company.execute("drop table " + table);
}

TEST_F(EmbeddedXml, AFailedLineLeavesTheTableBehind) {
    EXPECT_ERROR(gl.GetCashFlowColFromXml(connection, "<v><e inid='1' ccode='1'/><e inid='2'/></v>"),
                 errors::objectNotSet);
    EXPECT_EQ(company.temporaryTables(), 1);
    EXPECT_NE(errorNumberOf([&] { (void)gl.GetCashFlowColFromXml(connection, "<v><e ccode='1'/></v>"); }), 0)
        << "a line has a number";
    EXPECT_EQ(company.temporaryTables(), 2);
}

TEST_F(EmbeddedXml, TheCheckOfAVoucherAsXmlEndsInAnError) {
    std::string info = "before";
    for (const std::string& text : {voucherXml(wholeKey, ""), voucherXml("", " coutno_id='OUT'"), voucherXml("", ""),
                                    std::string("<v/>"), std::string("no xml")}) {
        EXPECT_NE(errorNumberOf([&] { (void)out.CheckCFColFromXml(connection, text, "", &info); }), 0) << text;
    }
    EXPECT_EQ(info, "before");
    EXPECT_EQ(company.temporaryTables(), 3) << "one for each voucher that is not in the view, never dropped";
}

TEST_F(EmbeddedXml, SaveFromXmlStoresTheAllotmentAndTheVouchersFields) {
    storeRow();
    std::string xml = documentOf("01", 250.5);
    bool check = true;
    EXPECT_TRUE(gl.SaveCashFlowColFromXml(connection, "gl_accvouch", 1, 1, 6, &xml, &check));
    EXPECT_FALSE(check);
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5")});
    EXPECT_EQ(company.records("select csign,cexch_name,dbill_date from gl_cashtable"),
              Lines{"csign=收 cexch_name=人民币 dbill_date=2013-01-05"});
    EXPECT_EQ(modPublic::context().yearOverride, 0) << "no date was given, so no year was set";
}

TEST_F(EmbeddedXml, SaveFromXmlComparesSumsWhereTheAccountSaysSo) {
    storeRow();
    company.setOption("bXJLL", "true");
    std::string xml = documentOf("01", 250.0);
    bool check = false;
    EXPECT_ERROR(gl.SaveCashFlowColFromXml(connection, "gl_accvouch", 1, 1, 6, &xml, &check), 10009);
    EXPECT_TRUE(check);
    EXPECT_EQ(company.storedRows(), Lines{stored("02", "250.5")});
}

TEST_F(EmbeddedXml, SaveFromXmlWithoutXmlSavesWhatTheDatabaseHas) {
    std::string xml;
    EXPECT_TRUE(gl.SaveCashFlowColFromXml(connection, "gl_accvouch", 1, 1, 6, &xml));
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5")});
    EXPECT_EQ(xml, "");
    EXPECT_EQ(modPublic::context().yearOverride, 2013) << "the date was found in the voucher";
}

TEST_F(EmbeddedXml, WhicheverStatementFailsTheTableStaysOnceItIsMadeAndUntilItIsDropped) {
    for (const bool outside : {false, true}) {
        const auto read = [&](Company& of) {
            VoucherProvider provider;
            return outside ? provider.out().GetCashFlowColFromXml(of.connection(), voucherXml("", ""), true)
                           : provider.gl().GetCashFlowColFromXml(of.connection(), voucherXml("", ""), true);
        };
        Lines whole;
        company.connection().onStatement([&](int /*session*/, const std::string& text) { whole.push_back(text); });
        EXPECT_EQ(read(company), noRows());
        ASSERT_EQ(whole.size(), outside ? 7U : 5U);
        for (std::size_t failing = 1; failing <= whole.size(); ++failing) {
            Company fresh;
            std::size_t run = 0;
            fresh.connection().onStatement([&](int /*session*/, const std::string& /*text*/) {
                if (++run == failing) {
                    throw Error(547, "test", "broken");
                }
            });
            const std::string& statement = whole[failing - 1];
            const bool unnoticed = statement.starts_with("drop table") || statement.starts_with("Drop table");
            EXPECT_EQ(errorNumberOf([&] { (void)read(fresh); }), unnoticed ? 0 : 547) << statement;
            const bool made = failing > static_cast<std::size_t>(outside ? 4 : 2);
            EXPECT_EQ(fresh.temporaryTables(), made ? 1 : 0) << statement;
            EXPECT_FALSE(fresh.connection().inTransaction());
        }
    }
}

} // namespace
} // namespace z7::cashflow::test
