#include "data/DataTest.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/statements/voucherStatements.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::test {
namespace {

class VoucherReaders : public DataTest {
protected:
    /// Reads the single result of the statement and returns the statement.
    template <class Read> std::string statementOf(Read&& read) {
        database.clearJournal();
        const auto records = read();
        EXPECT_NE(records, nullptr);
        EXPECT_EQ(database.statements().size(), 1U);
        EXPECT_EQ(database.statements().front(), "main: " + records->Source());
        EXPECT_EQ(database.openRecordsets(), Lines{records->Source()}) << "the caller closes it";
        return records->Source();
    }
};

const std::string cashTable = sent(statements::storedRows, 2011, {1, 2, 40000});

TEST_F(VoucherReaders, StoredRowsOfAVoucher) {
    database.answerPrefix("select", one("RowGuid", "G"));
    EXPECT_EQ(statementOf([&] { return data.GetCashTable(connection, 1, 2, 40000); }), cashTable);
    modPublic::context().VouchState = 1;
    EXPECT_EQ(statementOf([&] { return data.GetCashTable(connection, 1, 2, 40000); }), cashTable);
}

TEST_F(VoucherReaders, StoredRowsAreReadInTheYearThatIsSet) {
    database.answerPrefix("select", none("RowGuid"));
    modPublic::SetIYear(0);
    EXPECT_NE(statementOf([&] { return data.GetCashTable(connection, 1, 2, 5); }).find("where  code.iyear=2013 and"),
              std::string::npos);
}

TEST_F(VoucherReaders, StoredRowsInStateTwoAreAskedForAndNotGiven) {
    database.answerPrefix("select", none("RowGuid"));
    modPublic::context().VouchState = 2;
    EXPECT_EQ(statementOf([&] { return data.GetCashTable(connection, 1, 2, 40000); }),
              sent(statements::noStoredRows, 2011, {1, 2, 40000}));
}

TEST_F(VoucherReaders, StoredRowsOfAnOutsideVoucherAreThoseOfItsLedgerVoucher) {
    database.answerPrefix("select iperiod,", {{"iperiod", "isignseq", "ino_id", "dbill_date"},
                                              {{std::uint8_t{1}, i16(2), std::int32_t{40000}, Date(41279.0)}},
                                              {}});
    database.answer(cashTable, none("RowGuid"));
    const auto records = data.GetCashTable2(connection, "OUT");
    EXPECT_EQ(database.statements(),
              (Lines{"main: " + sent(statements::ledgerVoucherOf, 2011, "OUT"), "main: " + cashTable}));
    EXPECT_EQ(database.openRecordsets(), Lines{cashTable});
}

TEST_F(VoucherReaders, StoredRowsOfAnUnknownOutsideVoucherAreNoneAndNoError) {
    database.answerPrefix("select iperiod,", none("iperiod"));
    database.answerPrefix("select table1", none("RowGuid"));
    const auto records = data.GetCashTable2(connection, "OUT");
    EXPECT_TRUE(records->atEnd());
    EXPECT_NE(records->Source().find("and iperiod=0 and isignseq=0 and ino_id=0)"), std::string::npos);
}

const std::string freeFields = "cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,"
                               "cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,";

TEST_F(VoucherReaders, LinesOfAVoucherInAKeyedTable) {
    database.answerPrefix("select", none("inid"));
    for (const std::string table : {"gl_accvouch", "GL_AccVouch", "gl_v_accvouch", "GL_V_ACCVOUCH"}) {
        EXPECT_EQ(
            statementOf([&] { return data.GetVoucherTable(connection, table, 1, 2, 40000); }),
            "select  code.iYear,iPeriod,iSignSeq,csign,iNo_id,inid,md,mc, code.ccode,md_f,mc_f,nd_s,nc_s,cdept_id,"
            "cperson_id,ccus_id,csup_id,citem_class,citem_id," +
                freeFields + "cDefine16,bCashItem from " + table +
                " as TempVoucher  inner join code on  TempVoucher.iyear=code.iyear and  code.iyear=2011 and  "
                "TempVoucher.ccode=code.ccode where TempVoucher.iperiod=1 and TempVoucher.isignseq=2 and "
                "TempVoucher.ino_id=40000 and  code.bend=1 and code.bclose=0");
    }
}

TEST_F(VoucherReaders, LinesOfAVoucherInAKeylessTableWhateverTheKey) {
    database.answerPrefix("select", none("inid"));
    const std::string expected =
        "select  code.iYear,inid,md,mc, code.ccode,md_f,mc_f,nd_s,nc_s,cdept_id,cperson_id,"
        "ccus_id,csup_id,citem_class,citem_id," +
        freeFields +
        "cDefine16,bCashItem from mine as TempVoucher  inner join code on  code.iyear=2011 and  "
        "TempVoucher.ccode=code.ccode where  code.bend=1 and code.bclose=0";
    EXPECT_EQ(statementOf([&] { return data.GetVoucherTable(connection, "mine", 1, 2, 5); }), expected);
    EXPECT_EQ(statementOf([&] { return data.GetVoucherTable(connection, "mine", 0, 0, 0); }), expected);
}

TEST_F(VoucherReaders, LinesOfAnOutsideVoucherInAKeyedTable) {
    database.answerPrefix("select", none("inid"));
    EXPECT_EQ(statementOf([&] { return data.GetVoucherTable2(connection, "GL_accvouch", "OUT"); }),
              "select  code.iYear,iPeriod,iSignSeq,csign,iNo_id,inid,md,mc, code.ccode,md_f,mc_f,nd_s,nc_s,cdept_id,"
              "cperson_id,ccus_id,csup_id,citem_class,citem_id,ccashitem_id," +
                  freeFields +
                  "dbill_date,cDefine16,bCashItem from GL_accvouch as TempVoucher  inner join code on   "
                  "TempVoucher.iyear=code.iyear and   code.iyear=2011 and   TempVoucher.ccode=code.ccode where "
                  "TempVoucher.coutno_id=N'OUT' and code.bend=1 and code.bclose=0   ");
}

TEST_F(VoucherReaders, LinesOfAnOutsideVoucherInAKeylessTable) {
    database.answerPrefix("select", none("inid"));
    EXPECT_EQ(
        statementOf([&] { return data.GetVoucherTable2(connection, "mine", "OUT"); }),
        "select  code.iYear,inid,md,mc, code.ccode,md_f,mc_f,nd_s,nc_s,cdept_id,cperson_id,ccus_id,csup_id,"
        "citem_class,citem_id,ccashitem_id," +
            freeFields +
            "cDefine16,bCashItem from mine as TempVoucher  inner join code on    code.iyear=2011 and   "
            "TempVoucher.ccode=code.ccode where TempVoucher.coutno_id=N'OUT' and code.bend=1 and code.bclose=0   ");
}

TEST_F(VoucherReaders, BudgetAccountsDoNotCountUnderGovernmentAccounting) {
    database.answerPrefix("select", none("inid"));
    const std::string filter = sent(statements::exceptBudgetAccounts);
    for (const char* system : {"政府会计制度", "政府会计制度（事业单位）"}) {
        login->answers.information[117] = system;
        EXPECT_TRUE(statementOf([&] {
                        return data.GetVoucherTable(connection, "gl_accvouch", 1, 2, 5);
                    }).ends_with(" and  code.bend=1 and code.bclose=0" + filter));
        EXPECT_TRUE(statementOf([&] {
                        return data.GetVoucherTable(connection, "mine", 1, 2, 5);
                    }).ends_with("where  code.bend=1 and code.bclose=0" + filter));
        EXPECT_TRUE(statementOf([&] {
                        return data.GetVoucherTable2(connection, "mine", "OUT");
                    }).ends_with(" and code.bend=1 and code.bclose=0   " + filter));
    }
    for (const Variant& system :
         {Variant("新政府会计制度"), Variant("政府会计"), Variant("企业会计制度"), Variant(""), Variant()}) {
        login->answers.information[117] = system;
        EXPECT_TRUE(statementOf([&] {
                        return data.GetVoucherTable(connection, "mine", 1, 2, 5);
                    }).ends_with("where  code.bend=1 and code.bclose=0"))
            << toTextOrEmpty(system);
        EXPECT_TRUE(statementOf([&] {
                        return data.GetVoucherTable2(connection, "mine", "OUT");
                    }).ends_with("and code.bclose=0   "))
            << toTextOrEmpty(system);
    }
}

TEST_F(VoucherReaders, NoOtherAccountInformationIsAskedFor) {
    database.answerPrefix("select", none("inid"));
    (void)data.GetVoucherTable(connection, "mine", 1, 2, 5);
    (void)data.GetVoucherTable2(connection, "mine", "OUT");
    EXPECT_EQ(std::count(login->calls.begin(), login->calls.end(), "information 117"), 2);
}

TEST_F(VoucherReaders, NamesAndKeysGoDownAsTheyCome) {
    database.answerPrefix("select", none("inid"));
    EXPECT_NE(statementOf([&] { return data.GetVoucherTable2(connection, "my table; --", "O'UT"); })
                  .find("bCashItem from my table; -- as TempVoucher  inner join code on    code.iyear=2011 and   "
                        "TempVoucher.ccode=code.ccode where TempVoucher.coutno_id=N'O'UT' and"),
              std::string::npos);
}

TEST_F(VoucherReaders, AFailingStatementIsTheCallersError) {
    database.failPrefix("select", Error(208, "server", "Invalid object name", "42S02"));
    const auto expectPassed = [](const Error& error) {
        EXPECT_EQ(error.number(), 208);
        EXPECT_EQ(error.source(), "server");
        EXPECT_EQ(error.description(), "Invalid object name");
        EXPECT_EQ(error.sqlState(), "42S02");
    };
    expectPassed(errorOf([&] { (void)data.GetCashTable(connection, 1, 2, 5); }));
    expectPassed(errorOf([&] { (void)data.GetCashTable2(connection, "OUT"); }));
    expectPassed(errorOf([&] { (void)data.GetVoucherTable(connection, "mine", 1, 2, 5); }));
    expectPassed(errorOf([&] { (void)data.GetVoucherTable2(connection, "mine", "OUT"); }));
    EXPECT_EQ(database.openRecordsets(), Lines{});
}

TEST_F(VoucherReaders, NeedALogin) {
    modPublic::SetLogin(nullptr);
    EXPECT_ERROR(data.GetCashTable(connection, 1, 2, 5), errors::objectNotSet);
    EXPECT_ERROR(data.GetVoucherTable(connection, "mine", 1, 2, 5), errors::objectNotSet);
    EXPECT_EQ(database.statements(), Lines{});
}

} // namespace
} // namespace z7::cashflow::test
