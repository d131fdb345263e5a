// Vouchers of other subsystems on the embedded database: what the outside contract returns, stores and leaves
// behind.

#include "outside/CompanyTest.h"

namespace z7::cashflow::test {
namespace {

class EmbeddedOutside : public CompanyTest {
protected:
    bool save(std::string* xml, const std::string& table = "GL_accvouch", bool* blnCheckCF = nullptr) {
        return out.SaveCashFlowCol(connection, table, "OUT", xml, blnCheckCF);
    }
};

TEST_F(EmbeddedOutside, CreateTakesTheItemOfTheSubsystemsOwnLine) {
    EXPECT_EQ(rowsOf(out.CreateCashFlowColFromDB(connection, "sales", "OUT")), Lines{"line 2 item 02 0 250.5"});
    EXPECT_TRUE(out.CreateCashFlowColFromDB(connection, "sales", "OUT")
                    .starts_with("<root iperiod='1' isignseq='1' ino_id='6'>"));
}

TEST_F(EmbeddedOutside, CreateReadsLinesOfTheLedgerByTheOutsideKey) {
    EXPECT_EQ(rowsOf(out.CreateCashFlowColFromDB(connection, "gl_accvouch", "OUT")), Lines{"line 2 item 01 0 250.5"});
}

TEST_F(EmbeddedOutside, CreateFailsForANumberBeyond16Bits) {
    EXPECT_ERROR(out.CreateCashFlowColFromDB(connection, "gl_v_accvouch", "BIG"), errors::overflow);
}

TEST_F(EmbeddedOutside, CreateReturnsTheEmptyTextWithoutACashAccountAndReadADocumentWithoutRows) {
    EXPECT_EQ(out.CreateCashFlowColFromDB(connection, "costs", "NOCASH"), "");
    EXPECT_EQ(out.GetCashFlowColFromDB(connection, "costs", "NOCASH"), noRows());
    EXPECT_EQ(company.takeStatements().size(), 2U) << "the key is never asked for";
}

TEST_F(EmbeddedOutside, CreateReturnsNoRowsIfCashCancelsOut) {
    company.execute("insert into sales (coutno_id,inid,ccode,md,mc) values(N'OUT',3,N'1002',0,250.5)");
    EXPECT_EQ(out.CreateCashFlowColFromDB(connection, "sales", "OUT"), noRows());
}

TEST_F(EmbeddedOutside, AnUnknownKeyHasNoCashAndNoRows) {
    EXPECT_EQ(out.CreateCashFlowColFromDB(connection, "sales", "NOBODY"), "");
    EXPECT_EQ(out.GetCashFlowColFromDB(connection, "sales", "NOBODY"), noRows());
    std::string xml;
    EXPECT_TRUE(out.SaveCashFlowCol(connection, "sales", "NOBODY", &xml));
    EXPECT_EQ(xml, "");
}

TEST_F(EmbeddedOutside, AVoucherThatTheLedgerDoesNotHaveGetsRowsWithoutAKey) {
    company.execute("update sales set coutno_id=N'NEW'");
    const std::string xml = out.CreateCashFlowColFromDB(connection, "sales", "NEW");
    EXPECT_TRUE(xml.starts_with("<root iperiod='0' isignseq='0' ino_id='0'>"));
    EXPECT_EQ(rowsOf(xml), Lines{"line 2 item 02 0 250.5"});
    EXPECT_NE(xml.find("dbill_date='1900-01-01'"), std::string::npos);
}

TEST_F(EmbeddedOutside, AQuoteInTheKeyIsTheDatabasesError) {
    EXPECT_NE(errorNumberOf([&] { (void)out.GetCashFlowColFromDB(connection, "sales", "O'Brien"); }), 0);
    EXPECT_NE(errorNumberOf([&] { (void)out.CreateCashFlowColFromDB(connection, "sales", "O'Brien"); }), 0);
    std::string xml;
    const Error error =
        errorOf([&] { (void)out.SaveCashFlowCol(connection, "sales", "x' or 1=1 or coutno_id=N'O'Brien", &xml); });
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(xml, "");
}

TEST_F(EmbeddedOutside, ReadReturnsTheStoredRowsWithTheirPresentNames) {
    storeRow("02");
    const std::string xml = out.GetCashFlowColFromDB(connection, "sales", "OUT");
    EXPECT_EQ(rowsOf(xml), Lines{"line 2 item 02 0 250.5"});
    EXPECT_NE(xml.find("cCashItemName='other receipts'"), std::string::npos);
    EXPECT_NE(xml.find("dbill_date='2013-01-05'"), std::string::npos);
    EXPECT_EQ(xml.find("before"), std::string::npos) << "the row's identity is not the stored one's";
}

TEST_F(EmbeddedOutside, ReadGeneratesInTheLedgersWayWhereNothingIsStored) {
    EXPECT_EQ(rowsOf(out.GetCashFlowColFromDB(connection, "sales", "OUT")), Lines{"line 2 item 01 0 250.5"})
        << "by the template, since the ledger's read does not know the item on the line";
    EXPECT_EQ(company.storedRows(), Lines{});
}

TEST_F(EmbeddedOutside, TheCheckBuildsItsRowsFromTheLines) {
    std::string info = "before";
    EXPECT_TRUE(out.CheckCFColFromDB(connection, "sales", "OUT", "no xml", &info));
    company.execute("update sales set mc=250 where inid=2");
    EXPECT_FALSE(out.CheckCFColFromDB(connection, "sales", "OUT", documentOf("01", 250.5), &info));
    EXPECT_EQ(info, "before");
    EXPECT_ERROR(out.CheckCFColFromDB(connection, "sales", "NOBODY", ""), errors::objectNotSet);
}

TEST_F(EmbeddedOutside, SaveReplacesWhatIsStored) {
    storeRow();
    std::string xml = documentOf("01", 250.5);
    const std::string before = xml;
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(xml, before);
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5")});
}

TEST_F(EmbeddedOutside, SaveOfARowsDocumentForAKeylessTableIsTheDatabasesError) {
    storeRow();
    std::string xml = documentOf("01", 250.5);
    const Error error = errorOf([&] { (void)save(&xml, "sales"); });
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_NE(error.number(), 10009);
    EXPECT_EQ(company.storedRows(), Lines{stored("02", "250.5")}) << "the table has no key to be asked for";
}

TEST_F(EmbeddedOutside, SaveWithoutXmlStoresGeneratedRowsAndHandsThemBack) {
    std::string xml;
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(rowsOf(xml), Lines{"line 2 item 01 0 250.5"});
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5")});
}

TEST_F(EmbeddedOutside, SaveWithoutXmlStoresWhatIsStoredAnew) {
    storeRow("02");
    std::string xml;
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(rowsOf(xml), Lines{"line 2 item 02 0 250.5"});
    EXPECT_EQ(company.storedRows(), Lines{stored("02", "250.5")});
}

TEST_F(EmbeddedOutside, SaveLeavesTheCurrencyNameEmpty) {
    std::string xml;
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(company.records("select cexch_name from gl_cashtable"), Lines{""});
}

TEST_F(EmbeddedOutside, SaveOfNoRowsDeletesOnlyWhereSumsAreNotCompared) {
    storeRow();
    std::string xml = noRows();
    EXPECT_ERROR(save(&xml), 10009);
    EXPECT_EQ(company.storedRows(), Lines{stored("02", "250.5")});
    bool check = false;
    EXPECT_TRUE(save(&xml, "GL_accvouch", &check));
    EXPECT_EQ(company.storedRows(), Lines{});
    EXPECT_FALSE(check);
}

TEST_F(EmbeddedOutside, SaveWithoutACashAccountSavesAndDeletesNothing) {
    storeRow();
    std::string xml = "no xml";
    EXPECT_TRUE(out.SaveCashFlowCol(connection, "costs", "NOCASH", &xml));
    EXPECT_EQ(company.takeStatements().size(), 1U);
    EXPECT_EQ(company.storedRows(), Lines{stored("02", "250.5")});
    EXPECT_EQ(xml, "no xml");
}

TEST_F(EmbeddedOutside, SaveStoresARowWhoseLineIsGoneWhereSumsAreNotCompared) {
    std::string xml = documentOf("01", 250.5);
    xml.replace(xml.find("inid='2'"), 8, "inid='9'");
    EXPECT_ERROR(save(&xml), 10009);
    EXPECT_EQ(company.storedRows(), Lines{});
    bool check = false;
    EXPECT_TRUE(save(&xml, "GL_accvouch", &check));
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5", "9")});
}

TEST_F(EmbeddedOutside, SaveDeletesUnderTheContextsYear) {
    storeRow();
    // In a year without the voucher its key is 0/0/0.
    for (const char* year : {"2012", "2013"}) {
        company.execute(std::string("insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,iNo_id,csign,inid,"
                                    "cCashItem,ccode,mc) values(N'x',") +
                        year + ",0,0,0,N'x',2,N'02',N'6001',1)");
    }
    modPublic::SetIYear(2012);
    std::string xml = noRows();
    bool check = false;
    EXPECT_TRUE(save(&xml, "GL_accvouch", &check));
    EXPECT_EQ(company.storedRows(), (Lines{"2013/0/0/0 line 2 account 6001 item 02 0 1", stored("02", "250.5")}));
    EXPECT_EQ(modPublic::GetIYear(), 2012);
}

TEST_F(EmbeddedOutside, SaveOfANumberBeyond16BitsIsRefusedAfterNothingHappened) {
    std::string xml = noRows();
    bool check = false;
    const Error error = errorOf([&] { (void)out.SaveCashFlowCol(connection, "gl_v_accvouch", "BIG", &xml, &check); });
    EXPECT_EQ(error.number(), errors::overflow);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(company.storedRows(), Lines{});
}

TEST_F(EmbeddedOutside, SaveIsUndoneWithTheHostsTransaction) {
    storeRow();
    connection.BeginTrans();
    std::string xml = documentOf("01", 250.5);
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5")});
    connection.RollbackTrans();
    EXPECT_EQ(company.storedRows(), Lines{stored("02", "250.5")});
}

TEST_F(EmbeddedOutside, AFailedInsertLeavesTheVoucherWithoutItsRows) {
    storeRow();
    std::string xml = documentOf("0'1", 250.5);
    bool check = false;
    const Error error = errorOf([&] { (void)save(&xml, "GL_accvouch", &check); });
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(company.storedRows(), Lines{}) << "the delete ran; a host that wants both or none opens a transaction";
}

TEST_F(EmbeddedOutside, NothingOfTheContextIsLeftBehind) {
    modPublic::SetIYear(2013);
    modPublic::context().bCashCode = true;
    modPublic::context().bAutoDisplay = true;
    company.execute("update accinformation set cvalue=N'false'");
    std::string xml;
    (void)out.GetCashFlowColFromDB(connection, "sales", "OUT");
    (void)out.CreateCashFlowColFromDB(connection, "sales", "OUT");
    (void)out.CheckCFColFromDB(connection, "sales", "OUT", "");
    bool check = false;
    (void)save(&xml, "GL_accvouch", &check);
    EXPECT_TRUE(modPublic::context().bCashCode);
    EXPECT_TRUE(modPublic::context().bAutoDisplay);
    EXPECT_EQ(modPublic::context().yearOverride, 2013);
    EXPECT_FALSE(modPublic::context().bXJLL);
    EXPECT_EQ(company.temporaryTables(), 0);
    EXPECT_FALSE(company.connection().inTransaction());
}

} // namespace
} // namespace z7::cashflow::test
