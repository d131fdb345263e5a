// Saves of ledger vouchers on the embedded database, with a former number that is in use or free.

#include "outside/CompanyTest.h"

namespace z7::cashflow::test {
namespace {

class EmbeddedSave : public CompanyTest {
protected:
    /// Generated rows of the voucher 1/1/6, which had another number before.
    std::shared_ptr<CashFlowCollection> rowsWithFormerNumber(std::int16_t former) {
        auto rows = gl.CreateCashFlowColFromDB(connection, "gl_accvouch", 1, 1, 6, Date(41279.0));
        rows->ibackno_id(former);
        return rows;
    }
    void storeRowUnder(const std::string& number) {
        storeRow("02");
        company.execute("update gl_cashtable set iNo_id=" + number + " where RowGuid=N'before' and iNo_id=6");
    }
    void addLine(const std::string& number, const std::string& account) {
        company.execute("insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,ccode,md,mc) "
                        "values(2013,1,1," +
                        number + ",1,'2013-01-05',N'" + account + "',1,0)");
    }
    bool save(std::shared_ptr<CashFlowCollection> rows, std::int32_t number = 6, bool compareSums = true) {
        return gl.SaveCashFlowCol(connection, "gl_accvouch", 1, 1, number, &rows, &compareSums);
    }
    static std::string storedUnder(const std::string& number, const std::string& item = "02") {
        return "2013/1/1/" + number + " line 2 account 6001 item " + item + " 0 250.5";
    }
};

TEST_F(EmbeddedSave, OfARenumberedVoucherKeepsTheRowsOfAFormerNumberInUseAndDoublesItsOwn) {
    addLine("7", "1001");
    storeRowUnder("7");
    storeRow("02");
    EXPECT_TRUE(save(rowsWithFormerNumber(7)));
    EXPECT_EQ(company.storedRows(), (Lines{storedUnder("6"), storedUnder("6", "01"), storedUnder("7")}));
}

TEST_F(EmbeddedSave, OfARenumberedVoucherRemovesTheRowsOfAFormerNumberThatIsFree) {
    storeRowUnder("7");
    EXPECT_TRUE(save(rowsWithFormerNumber(7)));
    EXPECT_EQ(company.storedRows(), Lines{storedUnder("6", "01")});
}

TEST_F(EmbeddedSave, OfAVoucherThatKeptItsNumberReplacesItsRows) {
    for (const std::int16_t former : {std::int16_t{0}, std::int16_t{6}}) {
        storeRow("02");
        EXPECT_TRUE(save(rowsWithFormerNumber(former)));
        EXPECT_EQ(company.storedRows(), Lines{storedUnder("6", "01")}) << former;
    }
}

TEST_F(EmbeddedSave, OfAVoucherWithoutCashRemovesTheRowsOfItsFormerNumberOnceThatIsFree) {
    addLine("8", "6602");
    storeRow("02");
    gl.SetOldVouchNoID(6);
    EXPECT_TRUE(save(nullptr, 8));
    EXPECT_EQ(company.storedRows(), Lines{storedUnder("6")});
    company.execute("delete from gl_accvouch where coutno_id=N'OUT'");
    EXPECT_TRUE(save(nullptr, 8));
    EXPECT_EQ(company.storedRows(), Lines{});
}

TEST_F(EmbeddedSave, WithoutComparingSumsStillRefusesRowsThatDoNotFit) {
    storeRow("02");
    auto rows = rowsWithFormerNumber(0);
    rows->Item(1)->SetValue("mc", 9.0);
    EXPECT_ERROR(save(rows), 10009);
    EXPECT_EQ(company.storedRows(), Lines{storedUnder("6")});
    EXPECT_TRUE(save(rows, 6, false));
    EXPECT_EQ(company.storedRows(), Lines{"2013/1/1/6 line 2 account 6001 item 01 0 9"});
    rows->Item(1)->SetValue("ccode", "6602");
    EXPECT_ERROR(save(rows, 6, false), 10008);
    EXPECT_EQ(company.storedRows(), Lines{"2013/1/1/6 line 2 account 6001 item 01 0 9"});
}

TEST_F(EmbeddedSave, OfAnotherYearsVoucherReplacesThroughTheViewWhatTheSessionsYearHolds) {
    company.execute("insert into code (iyear,ccode,ccode_name,bCashItem,bend,bclose) "
                    "select 2012,ccode,ccode_name,bCashItem,bend,bclose from code where iyear=2013");
    storeRow("02");
    auto rows = rowsWithFormerNumber(0);
    company.execute("update gl_accvouch set iyear=2012 where iperiod=1 and isignseq=1 and ino_id=6");
    modPublic::SetIYear(2012);
    rows->Item(1)->SetValue("iYear", std::int16_t{2012});
    const std::string lastYear = "2012/1/1/6 line 2 account 6001 item 01 0 250.5";
    EXPECT_TRUE(save(rows));
    EXPECT_EQ(company.storedRows(), Lines{lastYear}) << "the row of 2013 under the same key is gone";
    EXPECT_TRUE(save(rows));
    EXPECT_EQ(company.storedRows(), (Lines{lastYear, lastYear})) << "the view does not show the row of 2012";
}

} // namespace
} // namespace z7::cashflow::test
