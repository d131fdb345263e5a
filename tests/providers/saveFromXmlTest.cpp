#include "providers/ProviderTest.h"

namespace z7::cashflow::test {
namespace {

using namespace ledger;

class SaveFromXml : public ProviderTest {
protected:
    SaveFromXml() {
        world.database.answer(compareOption, {{"cvalue"}, {}, {}});
        world.database.answerPrefix("select dbill_date from ", {{"dbill_date"}, {{Date(41279.0)}}, {}});
        world.database.answer(line("2"),
                              {{"RowGuid", "ccode", "md", "mc", "md_f", "nd_s", "cDefine1", "cDefine2", "iperiod"},
                               {{"of the line", "other", 1.0, 2.0, 3.0, 4.0, "voucher", Null{}, std::uint8_t{1}}},
                               {}});
    }
    static std::string line(const std::string& inid) {
        return "select * from gl_accvouch where iyear=2013 and iPeriod=1 and iSignSeq=2 and iNo_id=5 and inid=" + inid;
    }
    bool save(std::string* xml, bool* blnCheckCF = nullptr, const std::string& table = "gl_accvouch") {
        return world.gl.SaveCashFlowColFromXml(world.connection, table, 1, 2, 5, xml, blnCheckCF);
    }
    /// Collection XML with one row of 100 on line 2.
    static std::string xmlOf(const std::string& inid, const std::string& amount = "100") {
        std::string row = "RowGuid='of the XML' iYear='' iPeriod='9' iSignSeq='9' iNo_id='9' inid='" + inid +
                          "' cCashItem='01' md='0' mc='" + amount +
                          "' ccode='6001' md_f='30' mc_f='31' nd_s='40' nc_s='41' csign='x' cDefine1='xml' "
                          "cDefine2='xml' cDefine3='xml' ";
        for (const char* name :
             {"cdept_id",  "cperson_id", "ccus_id",   "csup_id",   "citem_class", "citem_id",  "cDefine4",
              "cDefine5",  "cDefine6",   "cDefine7",  "cDefine8",  "cDefine9",    "cDefine10", "cDefine11",
              "cDefine12", "cDefine13",  "cDefine14", "cDefine15", "cDefine16",   "dbill_date"}) {
            row += std::string(name) + "='' ";
        }
        return "<root><rows><row " + row + "/></rows></root>";
    }
    std::string stored() const {
        for (const std::string& text : world.database.texts()) {
            if (text.starts_with("insert")) {
                return text;
            }
        }
        return {};
    }

    const std::string compareOption =
        "select * from accinformation where csysid=N'gl' and cname=N'bXJLL' and cvalue='true'";
    const std::string date =
        "select dbill_date from gl_accvouch where iyear=2013 and iPeriod=1 and iSignSeq=2 and iNo_id=5";
};

TEST_F(SaveFromXml, TakesTheAllotmentFromTheXmlAndTheRestFromTheVoucher) {
    std::string xml = xmlOf("2");
    const std::string before = xml;
    bool check = true;
    EXPECT_TRUE(save(&xml, &check));
    EXPECT_FALSE(check) << "the account option decides";
    EXPECT_EQ(xml, before);
    EXPECT_EQ(world.statements(), (Lines{run(date), run(line("2")), own(kind()), run(lines()), run(compareOption),
                                         open(option("bCashCode")), run(haveCash()), own(kind()), run(lines()),
                                         run(lines()), run(deleteRows()), run(stored()), run(currencyNames())}));
    // The line's RowGuid and cDefine1, the null of cDefine2; account and amounts of the XML, but the present md_f.
    EXPECT_TRUE(stored().find(" values(N'of the line',2013,1,2,N'V',5,2,N'01',0,100,N'6001',7.5,31,40,41,") !=
                std::string::npos)
        << stored();
    EXPECT_NE(stored().find(",N'voucher',Null,N'xml',"), std::string::npos) << stored();
}

TEST_F(SaveFromXml, ComparesTheSumWhereTheAccountOptionSaysSo) {
    world.database.answer(compareOption, {{"cvalue"}, {{"true"}}, {}});
    std::string xml = xmlOf("2", "99");
    bool check = false;
    EXPECT_ERROR(save(&xml, &check), 10009);
    EXPECT_TRUE(check);
    xml = xmlOf("2");
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(world.database.countOf(cashSum()), 2U);
}

TEST_F(SaveFromXml, WithoutXmlSavesWhatTheDatabaseHas) {
    std::string xml;
    bool check = true;
    EXPECT_TRUE(save(&xml, &check));
    EXPECT_FALSE(check);
    EXPECT_EQ(xml, "");
    EXPECT_EQ(world.statements().front(), run(compareOption));
    EXPECT_EQ(world.statements()[3], run(voucherDate()));
    EXPECT_EQ(world.database.countOf("insert"), 1U);
    EXPECT_TRUE(save(nullptr, nullptr));
    EXPECT_EQ(world.database.countOf("insert"), 2U);
}

TEST_F(SaveFromXml, OfAVoucherWithoutADateIsRefused) {
    world.database.answerPrefix("select dbill_date from ", {{"dbill_date"}, {}, {}});
    std::string xml = xmlOf("2");
    const Error error = errorOf([&] { (void)save(&xml); });
    EXPECT_EQ(error.number(), 10011);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(error.description(), "<Z7.CW.GL.CashFlow.00010>");
    EXPECT_EQ(world.statements(), Lines{run(date)});
    EXPECT_EQ(world.database.openRecordsets(), Lines{});
    errorCameOut();
}

TEST_F(SaveFromXml, OfTextThatIsNotXmlIsRefused) {
    std::string xml = "no xml";
    const Error error = errorOf([&] { (void)save(&xml); });
    EXPECT_EQ(error.number(), 1002);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(error.description(), "<Z7.CW.GL.CashFlow.00017>");
    EXPECT_EQ(world.database.countOf("delete"), 0U);
}

TEST_F(SaveFromXml, OfALineThatIsGoneIsRefused) {
    world.database.answer(line("9"), {{"inid"}, {}, {}});
    std::string xml = xmlOf("9");
    EXPECT_ERROR(save(&xml), 10008);
    EXPECT_EQ(world.database.countOf("delete"), 0U);
}

TEST_F(SaveFromXml, NamesTheYearOnTheLedgersTableAlone) {
    const std::string view = "gl_v_accvouch";
    world.database.answer("select dbill_date from gl_v_accvouch where iPeriod=1 and iSignSeq=2 and iNo_id=5",
                          {{"dbill_date"}, {{Date(41279.0)}}, {}});
    const std::string viewLine = "select * from gl_v_accvouch where  iPeriod=1 and iSignSeq=2 and iNo_id=5 and inid=2";
    world.database.answer(viewLine, {{"inid"}, {}, {}});
    std::string xml = xmlOf("2");
    EXPECT_TRUE(save(&xml, nullptr, view));
    EXPECT_EQ(world.statements()[0],
              run("select dbill_date from gl_v_accvouch where iPeriod=1 and iSignSeq=2 and iNo_id=5"));
    EXPECT_EQ(world.statements()[1], run(viewLine));
}

TEST_F(SaveFromXml, LooksIntoTheLedgersTableInTheContextsYear) {
    modPublic::SetIYear(2012);
    const std::string voucher = " from gl_accvouch where iyear=2012 and iPeriod=1 and iSignSeq=2 and iNo_id=5";
    world.database.answer("select *" + voucher + " and inid=2", {{"inid"}, {}, {}});
    std::string xml = xmlOf("2");
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(world.statements()[0], run("select dbill_date" + voucher));
    EXPECT_EQ(world.statements()[1], run("select *" + voucher + " and inid=2"));
}

TEST_F(SaveFromXml, RecognizesTheLedgersTableInAnyLetterCase) {
    world.database.answer(
        "select * from GL_AccVouch where iyear=2013 and iPeriod=1 and iSignSeq=2 and iNo_id=5 and inid=2",
        {{"inid"}, {}, {}});
    std::string xml = xmlOf("2");
    EXPECT_TRUE(save(&xml, nullptr, "GL_AccVouch"));
    EXPECT_EQ(world.statements()[0],
              run("select dbill_date from GL_AccVouch where iyear=2013 and iPeriod=1 and iSignSeq=2 and iNo_id=5"));
}

TEST_F(SaveFromXml, RowsThatLackFieldsAreRefused) {
    std::string xml = "<root><rows><row md='1'/></rows></root>";
    EXPECT_ERROR(save(&xml), 1000);
    EXPECT_EQ(world.database.countOf("delete"), 0U);
}

TEST_F(SaveFromXml, OfNoRowsDeletesWhatIsStored) {
    std::string xml = world.provider.CreateCashFlowCollection()->Save();
    EXPECT_TRUE(save(&xml));
    EXPECT_EQ(world.database.countOf(deleteRows()), 1U);
    EXPECT_EQ(world.database.countOf("insert"), 0U);
}

TEST_F(SaveFromXml, PassesErrorsThroughAsTheyWere) {
    std::string xml = xmlOf("2");
    Lines whole;
    {
        EXPECT_TRUE(save(&xml));
        whole = world.statements();
    }
    for (std::size_t n = 1; n <= whole.size(); ++n) {
        Ledger fresh;
        fresh.database.answer(compareOption, {{"cvalue"}, {}, {}});
        fresh.database.answerPrefix("select dbill_date from ", {{"dbill_date"}, {{Date(41279.0)}}, {}});
        fresh.database.answerPrefix("select * from gl_accvouch", {{"inid"}, {}, {}});
        fresh.database.failStatement(n, Error(547, "server", "constraint"));
        const Error error =
            errorOf([&] { (void)fresh.gl.SaveCashFlowColFromXml(fresh.connection, "gl_accvouch", 1, 2, 5, &xml); });
        EXPECT_EQ(error.number(), 547) << n;
        EXPECT_EQ(error.source(), n <= 5 ? "server" : "CashFlow") << n;
        EXPECT_EQ(fresh.statements().size(), n);
        EXPECT_EQ(fresh.database.openRecordsets(), Lines{});
    }
}

TEST_F(SaveFromXml, WithoutXmlComparesTheSumWhereTheAccountOptionSaysSo) {
    world.database.answer(compareOption, {{"cvalue"}, {{"true"}}, {}});
    world.setSum(50.0);
    bool check = false;
    EXPECT_ERROR(save(nullptr, &check), 10009);
    EXPECT_TRUE(check);
    EXPECT_EQ(world.database.countOf("delete"), 0U);
}

TEST_F(SaveFromXml, ReadsTheXmlsLinesFromThePassedTableAndTheVoucherFromTheTemporaryOne) {
    world.gl.VoucherTempTable("gl_v_accvouch");
    std::string xml = xmlOf("2");
    EXPECT_TRUE(save(&xml));
    const std::string temp = "gl_v_accvouch";
    EXPECT_EQ(world.statements(), (Lines{run(date), run(line("2")), own(kind()), run(lines()), run(compareOption),
                                         open(option("bCashCode")), run(haveCash(temp)), own(kind()), run(lines(temp)),
                                         run(lines(temp)), run(deleteRows()), run(stored()), run(currencyNames())}));
}

} // namespace
} // namespace z7::cashflow::test
