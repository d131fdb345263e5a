// Joins and filters on texts that are equal for an accountant, but not byte by byte, compared with nested loops over
// the same rows.

#include "adapters/sqlite/EmbeddedDatabase.h"
#include "adapters/sqlite/spellings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace z7::cashflow::sqlite {
namespace {

struct Case {
    Statistics statistics;
    bool longestFirst; ///< which of equal spellings the keyed tables hold

    [[nodiscard]] std::string name() const { return nameOf(statistics) + (longestFirst ? "Longest" : "Shortest"); }
    friend void PrintTo(const Case& given, std::ostream* out) { *out << given.name(); }
};

class JoinTest : public testing::TestWithParam<Case> {
protected:
    JoinTest() {
        const auto connection = database_.open();
        connection->Execute("select * into sales from gl_accvouch where 1=0");
        connection->BeginTrans();
        for (const std::string& text : keyed_) {
            for (const char* year : {"2013", "2014"}) {
                connection->Execute("insert into code (iyear,ccode,bend,bCashItem) values(" + std::string(year) +
                                    ",N'" + text + "',1,1)");
                connection->Execute("insert into GL_CashItemDataSource (iyear,cDataSource,bdir,cItemCode) values(" +
                                    std::string(year) + ",N'" + text + "',1,N'" + text + "')");
            }
            connection->Execute("insert into fitemss98 (citemcode,citemname) values(N'" + text + "',N'" + text + "')");
        }
        for (std::size_t i = 0; i < spellings.size(); ++i) {
            addLine(*connection, "gl_accvouch", i);
            addLine(*connection, "sales", i);
            connection->Execute("insert into gl_cashtable (iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,ccode) "
                                "values(2013,1,1,N'',1," +
                                std::to_string(i) + ",N'" + spellings[i] + "',N'" +
                                spellings[spellings.size() - 1 - i] + "')");
        }
        connection->CommitTrans();
        connection->Close();
        prepareStatistics(database_.file(), GetParam().statistics);
    }

    /// The spelling of a text in a keyed table.
    [[nodiscard]] std::string stored(const std::string& text) const {
        return *std::find_if(keyed_.begin(), keyed_.end(), [&](const auto& known) { return equalTexts(known, text); });
    }
    static void addLine(Connection& connection, const std::string& table, std::size_t i) {
        connection.Execute("insert into " + table +
                           " (iyear,iperiod,isignseq,ino_id,inid,ccode,ccashitem_id,coutno_id,md) values(2013,1,1,1," +
                           std::to_string(i) + ",N'" + spellings[i] + "',N'" + spellings[i] + "',N'" + spellings[i] +
                           "',1)");
    }
    EmbeddedDatabase database_;
    std::vector<std::string> keyed_ = distinctSpellings(GetParam().longestFirst);
};

TEST_P(JoinTest, LinesFindTheirAccount) {
    const auto connection = database_.open();
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < spellings.size(); ++i) {
        expected.push_back(std::to_string(i) + "|" + stored(spellings[i]) + "|");
    }
    std::sort(expected.begin(), expected.end());
    const std::string accounts = " where code.bend=1 and code.bclose=0 and code.bCashItem=1";
    for (const std::string& query : std::vector<std::string>{
             "select TempVoucher.inid,code.ccode from gl_accvouch as TempVoucher  inner join code on "
             "TempVoucher.iyear=code.iyear and TempVoucher.ccode=code.ccode" +
                 accounts,
             "select TempVoucher.inid,code.ccode from gl_v_accvouch as TempVoucher inner join code on "
             "code.iyear=2013 and TempVoucher.ccode=code.ccode" +
                 accounts,
             "select TempVoucher.inid,code.ccode from sales as TempVoucher inner join code on "
             "code.iyear=2013 and TempVoucher.ccode=code.ccode" +
                 accounts,
             "select TempVoucher.inid,code.ccode from sales as TempVoucher inner join code on "
             "TempVoucher.ccode=code.ccode" +
                 accounts + " and code.iyear=2013",
             "select a.inid,c.ccode from sales as a inner join gl_v_code as c on a.ccode=c.ccode",
             "select a.inid,c.ccode from gl_v_code as c inner join sales as a on c.ccode=a.ccode",
             "select a.inid,f.citemcode from sales as a inner join fitemss98 as f on a.ccashitem_id =f.citemcode",
             "select t.inid,t.citemcode from (select a.inid,f.citemcode from gl_cashtable as a inner join fitemss98 as "
             "f "
             "on f.citemcode=a.cCashItem) t",
             "select a.inid,s.cDataSource from sales as a inner join GL_V_CashItemDataSource as s on "
             "s.cDataSource=a.ccode and s.bdir=1",
             "select a.inid,s.cDataSource from sales as a, GL_CashItemDataSource as s where s.iyear=2013 and "
             "s.cDataSource=a.ccode"}) {
        EXPECT_EQ(rowsOf(*connection, query), expected) << query;
    }
}

TEST_P(JoinTest, TablesWithoutAKeyFindEachOthersLines) {
    const auto connection = database_.open();
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < spellings.size(); ++i) {
        for (std::size_t j = 0; j < spellings.size(); ++j) {
            if (equalTexts(spellings[i], spellings[j])) {
                expected.push_back(std::to_string(i) + "|" + std::to_string(j) + "|");
            }
        }
    }
    std::sort(expected.begin(), expected.end());
    for (const char* query :
         {"select a.inid,b.inid as other from sales as a inner join sales as b on a.ccode=b.ccode",
          "select a.inid,b.inid as other from sales as a inner join gl_cashtable as b on a.ccode=b.cCashItem",
          "select a.inid,b.inid as other from gl_cashtable as a inner join sales as b on a.cCashItem=b.coutno_id",
          "select a.inid,b.inid as other from sales as a inner join gl_accvouch as b on a.coutno_id=b.coutno_id and "
          "b.iyear=2013"}) {
        EXPECT_EQ(rowsOf(*connection, query), expected) << query;
    }
}

TEST_P(JoinTest, RowsKeepTheirItemAndTheirAccount) {
    const auto connection = database_.open();
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < spellings.size(); ++i) {
        expected.push_back(std::to_string(i) + "|" + stored(spellings[i]) + "|" +
                           stored(spellings[spellings.size() - 1 - i]) + "|");
    }
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(rowsOf(*connection,
                     "select table1.inid,fitemss98.citemcode,table1.account from (select gl_cashtable.inid,"
                     "gl_cashtable.cCashItem,code.ccode as account from gl_cashtable inner join code on "
                     "code.iyear=gl_cashtable.iyear and gl_cashtable.ccode=code.ccode where gl_cashtable.iyear=2013) "
                     "table1 inner join fitemss98 on table1.cCashItem =fitemss98.citemcode"),
              expected);
}

TEST_P(JoinTest, FiltersFindEverySpelling) {
    const auto connection = database_.open();
    for (const std::string& text : spellings) {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < spellings.size(); ++i) {
            if (equalTexts(spellings[i], text)) {
                lines.push_back(std::to_string(i) + "|");
            }
        }
        std::sort(lines.begin(), lines.end());
        for (const char* query :
             {"select inid from sales where ccode=N'", "select inid from gl_accvouch where ccode=N'",
              "select inid from gl_accvouch where iyear=2013 and coutno_id=N'",
              "select inid from gl_cashtable where cCashItem=N'",
              "select a.inid from sales as a inner join code on code.iyear=2013 and a.ccode=code.ccode "
              "where a.coutno_id=N'",
              "select a.inid from gl_accvouch as a inner join code on a.iyear=code.iyear and "
              "a.ccode=code.ccode where code.ccode=N'"}) {
            EXPECT_EQ(rowsOf(*connection, query + text + "'"), lines) << query << text;
        }
        EXPECT_EQ(rowsOf(*connection, "select inid from sales where ccode in (N'" + text + "',N'none')"), lines);
        const std::vector<std::string> one{stored(text) + "|"};
        for (const char* query : {"select ccode from code where iyear=2013 and  ccode=N'",
                                  "select citemcode from fitemss98 where citemcode=N'",
                                  "select cDataSource from GL_V_CashItemDataSource where bdir=1 and cDataSource=N'"}) {
            EXPECT_EQ(rowsOf(*connection, query + text + "'"), one) << query << text;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Joins, JoinTest,
                         testing::Values(Case{Statistics::shipped, false}, Case{Statistics::shipped, true},
                                         Case{Statistics::none, false}, Case{Statistics::none, true},
                                         Case{Statistics::gathered, false}, Case{Statistics::gathered, true}),
                         [](const auto& tested) { return tested.param.name(); });

} // namespace
} // namespace z7::cashflow::sqlite
