#include "z7cashflow/statements/accountAnswers.h"

#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/statements/voucherStatements.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace z7::cashflow::statements {
namespace {

template <class... Places, class... Values> std::string of(const Statement<Places...>& statement, Values... values) {
    return statement.fill(LiteralPolicy::wholeLiterals, Places(values)...);
}

/// The statements with which vouchers are read and rows are stored.
std::vector<std::string> voucherStatements() {
    const VoucherKey key{3, 2, 15};
    return {of(storedRows, 2024, key),
            of(noStoredRows, 2024, key),
            of(deleteRows, key),
            of(deleteRowsInYear, 2024, key),
            of(deleteRowsOfFreeNumber, key, key),
            of(countLines, key),
            of(takeCurrencyNames, key, 2024),
            of(cashLine, "gl_accvouch", key, 2024),
            of(cashSum, "gl_accvouch", 2024, key),
            of(voucherDate, "gl_accvouch", key),
            of(draftItem, "demo", 1),
            "insert into gl_v_cashtable (iYear,cCashItem) values(2024,'0101')",
            "update gl_accvouch set cdigest=cdigest where iyear=2024"};
}

TEST(AccountAnswers, AreItemsTemplatesOptionsPeriodsKindsAndAccounts) {
    for (const std::string& text :
         {of(itemName, "0101"), of(itemTemplate, 2024, "1001", 1), of(accountOption, "GL", "bXJLL"), of(sumCheckOption),
          of(voucherOptions, "demo"), of(accountingPeriod, "001", "2024-03-05", "2024-03-05"), of(voucherKind, 2),
          of(cashAccount, 2024, "1001")}) {
        EXPECT_TRUE(isAccountAnswer(text)) << text;
        EXPECT_FALSE(mayChangeAccountAnswers(text, false)) << text;
        EXPECT_TRUE(mayChangeAccountAnswers(text, true)) << text;
    }
}

TEST(AccountAnswers, LeaveOutWhatBelongsToAVoucherOrAUser) {
    for (const std::string& text : voucherStatements()) {
        EXPECT_FALSE(isAccountAnswer(text)) << text;
    }
}

TEST(AccountAnswers, AreNotChangedByReadingVouchersAndStoringRows) {
    for (const std::string& text : voucherStatements()) {
        EXPECT_FALSE(mayChangeAccountAnswers(text, false)) << text;
    }
}

TEST(AccountAnswers, MayBeChangedByEveryStatementThatNamesTheirTables) {
    for (const char* text :
         {"update fitemss98 set citemname=N'x'", "UPDATE [FitemSS98] SET citemname=N'x'", "delete from dsign",
          "insert into gl_cashitemdatasource (iID) values(1)", "select * into fitemss98 from other",
          "select 1;delete from dbo.accinformation", "if exists(select 1) delete from zqsystem..ua_period",
          "update GL_V_CashItemDataSource set cItemcode=N'01'", "truncate table gl_voucheroption", "drop table dsign",
          "exec anything", "select 1;execute anything", "anything", "(select 1)delete from dsign"}) {
        EXPECT_TRUE(mayChangeAccountAnswers(text, false)) << text;
        EXPECT_FALSE(isAccountAnswer(text)) << text;
    }
}

TEST(AccountAnswers, AreNoneWhereAValueBroughtAStatementAlong) {
    const std::string text = itemName.fill(LiteralPolicy::asGiven, "x';delete from code where ''='");
    EXPECT_FALSE(isAccountAnswer(text));
}

TEST(AccountAnswers, MayBeChangedByRecordsOfTheirTables) {
    const std::string text = of(itemTemplatesNewestFirst, "1001", 1);
    EXPECT_TRUE(mayChangeAccountAnswers(text, true));
    EXPECT_FALSE(mayChangeAccountAnswers(text, false));
    EXPECT_FALSE(mayChangeAccountAnswers("select * from gl_cashtable", true));
}

TEST(AccountAnswers, OfATextWithoutAWordAreUnknown) {
    for (const char* text : {"", " ", ";"}) {
        EXPECT_FALSE(isAccountAnswer(text));
        EXPECT_FALSE(mayChangeAccountAnswers(text, false)) << "it does nothing";
    }
}

} // namespace
} // namespace z7::cashflow::statements
