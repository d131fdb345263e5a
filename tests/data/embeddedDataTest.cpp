// What the statements of the data access return from a real database, where joins, periods, letter case and flags
// matter.

#include "outside/CompanyTest.h"
#include "z7cashflow/data/DataProvider.h"

namespace z7::cashflow::test {
namespace {

class EmbeddedData : public CompanyTest {
protected:
    /// The values of a column, record by record; closes the record set.
    static Lines valuesOf(const std::shared_ptr<Recordset>& records, const std::string& column) {
        Lines values;
        for (; !records->atEnd(); records->MoveNext()) {
            values.push_back(toTextOrEmpty(records->Fields().Item(column)));
        }
        records->Close();
        return values;
    }
    static Lines columnsOf(const std::shared_ptr<Recordset>& records) {
        Lines names;
        for (int at = 0; at < records->Fields().Count(); ++at) {
            names.push_back(records->Fields().Name(at));
        }
        return names;
    }
    /// Adds a line to the voucher 1/1/6, which has the outside key OUT.
    void addLine(const std::string& inid, const std::string& account, const std::string& debit = "0") {
        company.execute("insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,ccode,md,mc,coutno_id) "
                        "values(2013,1,1,6," +
                        inid + ",'2013-01-05',N'" + account + "'," + debit + ",0,N'OUT')");
    }
    Lines linesOfVoucher(const std::string& table = "gl_accvouch") {
        return valuesOf(data.GetVoucherTable(connection, table, 1, 1, 6), "inid");
    }
    double cashSum(const std::string& table = "gl_accvouch") {
        return data.GetCashSumInVoucher(connection, table, 1, 1, 6);
    }
    std::string outsideKey(const std::string& coutNo_id) {
        std::uint8_t iPeriod = 9;
        std::int16_t iSignSeq = 9;
        std::int32_t iNo_id = 9;
        Date dbill_date(9.0);
        data.GetVoucherKeyFromOut_id(connection, coutNo_id, iPeriod, iSignSeq, iNo_id, dbill_date);
        return std::to_string(iPeriod) + "/" + std::to_string(iSignSeq) + "/" + std::to_string(iNo_id) + " of " +
               dateText(dbill_date);
    }
    std::string yearPeriodOf(int year, int month, int day) {
        return data.DateToYearPeriod(connection, Date::fromCivil(year, month, day));
    }

    DataProvider data;
};

TEST_F(EmbeddedData, AStoredRowWhoseItemOrAccountIsUnknownDoesNotShow) {
    storeRow("02");
    const auto shown = [&] { return valuesOf(data.GetCashTable(connection, 1, 1, 6), "cCashItem"); };
    EXPECT_EQ(shown(), Lines{"02"});
    storeRow("77");
    EXPECT_EQ(shown(), Lines{"02"});
    company.execute("update gl_cashtable set ccode=N'7777' where cCashItem=N'02'");
    EXPECT_EQ(shown(), Lines{});
    EXPECT_EQ(company.storedRows().size(), 2U);
}

TEST_F(EmbeddedData, TheStateThatWantsAnEmptySetGetsAllItsColumns) {
    storeRow("02");
    const auto full = data.GetCashTable(connection, 1, 1, 6);
    EXPECT_FALSE(full->atEnd());
    modPublic::context().VouchState = 2;
    const auto empty = data.GetCashTable(connection, 1, 1, 6);
    EXPECT_TRUE(empty->atEnd());
    EXPECT_EQ(columnsOf(empty), columnsOf(full));
    EXPECT_EQ(columnsOf(empty).back(), "citemname");
}

TEST_F(EmbeddedData, AnUnknownOutsideKeyHasNoStoredRowsAndIsNotAnError) {
    storeRow("02");
    EXPECT_EQ(valuesOf(data.GetCashTable2(connection, "OUT"), "cCashItem"), Lines{"02"});
    EXPECT_EQ(valuesOf(data.GetCashTable2(connection, "NOBODY"), "cCashItem"), Lines{});
}

TEST_F(EmbeddedData, AYearWithoutAccountsLeavesEveryVoucherWithoutCash) {
    company.execute("update gl_accvouch set iyear=2012 where coutno_id=N'OUT'");
    modPublic::SetIYear(2012);
    EXPECT_FALSE(data.HaveCashFlowCodeInVoucher(connection, "gl_accvouch", 1, 1, 6));
    EXPECT_EQ(linesOfVoucher(), Lines{});
    EXPECT_EQ(cashSum(), 0.0);
    EXPECT_TRUE(gl.SaveCashFlowCol(connection, "gl_accvouch", 1, 1, 6));
    EXPECT_EQ(company.storedRows(), Lines{});
}

TEST_F(EmbeddedData, AnAccountOfSeveralYearsMultipliesNoLine) {
    storeRow("02");
    company.execute("insert into code (iyear,ccode,ccode_name,bCashItem,bend,bclose) "
                    "values(2012,N'1001',N'cash',1,1,0)");
    company.execute("insert into code (iyear,ccode,ccode_name,bCashItem,bend,bclose) "
                    "values(2014,N'6001',N'sales',0,1,0)");
    EXPECT_EQ(linesOfVoucher(), (Lines{"1", "2"}));
    EXPECT_EQ(linesOfVoucher("sales"), (Lines{"1", "2"}));
    EXPECT_EQ(valuesOf(data.GetVoucherTable2(connection, "GL_accvouch", "OUT"), "inid"), (Lines{"1", "2"}));
    EXPECT_EQ(valuesOf(data.GetVoucherTable2(connection, "sales", "OUT"), "inid"), (Lines{"1", "2"}));
    EXPECT_EQ(valuesOf(data.GetCashTable(connection, 1, 1, 6), "ccode_name"), Lines{"主营业务收入"});
    EXPECT_EQ(cashSum(), 250.5);
    EXPECT_EQ(cashSum("sales"), 250.5);
    EXPECT_EQ(data.GetCashSumInVoucher2(connection, "sales", "OUT"), 250.5);
}

TEST_F(EmbeddedData, LinesOnClosedInnerOrMissingAccountsAreAbsent) {
    company.execute("insert into code (iyear,ccode,bCashItem,bend,bclose) values(2013,N'10',1,0,0)");
    addLine("3", "1003", "1");
    addLine("4", "10", "1");
    addLine("5", "9999", "1");
    EXPECT_EQ(linesOfVoucher(), (Lines{"1", "2"}));
    EXPECT_EQ(valuesOf(data.GetVoucherTable2(connection, "GL_accvouch", "OUT"), "inid"), (Lines{"1", "2"}));
    EXPECT_EQ(cashSum(), 250.5);
}

TEST_F(EmbeddedData, ACashLineOnlyOnAnInnerAccountIsDetectedButReturnsNoLine) {
    company.execute("update code set bend=0 where ccode=N'1001'");
    EXPECT_TRUE(data.HaveCashFlowCodeInVoucher(connection, "gl_accvouch", 1, 1, 6));
    EXPECT_EQ(linesOfVoucher(), Lines{"2"});
    EXPECT_EQ(cashSum(), 0.0);
}

TEST_F(EmbeddedData, AClosedCashAccountIsOneAndMovesNoCash) {
    EXPECT_TRUE(data.CodeIsCashFlowKm(connection, "1003"));
    EXPECT_FALSE(data.CodeIsCashFlowKm(connection, "6001"));
    EXPECT_FALSE(data.CodeIsCashFlowKm(connection, "9999"));
    company.execute("update gl_accvouch set ccode=N'1003' where coutno_id=N'OUT' and inid=1");
    EXPECT_FALSE(data.HaveCashFlowCodeInVoucher(connection, "gl_accvouch", 1, 1, 6));
}

TEST_F(EmbeddedData, AKeylessTableReturnsItsRowsForAnyKey) {
    EXPECT_EQ(linesOfVoucher("sales"), (Lines{"1", "2"}));
    EXPECT_EQ(valuesOf(data.GetVoucherTable(connection, "sales", 0, 0, 0), "inid"), (Lines{"1", "2"}));
    EXPECT_EQ(valuesOf(data.GetVoucherTable(connection, "sales", 12, 9, 99), "iYear"), (Lines{"2013", "2013"}))
        << "the year comes from the chart of accounts";
}

TEST_F(EmbeddedData, AKeyedTableIsKnownInAnyLetterCase) {
    for (const char* table : {"gl_accvouch", "GL_AccVouch", "GL_V_ACCVOUCH"}) {
        EXPECT_EQ(linesOfVoucher(table), (Lines{"1", "2"})) << table;
        EXPECT_EQ(valuesOf(data.GetVoucherTable(connection, table, 1, 1, 7), "inid"), Lines{}) << table;
    }
}

TEST_F(EmbeddedData, OnlyTheReadByKeyWorksOnATemporaryTable) {
    std::uint8_t iPeriod = 0;
    std::int16_t iSignSeq = 0;
    std::int32_t iNo_id = 0;
    Date date;
    std::string key = "OUT";
    const std::string table = data.VoucherXmlToDB(connection, "<v><e inid='4' ccode='1001' md='5'/></v>", iPeriod,
                                                  iSignSeq, iNo_id, date, key, true);
    EXPECT_EQ(valuesOf(data.GetVoucherTable(connection, table, 0, 0, 0), "inid"), Lines{"4"});
    const Error error = errorOf([&] { (void)data.GetVoucherTable2(connection, table, key); });
    EXPECT_NE(error.description().find("ccashitem_id"), std::string::npos) << error.description();
    company.execute("drop table " + table);
}

TEST_F(EmbeddedData, BudgetLinesAreAbsentUnderGovernmentAccountingAlone) {
    company.execute("update code set cUserDefineType=N'财务会计科目'");
    company.execute("update code set cUserDefineType=N'预算类会计科目' where ccode=N'6001'");
    EXPECT_EQ(linesOfVoucher(), (Lines{"1", "2"}));
    login->answers.information[117] = "新政府会计制度";
    EXPECT_EQ(linesOfVoucher(), (Lines{"1", "2"}));
    login->answers.information[117] = "政府会计制度2019";
    EXPECT_EQ(linesOfVoucher(), Lines{"1"});
    company.execute("update code set cUserDefineType=N'预算类会计科目' where ccode=N'1001'");
    EXPECT_EQ(cashSum(), 250.5) << "sums know no budget accounts";
}

TEST_F(EmbeddedData, ALineOnAnAccountOfNoKindIsAbsentUnderGovernmentAccounting) {
    company.execute("update code set cUserDefineType=N'财务会计科目'");
    company.execute("update code set cUserDefineType=null where ccode=N'6001'");
    EXPECT_EQ(linesOfVoucher(), (Lines{"1", "2"}));
    login->answers.information[117] = "政府会计制度";
    EXPECT_EQ(linesOfVoucher(), Lines{"1"}) << "nothing is unequal to null";
}

TEST_F(EmbeddedData, ACashSumOfZeroDoesNotTellWhetherThereIsACashLine) {
    EXPECT_EQ(data.GetCashSumInVoucher(connection, "costs", 0, 0, 0), 0.0) << "a null sum";
    EXPECT_EQ(data.GetCashSumInVoucher2(connection, "costs", "NOCASH"), 0.0) << "no record";
    addLine("3", "1002", "-250.5");
    EXPECT_EQ(cashSum(), 0.0);
    company.execute("delete from gl_accvouch where coutno_id=N'OUT' and ccode like N'10%'");
    EXPECT_EQ(cashSum(), 0.0);
}

TEST_F(EmbeddedData, OnlyTheCashSumByKeyIsRounded) {
    for (const auto& [amount, rounded] : {std::pair{1234.565, 1234.57}, std::pair{0.004, 0.0}}) {
        for (const char* table : {"gl_accvouch", "sales"}) {
            company.execute(std::string("update ") + table + " set md=" + numberText(amount) +
                            " where coutno_id=N'OUT' and inid=1");
            EXPECT_EQ(cashSum(table), rounded);
            EXPECT_EQ(data.GetCashSumInVoucher2(connection, table, "OUT"), amount);
        }
    }
}

TEST_F(EmbeddedData, FlaggedLinesAreNotFoundByTheOutsideKey) {
    EXPECT_EQ(outsideKey("OUT"), "1/1/6 of 2013-01-05");
    company.execute("update gl_accvouch set iflag=1 where coutno_id=N'OUT' and inid=1");
    EXPECT_EQ(outsideKey("OUT"), "1/1/6 of 2013-01-05");
    company.execute("update gl_accvouch set iflag=0 where coutno_id=N'OUT' and inid=2");
    EXPECT_EQ(outsideKey("OUT"), "0/0/0 of 1900-01-01");
}

TEST_F(EmbeddedData, ByTheOutsideKeyTheLowerCaseTableFindsLinesOfOtherYears) {
    company.execute("update gl_accvouch set iyear=2012 where coutno_id=N'OUT'");
    EXPECT_TRUE(data.HaveCashFlowCodeInVoucher2(connection, "gl_accvouch", "OUT"));
    EXPECT_FALSE(data.HaveCashFlowCodeInVoucher2(connection, "GL_accvouch", "OUT"));
    EXPECT_FALSE(data.HaveCashFlowCodeInVoucher(connection, "gl_accvouch", 1, 1, 6));
}

class EmbeddedTemplates : public EmbeddedData {
protected:
    EmbeddedTemplates() {
        data.CashFlowTemplateSave = [this](const std::string&, std::int32_t style, bool& bCancel) {
            styles.push_back(style);
            bCancel = cancel;
        };
    }
    std::string templateOf(const std::string& account, bool bDir) {
        std::string code = "before";
        const bool found = data.GetCashFlowTemplate(connection, account, bDir, Date::fromCivil(2030, 1, 1), code);
        return found ? code : "none" + code;
    }
    void save(const std::string& account, bool bDir, const std::string& item) {
        EXPECT_FALSE(data.SaveCashFlowTemplate(connection, account, bDir, item, Date::fromCivil(2013, 5, 6)));
    }
    Lines templates(const std::string& account) {
        return company.records("select iyear,bDataStyle,bdir,cItemCode,dStartDate,dEndDate from GL_CashItemDataSource "
                               "where cDataSource=N'" +
                               account + "' order by iID");
    }

    std::vector<std::int32_t> styles;
    bool cancel = false;
    const std::string first =
        "iyear=2013 bDataStyle=0 bdir=False cItemCode=01 dStartDate=2013-01-01 dEndDate=2013-12-31";
};

TEST_F(EmbeddedTemplates, AnExpiredOneStillServes) {
    EXPECT_EQ(templateOf("6001", false), "01");
    std::string code = "before";
    std::string name = "before";
    EXPECT_FALSE(data.GetCashFlowItem(connection, "6001", false, Date::fromCivil(2013, 12, 31), code, name));
    EXPECT_EQ(code + " " + name, "01 销售商品收到的现金");
    EXPECT_FALSE(data.GetCashFlowItem(connection, "6001", false, Date::fromCivil(2014, 1, 1), code, name));
    EXPECT_EQ(code, "") << "the dated look-up knows the end";
}

TEST_F(EmbeddedTemplates, BelongToYearAccountAndSide) {
    EXPECT_EQ(templateOf("6001", true), "none");
    EXPECT_EQ(templateOf("6602", false), "none");
    modPublic::SetIYear(2012);
    EXPECT_EQ(templateOf("6001", false), "none");
}

TEST_F(EmbeddedTemplates, OfAnotherStyleAreNeitherReadNorReplaced) {
    company.execute("update GL_CashItemDataSource set bDataStyle=1");
    const std::string other =
        "iyear=2013 bDataStyle=1 bdir=False cItemCode=01 dStartDate=2013-01-01 dEndDate=2013-12-31";
    EXPECT_EQ(templateOf("6001", false), "none");
    save("6001", false, "02");
    EXPECT_EQ(templates("6001"),
              (Lines{other, "iyear=2013 bDataStyle=0 bdir=False cItemCode=02 dStartDate=2013-05-06"}));
    EXPECT_EQ(styles, std::vector<std::int32_t>{64}) << "nothing is there to ask about";
}

TEST_F(EmbeddedTemplates, ANewOneGetsTheYearOfTheSessionAndTheDateOfTheVoucher) {
    modPublic::SetIYear(2011);
    save("6602", true, "02");
    EXPECT_EQ(templates("6602"), Lines{"iyear=2013 bDataStyle=0 bdir=True cItemCode=02 dStartDate=2013-05-06"});
}

TEST_F(EmbeddedTemplates, OfTwoForOneSideTheNewestIsReplacedAndKeepsItsDates) {
    company.execute(
        "insert into GL_CashItemDataSource (iyear,bDataStyle,cDataSource,bdir,cItemCode,dStartDate,dEndDate) "
        "values(2013,0,N'6001',0,N'02','2013-02-01','2013-02-28')");
    save("6001", false, "01");
    EXPECT_EQ(
        templates("6001"),
        (Lines{first, "iyear=2013 bDataStyle=0 bdir=False cItemCode=01 dStartDate=2013-02-01 dEndDate=2013-02-28"}));
    EXPECT_EQ(styles, (std::vector<std::int32_t>{32, 64}));
}

TEST_F(EmbeddedTemplates, SavingAnUnchangedOneAsksWritesAndReportsAllTheSame) {
    (void)company.takeStatements();
    save("6001", false, "01");
    EXPECT_EQ(templates("6001"), Lines{first});
    EXPECT_EQ(styles, (std::vector<std::int32_t>{32, 64}));
}

TEST_F(EmbeddedTemplates, AnAnswerNoLeavesTheRowAndShowsNoNotice) {
    cancel = true;
    save("6001", false, "02");
    EXPECT_EQ(templates("6001"), Lines{first});
    EXPECT_EQ(styles, std::vector<std::int32_t>{32});
}

TEST_F(EmbeddedData, TheFirstAndTheLastDayOfAPeriodBelongToIt) {
    company.execute("delete from zqsystem..ua_period");
    for (const char* period : {"2013,3,'2013-03-01','2013-03-31'", "2013,12,'2013-12-01','2013-12-31'"}) {
        company.execute(std::string("insert into zqsystem..ua_period (cacc_id,iyear,iid,dbegin,dend) values(N'001',") +
                        period + ")");
    }
    company.execute("insert into zqsystem..ua_period (cacc_id,iyear,iid,dbegin,dend) "
                    "values(N'002',2013,2,'2013-02-01','2013-02-28')");
    EXPECT_EQ(yearPeriodOf(2013, 3, 1), "201303");
    EXPECT_EQ(yearPeriodOf(2013, 3, 31), "201303");
    EXPECT_EQ(yearPeriodOf(2013, 12, 1), "201312");
    EXPECT_EQ(yearPeriodOf(2013, 12, 31), "201312");
    EXPECT_EQ(yearPeriodOf(2013, 2, 28), "190000") << "another account's";
    EXPECT_EQ(yearPeriodOf(2013, 4, 1), "190000");
    EXPECT_EQ(yearPeriodOf(2014, 1, 1), "190000");
}

TEST_F(EmbeddedData, AVoucherDatedOutsideAllPeriodsIsReadUnderTheYear1900) {
    storeRow("02");
    EXPECT_NE(gl.GetCashFlowColFromDB(connection, "gl_accvouch", 1, 1, 6, Date::fromCivil(2013, 1, 5)), nullptr);
    EXPECT_EQ(gl.GetCashFlowColFromDB(connection, "gl_accvouch", 1, 1, 6, Date::fromCivil(2015, 1, 5)), nullptr);
    EXPECT_EQ(modPublic::GetIYear(), 1900);
}

TEST_F(EmbeddedData, ItemsDraftsAndTemplatesAreReadAsCommittedAndOptionsAsTheyStand) {
    connection.BeginTrans();
    company.execute("update fitemss98 set citemname=N'renamed' where citemcode=N'02'");
    company.execute("update GL_CashItemDataSource set cItemCode=N'02'");
    company.execute("insert into GL_VouchDraft (cUserId,inid,cCashItem) values(N'u1',2,N'02')");
    company.execute("update accinformation set cvalue=N'new' where cname=N'bCashCode'");
    company.execute("insert into GL_VoucherOption (operator,iUpdateCashFlow) values(N'demo',1)");
    company.execute("update zqsystem..ua_period set iid=7");
    std::string item = "before";
    EXPECT_EQ(data.GetCFItemName(connection, "02"), "other receipts");
    EXPECT_TRUE(data.GetCashFlowTemplate(connection, "6001", false, Date::none(), item));
    EXPECT_EQ(item, "01");
    EXPECT_FALSE(data.GetCashFlowFromDraft(connection, 2, item));
    EXPECT_EQ(data.GetAccInfo(connection, "GL", "bCashCode"), "new");
    EXPECT_EQ(data.GetVoucherOption(connection, "demo", "iUpdateCashFlow"), "1");
    EXPECT_EQ(yearPeriodOf(2013, 1, 5), "201307");
    connection.CommitTrans();
    EXPECT_EQ(data.GetCFItemName(connection, "02"), "renamed");
    EXPECT_TRUE(data.GetCashFlowFromDraft(connection, 2, item));
    EXPECT_EQ(item, "02");
}

} // namespace
} // namespace z7::cashflow::test
