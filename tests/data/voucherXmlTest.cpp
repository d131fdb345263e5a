#include "data/DataTest.h"

#include "z7cashflow/statements/temporaryTableStatements.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::test {
namespace {

class VoucherXml : public DataTest {
protected:
    VoucherXml() {
        const std::string creation = sent(statements::createVoucherTable, "", 2013);
        const std::size_t begin = std::string("select ").size();
        const std::string columnList = creation.substr(begin, creation.find(" into ") - begin);
        std::string name;
        for (const char c : columnList + ",") {
            if (c == ',') {
                lines.columns.push_back(name);
                name.clear();
            } else if (c != ' ') {
                name += c;
            }
        }
        lines.types["md"] = shared::ColumnType::real;
        database.failPrefix("drop table", Error(3701, "server", "no such table"));
        database.acceptPrefix("select inid,idoc");
        database.answerPrefix("select * from tempdb..TempVoucher", lines);
    }

    std::string convert(const std::string& xml, bool blnReCreate = false) {
        return data.VoucherXmlToDB(connection, xml, iPeriod, iSignSeq, iNo_id, dbill_date, coutNo_id, blnReCreate);
    }
    /// What is written for the child elements of a root without a key.
    Lines writesOf(const std::string& children) {
        database.clearJournal();
        (void)convert("<v>" + children + "</v>");
        return {database.trace().begin() + 3, database.trace().end()};
    }

    Table lines;
    std::uint8_t iPeriod = 0;
    std::int16_t iSignSeq = 0;
    std::int32_t iNo_id = 0;
    Date dbill_date{7.0};
    std::string coutNo_id;
    const std::string table = "tempdb..TempVoucher" + GuidSequence::text(1);
    const Lines opening{"main: " + sent(statements::dropFormerTable, table),
                        "main: " + sent(statements::createVoucherTable, table, 2013),
                        "own(1,3,3): " + sent(statements::voucherTableLines, table)};
};

TEST_F(VoucherXml, HasFiftyColumns) { EXPECT_EQ(lines.columns.size(), 50U); }

TEST_F(VoucherXml, AWholeKeyNeedsNoTable) {
    coutNo_id = "before";
    EXPECT_EQ(convert("<any iperiod='3' isignseq='2' ino_id='70000' dbill_date='2013-1-5'><e ccode='1'/></any>"),
              "gl_v_accvouch");
    EXPECT_EQ(iPeriod, 3);
    EXPECT_EQ(iSignSeq, 2);
    EXPECT_EQ(iNo_id, 70000);
    EXPECT_EQ(dbill_date, Date(41279.0));
    EXPECT_EQ(coutNo_id, "before");
    EXPECT_EQ(guids.count(), 0U);
    expectStatements({});
}

TEST_F(VoucherXml, ATableIsMadeOnRequestOrWithoutAWholeKey) {
    for (const char* root : {"<v iperiod='0' isignseq='2' ino_id='5'/>", "<v isignseq='2' ino_id='5'/>",
                             "<v iperiod='1' isignseq='0' ino_id='5'/>", "<v iperiod='1' isignseq='-1' ino_id='5'/>",
                             "<v iperiod='1' isignseq='2' ino_id='0'/>", "<v iperiod='1' isignseq='2' ino_id='-5'/>",
                             "<v/>", "<v IPERIOD='1' isignseq='2' ino_id='5'/>"}) {
        iPeriod = 0;
        iSignSeq = 0;
        iNo_id = 0;
        EXPECT_TRUE(convert(root).starts_with("tempdb..TempVoucher")) << root;
    }
    EXPECT_TRUE(convert("<v iperiod='1' isignseq='2' ino_id='5'/>", true).starts_with("tempdb..TempVoucher"));
    EXPECT_EQ(iPeriod, 1);
    EXPECT_EQ(database.countOf("drop table tempdb..TempVoucher"), 9U);
}

TEST_F(VoucherXml, TheTableIsMadeHereAndFilledOnAnOwnSession) {
    EXPECT_EQ(convert("<v/>"), table);
    expectStatements(opening);
    EXPECT_EQ(database.trace().back(), "Close");
}

TEST_F(VoucherXml, RootAttributesThatCannotBeReadLeaveTheArguments) {
    iPeriod = 9;
    iSignSeq = 8;
    iNo_id = 7;
    EXPECT_EQ(convert("<v iperiod='300' isignseq='x' ino_id='' dbill_date='soon'/>"), "gl_v_accvouch");
    EXPECT_EQ(iPeriod, 9);
    EXPECT_EQ(iSignSeq, 8);
    EXPECT_EQ(iNo_id, 7);
    EXPECT_EQ(dbill_date, Date(7.0));
    EXPECT_EQ(convert("<v iperiod='2' isignseq='x'/>"), "gl_v_accvouch");
    EXPECT_EQ(iPeriod, 2);
    EXPECT_EQ(iSignSeq, 8);
}

TEST_F(VoucherXml, ALineIsWrittenAttributeByAttributeAndItsAmountsFilledUp) {
    EXPECT_EQ(writesOf("<line inid='1' ccode='1001' md='5.50' cdept_id='' cdigest='借'/>"),
              (Lines{"AddNew", "inid = 1", "ccode = 1001", "md = 5.5", "cdept_id = null", "cdigest = 借", "nc_s = 0",
                     "nd_s = 0", "mc = 0", "md_f = 0", "mc_f = 0", "idoc = 0", "Update", "Close"}));
}

TEST_F(VoucherXml, AnEmptyAmountBecomesZero) {
    EXPECT_EQ(writesOf("<e ccode='1' md='' nc_s='1' nd_s='2' mc='3' md_f='4' mc_f='' idoc='6'/>"),
              (Lines{"AddNew", "ccode = 1", "md = null", "nc_s = 1", "nd_s = 2", "mc = 3", "md_f = 4", "mc_f = null",
                     "idoc = 6", "md = 0", "mc_f = 0", "Update", "Close"}));
}

TEST_F(VoucherXml, UnknownColumnsAndBadValuesLeaveTheFieldAsItWas) {
    EXPECT_EQ(writesOf("<e ccode='1' unknown='x' md='no number' mc='1' md_f='1' mc_f='1' nd_s='1' nc_s='1' idoc='1'/>"),
              (Lines{"AddNew", "ccode = 1", "mc = 1", "md_f = 1", "mc_f = 1", "nd_s = 1", "nc_s = 1", "idoc = 1",
                     "md = 0", "Update", "Close"}));
}

TEST_F(VoucherXml, LocalNamesAreTheColumns) {
    const Lines writes = writesOf("<e xmlns:p='urn:p' ccode='1' p:cname='x'/>");
    EXPECT_EQ(std::count(writes.begin(), writes.end(), "cname = x"), 1);
}

TEST_F(VoucherXml, LinesWithoutAnAccountAreSkipped) {
    const Lines writes = writesOf("<e ccode='' inid='1'/><other ccode='2' inid='2'/>");
    EXPECT_EQ(std::count(writes.begin(), writes.end(), "AddNew"), 1);
    EXPECT_EQ(std::count(writes.begin(), writes.end(), "inid = 2"), 1);
    EXPECT_EQ(std::count(writes.begin(), writes.end(), "inid = 1"), 0);
}

TEST_F(VoucherXml, ALineThatLacksTheAttributeIsTheCallersError) {
    EXPECT_NE(test::errorNumberOf([&] { (void)convert("<v><e ccode='1'/><e md='1'/></v>"); }), 0);
    EXPECT_EQ(std::count(database.trace().begin(), database.trace().end(), "Update"), 1);
    EXPECT_EQ(database.openRecordsets(), Lines{});
}

TEST_F(VoucherXml, TheOutsideKeyIsTheCallersUnlessALineHasOne) {
    coutNo_id = "CALLER";
    const Lines writes = writesOf("<e ccode='1' coutno_id=''/><e ccode='2' COUTNO_ID='OUT'/><e ccode='3' coutno_id=''/>"
                                  "<e ccode='4'/>");
    EXPECT_EQ(coutNo_id, "OUT");
    EXPECT_EQ(std::count(writes.begin(), writes.end(), "coutno_id = CALLER"), 1);
    EXPECT_EQ(std::count(writes.begin(), writes.end(), "coutno_id = OUT"), 2);
    EXPECT_EQ(guids.count(), 1U);
}

TEST_F(VoucherXml, AMissingOutsideKeyIsMadeUp) {
    const Lines writes = writesOf("<e ccode='1' coutno_id=''/>");
    EXPECT_EQ(coutNo_id, GuidSequence::text(2));
    EXPECT_EQ(std::count(writes.begin(), writes.end(), "coutno_id = " + GuidSequence::text(2)), 1);
}

TEST_F(VoucherXml, ALineWithoutTheAttributeGetsNoOutsideKey) {
    for (const std::string& write : writesOf("<e ccode='1'/>")) {
        EXPECT_FALSE(write.starts_with("coutno_id")) << write;
    }
}

TEST_F(VoucherXml, TextThatIsNotXmlIsRefusedBeforeAnythingHappens) {
    for (const char* text : {"", "no xml", "<v>", "<v a='1' a='2'/>"}) {
        const Error error = errorOf([&] { (void)convert(text, true); });
        EXPECT_EQ(error.number(), 1005);
        EXPECT_EQ(error.source(), "CashFlow");
        EXPECT_EQ(error.description(), "<Z7.CW.GL.CashFlow.00063>");
    }
    EXPECT_EQ(iPeriod, 0);
    EXPECT_EQ(dbill_date, Date(7.0));
    EXPECT_EQ(coutNo_id, "");
    expectStatements({});
}

TEST_F(VoucherXml, AFailureToMakeOrToFillTheTableIsTheCallersError) {
    database.failPrefix("select inid,idoc", Error(262, "server", "permission denied"));
    EXPECT_ERROR(convert("<v><e ccode='1'/></v>"), 262);
    EXPECT_EQ(coutNo_id, "");
    database.acceptPrefix("select inid,idoc");
    database.failPrefix("select * from tempdb", Error(18456, "server", "login failed"));
    EXPECT_ERROR(convert("<v><e ccode='1'/></v>"), 18456);
    database.answerPrefix("select * from tempdb", lines);
    database.failUpdate(Error(1105, "server", "disk full"));
    EXPECT_ERROR(convert("<v><e ccode='1'/></v>"), 1105);
    EXPECT_EQ(database.openRecordsets(), Lines{});
    EXPECT_EQ(database.countOf("drop table"), 3U) << "nobody can drop what the caller has no name for";
}

TEST_F(VoucherXml, ARefusedTableLeavesTheOutsideKeyUnmade) {
    database.failPrefix("select * from tempdb", Error(18456, "server", "login failed"));
    EXPECT_ERROR(convert("<v iperiod='3'><e ccode='1' coutno_id='OUT'/></v>"), 18456);
    EXPECT_EQ(coutNo_id, "");
    EXPECT_EQ(iPeriod, 3) << "the key had been read";
}

TEST_F(VoucherXml, AnAmountThatCannotBeFilledUpIsTheCallersError) {
    Table narrow{{"ccode", "nc_s", "nd_s", "md", "mc", "md_f", "mc_f"}, {}, {}};
    database.answerPrefix("select * from tempdb..TempVoucher", narrow);
    EXPECT_ERROR(convert("<v><e ccode='1'/></v>"), errors::unknownField);
    EXPECT_EQ(std::count(database.trace().begin(), database.trace().end(), "Update"), 0);
}

TEST_F(VoucherXml, TheYearOfTheTableIsTheLoginsTextAndNotTheContexts) {
    login->answers.accountingYear = "02014";
    (void)convert("<v/>");
    EXPECT_TRUE(database.texts()[1].ends_with("  from gl_accvouch where 1=0 and iyear=02014")) << database.texts()[1];
}

TEST_F(VoucherXml, AFieldTakesTheTextAsItStands) {
    EXPECT_EQ(writesOf("<e ccode=' 10 ' mc=' 1,5 ' nd_s='-3' cname=' '/>"),
              (Lines{"AddNew", "ccode =  10 ", "mc =  1,5 ", "nd_s = -3", "cname =  ", "nc_s = 0", "md = 0", "md_f = 0",
                     "mc_f = 0", "idoc = 0", "Update", "Close"}));
}

TEST_F(VoucherXml, AnOutsideKeyThatHasNoColumnStillReachesTheCaller) {
    Table narrow{{"ccode", "nc_s", "nd_s", "md", "mc", "md_f", "mc_f", "idoc"}, {}, {}};
    database.answerPrefix("select * from tempdb..TempVoucher", narrow);
    (void)convert("<v><e ccode='1' coutno_id='OUT'/></v>");
    EXPECT_EQ(coutNo_id, "OUT");
}

} // namespace
} // namespace z7::cashflow::test
