#include "workbench/statement/CashFlowStatement.h"

#include "outside/Company.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace z7::cashflow::workbench {
namespace {

/// The small company, to which tests add lines and rows in 2013 (or another year).
class CashFlowStatementTest : public ::testing::Test {
protected:
    void line(const std::string& key, const std::string& account, double debit, double credit) {
        company.execute("insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,ccode,md,mc) values(" + key + "," +
                        std::to_string(++lines_) + ",N'" + account + "'," + std::to_string(debit) + "," +
                        std::to_string(credit) + ")");
    }
    void row(const std::string& key, const std::string& account, const std::string& item, double debit, double credit,
             const std::string& currency = "Null") {
        company.execute("insert into gl_cashtable (iYear,iPeriod,iSignSeq,iNo_id,csign,inid,cCashItem,ccode,md,mc,md_f,"
                        "cexch_name) values(" +
                        key + ",N'x',1,N'" + item + "',N'" + account + "'," + std::to_string(debit) + "," +
                        std::to_string(credit) + "," + std::to_string(debit / 8.0) + "," + currency + ")");
    }
    [[nodiscard]] CashFlowStatement draw(Span span = Span::year) {
        StatementRequest request;
        request.year = 2013;
        request.span = span;
        return drawUpStatement(company.connection(), request);
    }
    static std::string text(const CashFlowStatement& statement) {
        std::ostringstream out;
        for (const StatementLine& item : statement.items) {
            out << item.code << " " << item.total.receipts.text() << " " << item.total.payments.text() << "; ";
        }
        for (const CashAccount& account : statement.accounts) {
            out << account.code << " " << account.opening.text() << " " << account.flow.receipts.text() << " "
                << account.flow.payments.text() << " " << account.closing().text() << "; ";
        }
        out << "difference " << statement.difference().text();
        return out.str();
    }
    static std::vector<std::string> gaps(const CashFlowStatement& statement) {
        static constexpr const char* reasons[] = {"unallocated", "hidden", "missing", "differs"};
        std::vector<std::string> result;
        for (const VoucherGap& gap : statement.gaps) {
            result.push_back(std::to_string(gap.period) + "/" + std::to_string(gap.kind) + "/" +
                             std::to_string(gap.number) + " " + gap.cash.text() + " " + gap.rows.text() + " " +
                             std::to_string(gap.stored) + " " + reasons[static_cast<int>(gap.gap)]);
        }
        return result;
    }

    test::Company company;

private:
    int lines_ = 100;
};

using Lines = std::vector<std::string>;

TEST_F(CashFlowStatementTest, WithoutRowsEveryVoucherThatMovesCashIsUnallocated) {
    const CashFlowStatement statement = draw();
    EXPECT_EQ(text(statement), "1001 0.00 357.50 0.00 357.50; difference 357.50");
    EXPECT_EQ(gaps(statement), (Lines{"1/1/6 250.50 0.00 0 unallocated", "1/2/5 100.00 0.00 0 unallocated",
                                      "2/1/40000 7.00 0.00 0 unallocated"}));
    EXPECT_FALSE(statement.proven());
}

TEST_F(CashFlowStatementTest, RowsOnOtherAccountsCountTheOppositeWayAndProveTheCash) {
    row("2013,1,2,5", "6001", "01", 0, 100);
    row("2013,1,1,6", "6001", "02", 0, 250.5);
    row("2013,2,1,40000", "1001", "01", 7, 0);
    const CashFlowStatement statement = draw();
    EXPECT_EQ(text(statement), "01 107.00 0.00; 02 250.50 0.00; 1001 0.00 357.50 0.00 357.50; difference 0.00");
    EXPECT_TRUE(statement.proven());
}

TEST_F(CashFlowStatementTest, ARowThatNoReaderSeesIsNotCountedAndItsVoucherSaysSo) {
    row("2013,1,2,5", "6001", "99", 0, 100);
    row("2013,1,1,6", "6999", "01", 0, 250.5);
    row("2013,2,1,40000", "1001", "01", 7, 0);
    EXPECT_EQ(gaps(draw()), (Lines{"1/1/6 250.50 0.00 1 hidden", "1/2/5 100.00 0.00 1 hidden"}));
}

TEST_F(CashFlowStatementTest, RowsOfAVoucherThatTheLedgerLacksAreNamed) {
    row("2013,3,1,1", "6001", "01", 0, 5);
    EXPECT_EQ(gaps(draw()).back(), "3/1/1 0.00 5.00 1 missing");
}

TEST_F(CashFlowStatementTest, RowsOfAVoucherWithoutCashDiffer) {
    line("2013,4,1,1", "6001", 5, 0);
    row("2013,4,1,1", "6001", "01", 0, 5);
    EXPECT_EQ(gaps(draw()).back(), "4/1/1 0.00 5.00 1 differs");
}

TEST_F(CashFlowStatementTest, TheBoundOfADifferenceIsThatOfTheCheck) {
    row("2013,1,2,5", "6001", "01", 0, 100.001);
    row("2013,1,1,6", "6001", "02", 0, 250.5009);
    row("2013,2,1,40000", "1001", "01", 7, 0);
    const CashFlowStatement statement = draw();
    EXPECT_EQ(gaps(statement), (Lines{"1/2/5 100.00 100.0010 1 differs"}));
    EXPECT_EQ(statement.difference().text(), "-0.0019");
}

TEST_F(CashFlowStatementTest, ClosedAccountsAndOtherYearsDoNotCount) {
    line("2013,1,1,7", "1003", 50, 0);
    line("2014,1,1,8", "1001", 60, 0);
    row("2014,1,1,8", "6001", "01", 0, 60);
    EXPECT_EQ(text(draw()), "1001 0.00 357.50 0.00 357.50; difference 357.50");
}

TEST_F(CashFlowStatementTest, TheOpeningIsWhatTheLedgerHoldsFromBeforeAndWhatIsGiven) {
    line("2012,12,1,1", "1001", 40, 0);
    line("2013,0,1,1", "1002", 0, 3);
    StatementRequest request;
    request.year = 2013;
    request.firstPeriod = 2;
    request.openings["1001"] = Amount::of(1000.0);
    const CashFlowStatement statement = drawUpStatement(company.connection(), request);
    EXPECT_EQ(text(statement), "1001 1,390.50 7.00 0.00 1,397.50; 1002 -3.00 0.00 0.00 -3.00; difference 7.00");
    EXPECT_EQ(statement.cash.closing().text(), "1,394.50");
}

TEST_F(CashFlowStatementTest, AnOpeningOfAnAccountThatIsNotCashIsRefused) {
    StatementRequest request;
    request.year = 2013;
    request.openings["6001"] = Amount::of(1.0);
    EXPECT_THROW((void)drawUpStatement(company.connection(), request), Error);
}

TEST_F(CashFlowStatementTest, APeriodRangeThatRunsBackwardsIsRefused) {
    StatementRequest request;
    request.year = 2013;
    request.firstPeriod = 3;
    request.lastPeriod = 2;
    EXPECT_THROW((void)drawUpStatement(company.connection(), request), Error);
}

TEST_F(CashFlowStatementTest, ColumnsAreMonthsOrQuartersCutAtTheRange) {
    row("2013,1,2,5", "6001", "01", 0, 100);
    row("2013,2,1,40000", "1001", "01", 7, 0);
    row("2013,5,1,1", "6001", "01", 30, 0);
    const CashFlowStatement months = draw(Span::month);
    ASSERT_EQ(months.columns.size(), 12U);
    EXPECT_EQ(months.items.at(0).columns.at(1).receipts.text(), "7.00");
    EXPECT_EQ(months.cashColumns.at(0).receipts.text(), "350.50");
    StatementRequest request;
    request.year = 2013;
    request.firstPeriod = 2;
    request.lastPeriod = 5;
    request.span = Span::quarter;
    const CashFlowStatement quarters = drawUpStatement(company.connection(), request);
    ASSERT_EQ(quarters.columns.size(), 2U);
    EXPECT_EQ(quarters.columns.at(0).first, 2);
    EXPECT_EQ(quarters.columns.at(0).last, 3);
    EXPECT_EQ(quarters.columns.at(1).last, 5);
    EXPECT_EQ(quarters.items.at(0).columns.at(1).payments.text(), "30.00");
    EXPECT_EQ(quarters.total.columns.at(0).net().text(), "7.00");
}

TEST_F(CashFlowStatementTest, AYearWithMoreThanTwelvePeriodsIsCoveredWhole) {
    line("2013,13,1,1", "1001", 1, 0);
    EXPECT_EQ(draw().lastPeriod, 13);
}

TEST_F(CashFlowStatementTest, GroupsAreNamedAfterTheItemWithTheirCode) {
    company.execute("insert into fitemss98 (citemcode,citemname) values(N'0101',N'sales')");
    company.execute("insert into fitemss98 (citemcode,citemname) values(N'0301',N'loans')");
    row("2013,1,2,5", "6001", "0101", 0, 100);
    row("2013,1,1,6", "6001", "01", 0, 250.5);
    row("2013,2,1,40000", "1001", "0301", 7, 0);
    const CashFlowStatement statement = draw();
    ASSERT_EQ(statement.groups.size(), 2U);
    EXPECT_EQ(statement.groups.at(0).name, "销售商品收到的现金");
    EXPECT_EQ(statement.groups.at(0).total.receipts.text(), "350.50");
    EXPECT_EQ(statement.groups.at(1).code, "03");
    EXPECT_EQ(statement.groups.at(1).name, "");
}

TEST_F(CashFlowStatementTest, CurrenciesAreShownInTheirOwnAmounts) {
    row("2013,1,2,5", "1001", "01", 80, 0, "N'美元'");
    row("2013,1,2,5", "1001", "01", 20, 0);
    StatementRequest request;
    request.year = 2013;
    request.byCurrency = true;
    const CashFlowStatement statement = drawUpStatement(company.connection(), request);
    const auto& currencies = statement.items.at(0).currencies;
    ASSERT_EQ(currencies.size(), 2U);
    EXPECT_EQ(currencies.at(0).currency + " " + currencies.at(0).flow.receipts.text(), " 20.00");
    EXPECT_EQ(currencies.at(1).currency + " " + currencies.at(1).flow.receipts.text(), "美元 10.00");
}

TEST_F(CashFlowStatementTest, RandomLedgersAddUpAsCountedLineByLine) {
    std::mt19937 random(20131231);
    const auto cents = [&random] { return std::uniform_int_distribution(-99999, 99999)(random); };
    const char* const accounts[] = {"1001", "1002", "1003", "6001", "6602"};
    const char* const items[] = {"01", "02", "77"};
    long long cash = 0;
    long long receipts = 0;
    long long payments = 0;
    company.execute("delete from gl_accvouch");
    std::map<int, long long> open;
    for (int number = 1; number <= 60; ++number) {
        const std::string key = "2013," + std::to_string(1 + number % 12) + ",1," + std::to_string(number);
        for (int i = 0; i < 3; ++i) {
            const std::size_t account = random() % 5;
            const int amount = cents();
            line(key, accounts[account], random() % 2 == 0 ? amount / 100.0 : 0, 0);
            line(key, accounts[account], 0, amount / 100.0);
        }
        for (int i = 0; i < 2; ++i) {
            const std::size_t account = random() % 5;
            const std::size_t item = random() % 3;
            const int debit = cents();
            const int credit = cents();
            row(key, accounts[account], items[item], debit / 100.0, credit / 100.0);
            const int effect = account <= 2 ? debit - credit : credit - debit;
            if (item != 2) {
                (effect > 0 ? receipts : payments) += effect > 0 ? effect : -effect;
                open[number] -= effect;
            }
        }
    }
    for (const std::string& each : company.records("select ino_id,ccode,md,mc from gl_accvouch")) {
        int number = 0;
        char account[8] = {};
        double debit = 0;
        double credit = 0;
        ASSERT_EQ(std::sscanf(each.c_str(), "ino_id=%d ccode=%7s md=%lf mc=%lf", &number, account, &debit, &credit), 4);
        if (std::string(account) == "1001" || std::string(account) == "1002") {
            const long long moved = std::llround(debit * 100) - std::llround(credit * 100);
            cash += moved;
            open[number] += moved;
        }
    }
    const CashFlowStatement statement = draw(Span::month);
    const auto amount = [](long long value) { return Amount::of(static_cast<double>(value) / 100.0).text(); };
    EXPECT_EQ(statement.total.total.receipts.text(), amount(receipts));
    EXPECT_EQ(statement.total.total.payments.text(), amount(payments));
    EXPECT_EQ(statement.cash.flow.net().text(), amount(cash));
    Amount sum;
    for (const VoucherGap& gap : statement.gaps) {
        EXPECT_EQ(gap.difference().text(), amount(open[gap.number])) << gap.number;
        sum += gap.difference();
        open.erase(gap.number);
    }
    EXPECT_EQ(sum, statement.difference());
    for (const auto& [number, difference] : open) {
        EXPECT_EQ(difference, 0) << number;
    }
}

} // namespace
} // namespace z7::cashflow::workbench
