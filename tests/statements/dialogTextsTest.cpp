// Every statement of the dialog once, letter by letter.

#include "statements/filledText.h"
#include "z7cashflow/statements/dialogStatements.h"

namespace z7::cashflow::statements {
namespace {

constexpr VoucherKey key{3, 2, 15};

TEST(DialogStatementTexts, LinesOfAVoucher) {
    EXPECT_EQ(text(lineSummary, "gl_accvouch", 2013, key, "7"),
              "select cdigest from gl_accvouch where iyear=2013 and iperiod=3 and isignseq=2 and ino_id=15 and inid=7");
    EXPECT_EQ(text(keylessLineSummary, "mine", "7"), "select cdigest from mine where inid =7");
    EXPECT_EQ(text(firstLineOfAccount, "gl_accvouch", "1001", key),
              "select top 1 * from gl_accvouch where ccode=N'1001' and iperiod=3 and isignseq=2 and ino_id=15");
    EXPECT_EQ(text(keylessFirstLineOfAccount, "mine", "1001"), "select top 1 * from mine where ccode=N'1001'");
    EXPECT_EQ(text(lineOfAccount, "gl_accvouch", "1001", key, "7"),
              "select * from gl_accvouch where ccode=N'1001' and iperiod=3 and isignseq=2 and ino_id=15 And inid = 7");
    EXPECT_EQ(text(keylessLineOfAccount, "mine", "1001", "7"), "select * from mine where ccode=N'1001' and inid=7");
    EXPECT_EQ(text(linesOfAccount, "mine", "1001"), "select * from mine where ccode=N'1001'");
}

TEST(DialogStatementTexts, AccountsAndItems) {
    EXPECT_EQ(text(cashCodeOption), "select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ");
    EXPECT_EQ(text(accountFlag, "2013", "1001"), "select bCashItem from code where iyear=2013 and  ccode=N'1001'");
    EXPECT_EQ(text(cashFlowItem, "01"), "select * from fitemss98 where citemcode=N'01'");
    EXPECT_EQ(text(itemFilter, "%01%", "%01%"), "citemcode like N'%01%' or citemname like N'%01%'");
    EXPECT_EQ(text(itemsUnder) + "1=1" + text(itemOrder),
              "select citemcode,citemname from fitemss98 where 1=1 order by citemcode");
}

TEST(DialogStatementTexts, LinesToPickFrom) {
    EXPECT_EQ(
        text(referenceLines, "gl_accvouch", "1 ", key),
        "select  cast(0 as bit) as bRefSelectColumn,inid,a.ccode,md,mc from gl_accvouch a inner join gl_v_code on "
        "a.ccode=gl_v_code.ccode and gl_v_code.bCashItem=1  where iperiod=3 and isignseq=2 and ino_id=15");
    EXPECT_EQ(text(keylessReferenceLines, "mine", "0"),
              "select  cast(0 as bit) as bRefSelectColumn,inid,a.ccode,md,mc from mine  a inner join gl_v_code on "
              "a.ccode=gl_v_code.ccode and gl_v_code.bCashItem=0");
}

TEST(DialogStatementTexts, WidthsOfColumns) {
    EXPECT_EQ(text(widthsToShow, "frmCashFlow", 10, "2052"),
              "select * from GL_myoutput where cauth=N'frmCashFlow' and csqrmode=10 and LocaleId=N'2052' order by "
              "cFieldNum");
    EXPECT_EQ(text(widthsToCompare, "frmCashFlow", 10, "2052"),
              "select * from GL_myoutput where cauth=N'frmCashFlow' and csqrmode=10 and LocaleId=N'2052' order by "
              "cfieldnum");
    EXPECT_EQ(text(widthsDelete, "frmCashFlow", 10, "2052"),
              "Delete from GL_myoutput where cauth=N'frmCashFlow' and csqrmode=10 and LocaleId=N'2052'");
    EXPECT_EQ(text(widthInsert, "frmCashFlow", 10, 3, 1500, "2052"),
              "insert into GL_myoutput (cauth,csqrmode,cfieldnum,ilength,LocaleId) "
              "values('frmCashFlow',10,3,1500,'2052')");
}

} // namespace
} // namespace z7::cashflow::statements
