// The provider of the entry lines to choose from.

#include "z7cashflow/dialog/DefineRef.h"
#include "dialog/DialogTest.h"

namespace z7::cashflow::test {
namespace {

class DefineRefTest : public DialogTest {
protected:
    DefineRefTest() {
        con->Open(ScriptedDatabase::connectionString());
        database.clearJournal();
        ref.objCon(con);
        ref.VoucherTable("gl_accvouch");
        ref.iPeriod(1);
        ref.isignseq(2);
        ref.iNo_id(40000);
        database.answerPrefix(
            "select  cast(0 as bit)",
            {{"bRefSelectColumn", "inid", "ccode", "md", "mc"}, {{false, i16(2), "6001", 0.0, 60.0}}, {}});
    }
    ~DefineRefTest() override { grid.reset(); }

    std::string metaOf(const std::string& id) {
        std::string meta = "before";
        std::string message;
        bool flag = false;
        ref.GetSrvRefMeta(id, "", meta, message, flag);
        return meta;
    }
    bool ask(const std::string& id, const std::string& xml) {
        std::shared_ptr<Recordset> rstClass;
        std::shared_ptr<Recordset> rstColSet;
        bool flag = false;
        grid.reset();
        ref.GetSrvData(id, xml, "", rstClass, grid, rstColSet, message, flag);
        return flag;
    }
    std::string lastStatement() const { return database.statements().back(); }

    const std::string option = "con: select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ";
    const std::string begin = "con(3,3): select  cast(0 as bit) as bRefSelectColumn,inid,a.ccode,md,mc from ";
    std::shared_ptr<Connection> con = database.newConnection("con");
    DefineRef ref;
    std::shared_ptr<Recordset> grid;
    std::string message = "before";
};

TEST_F(DefineRefTest, DescribesTheVoucherInAnyLetterCase) {
    const std::string expected =
        "<Ref cRefName='<Z7.CW.GL.CashFlow.00058>' cEntityKeyFld='inid' cEntityNameFld='ccode'> "
        "   <RefSet  cCheckFlds='ccode' iShowStyle='0' iFilterStyle='1'>"
        "   </RefSet>"
        "<RefColSet><Z7ColSet><Data>"
        "       <ColSet cFld='inid' bDisp='1' cCaption='<Z7.CW.GL.CashFlow.00059>' iColWidth='1000' iAlign='1'/>"
        "       <ColSet cFld='ccode' bDisp='1' cCaption='<Z7.CW.GL.CashFlow.00060>' iColWidth='1500' iAlign='1'/>"
        "       <ColSet cFld='md' bDisp='1' cCaption='<Z7.CW.GL.CashFlow.00061>' iColWidth='1500' iAlign='1'/>"
        "       <ColSet cFld='mc' bDisp='1' cCaption='<Z7.CW.GL.CashFlow.00062>' iColWidth='1500' iAlign='1'/>"
        "   </Data></Z7ColSet></RefColSet>"
        "</Ref>";
    login->texts->asked.clear();
    EXPECT_EQ(metaOf("voucher"), expected);
    EXPECT_EQ(login->texts->asked,
              (Lines{"Z7.CW.GL.CashFlow.00058", "Z7.CW.GL.CashFlow.00059", "Z7.CW.GL.CashFlow.00060",
                     "Z7.CW.GL.CashFlow.00061", "Z7.CW.GL.CashFlow.00062"}));
    EXPECT_EQ(metaOf("VOUCHER"), expected);
}

TEST_F(DefineRefTest, AnotherReferenceHasNoDescriptionAndNoRowsButAFlag) {
    EXPECT_EQ(metaOf("vouchers"), "before");
    EXPECT_TRUE(ask("vouchers", ""));
    EXPECT_EQ(grid, nullptr);
    EXPECT_EQ(database.statements(), Lines{option}) << "the option is read all the same";
    EXPECT_EQ(message, "before");
}

TEST_F(DefineRefTest, LinesOfAKeyedTableAreThoseOfTheVoucherInAnyLetterCaseOfTheTable) {
    for (const char* table : {"GL_accvouch", "gl_v_accvouch"}) {
        ref.VoucherTable(table);
        EXPECT_TRUE(ask("VOUCHER", ""));
        EXPECT_EQ(lastStatement(), begin + table +
                                       " a inner join gl_v_code on a.ccode=gl_v_code.ccode and gl_v_code.bCashItem=0 "
                                       "where iperiod=1 and isignseq=2 and ino_id=40000");
    }
    EXPECT_EQ(toText(grid->Fields().Item("ccode")), "6001");
    EXPECT_EQ(grid->CursorLocation(), CursorLocation::client);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(grid->ActiveConnection())) << "without a connection";
}

TEST_F(DefineRefTest, TheOptionChoosesTheAccounts) {
    database.answer("select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ",
                    one("CVALUE", "tRuE"));
    EXPECT_TRUE(ask("voucher", ""));
    EXPECT_EQ(lastStatement(), begin + "gl_accvouch a inner join gl_v_code on a.ccode=gl_v_code.ccode and "
                                       "gl_v_code.bCashItem=1  where iperiod=1 and isignseq=2 and ino_id=40000");
}

TEST_F(DefineRefTest, AKeylessTableHasTheFilterAsItsOnlyCondition) {
    ref.VoucherTable("sales");
    EXPECT_TRUE(ask("voucher", ""));
    EXPECT_EQ(lastStatement(),
              begin + "sales  a inner join gl_v_code on a.ccode=gl_v_code.ccode and gl_v_code.bCashItem=0");
    EXPECT_TRUE(ask("voucher", "<r><filtersql>inid=3</filtersql></r>"));
    EXPECT_TRUE(lastStatement().ends_with("gl_v_code.bCashItem=0 where inid=3"));
}

TEST_F(DefineRefTest, AFilterQualifiesAccountsAfterABracket) {
    EXPECT_TRUE(ask("voucher", "<r><filtersql> (ccode like '6%') or (ccode='1') and ccode='2' &lt; 3</filtersql></r>"));
    EXPECT_TRUE(lastStatement().ends_with("ino_id=40000 and (a.ccode like '6%') or (a.ccode='1') and ccode='2' < 3"))
        << lastStatement();
}

TEST_F(DefineRefTest, ARequestWithoutAFilterHasNone) {
    for (const char* xml :
         {"", "no document", "<r/>", "<r><x>inid=3</x></r>", "<filtersql>inid=3</filtersql>", "<r><filtersql/></r>"}) {
        EXPECT_TRUE(ask("voucher", xml));
        EXPECT_TRUE(lastStatement().ends_with("ino_id=40000")) << xml;
    }
}

TEST_F(DefineRefTest, RowsThatCannotBeOpenedAreReportedInTheMessage) {
    database.failPrefix("select  cast(0 as bit)", Error(208, "server", "no such table"));
    EXPECT_TRUE(ask("voucher", ""));
    EXPECT_EQ(grid, nullptr);
    EXPECT_EQ(message, "no such table");
}

TEST_F(DefineRefTest, AnEarlierFailureReachesTheControl) {
    database.fail(option.substr(5), Error(208, "server", "no such table"));
    EXPECT_ERROR(ask("voucher", ""), 208);
    database.answer(option.substr(5), none("cvalue"));
    EXPECT_ERROR(ask("voucher", ""), errors::noCurrentRecord);
    ref.objCon(nullptr);
    EXPECT_ERROR(ask("voucher", ""), errors::objectNotSet);
}

} // namespace
} // namespace z7::cashflow::test
