// Every statement of the library that joins or filters, on texts that are equal for an accountant but not byte by
// byte. It must find the same rows as with texts that are equal byte by byte.

#include "adapters/sqlite/EmbeddedDatabase.h"
#include "adapters/sqlite/spellings.h"
#include "z7cashflow/statements/dialogStatements.h"
#include "z7cashflow/statements/itemStatements.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/statements/temporaryTableStatements.h"
#include "z7cashflow/statements/voucherStatements.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace z7::cashflow::sqlite {
namespace {

using namespace z7::cashflow::statements;

/// Represents a text of the case: the statement is run once for each spelling.
struct Each {};
constexpr Each each;

std::string valueFor(Each, const std::string& text) { return text; }
template <class T> T valueFor(const T& value, const std::string& /*text*/) { return value; }

struct StatementCase {
    std::string name;
    std::function<std::string(const std::string& text)> fill;
};

template <class... Places, class... Values> StatementCase of(const Statement<Places...>& statement, Values... values) {
    return {std::string(statement.name()), [&statement, values...](const std::string& text) {
                return statement.fill(LiteralPolicy::asGiven, Places(valueFor(values, text))...);
            }};
}

StatementCase followedBy(StatementCase first, const Statement<>& second) {
    return {std::string(second.name()), [fill = std::move(first.fill), &second](const std::string& text) {
                return fill(text) + second.fill(LiteralPolicy::asGiven);
            }};
}

/// The texts with which a statement is run: one if it takes none.
std::vector<std::string> textsFor(const StatementCase& statement) {
    return statement.fill("a") == statement.fill("b") ? std::vector<std::string>{spellings.front()} : spellings;
}

ColumnList columns() {
    ColumnList list(LiteralPolicy::asGiven, "test");
    list.addOfAccount("iyear");
    list.add("inid");
    list.add("md");
    list.addOfAccount("ccode");
    return list;
}

constexpr VoucherKey key{1, 1, 1};
constexpr VoucherKey freeKey{1, 1, 2}; // it has rows, but no lines
constexpr const char* ledger = "gl_accvouch";
constexpr const char* sales = "sales"; // a table without an index
constexpr const char* day = "2013-01-15";

std::vector<StatementCase> readingCases() {
    return {of(lineSummary, ledger, 2013, key, 3),
            of(keylessLineSummary, sales, 3),
            of(cashCodeOption),
            of(accountFlag, 2013, each),
            of(firstLineOfAccount, ledger, each, key),
            of(keylessFirstLineOfAccount, sales, each),
            of(lineOfAccount, ledger, each, key, 1),
            of(keylessLineOfAccount, sales, each, 1),
            of(linesOfAccount, sales, each),
            of(cashFlowItem, each),
            of(referenceLines, ledger, "1 ", key),
            of(keylessReferenceLines, sales, "1 "),
            // A pattern is compared letter by letter, so only "%" means the same for all spellings.
            {std::string(itemsUnder.name()),
             [](const std::string&) {
                 return itemsUnder.fill(LiteralPolicy::asGiven) + itemFilter.fill(LiteralPolicy::asGiven, "%", "%") +
                        itemOrder.fill(LiteralPolicy::asGiven);
             }},
            of(widthsToShow, each, 1, "zh-CN"),
            of(widthsToCompare, each, 1, "zh-CN"),
            of(itemName, each),
            of(itemTemplate, 2013, each, 1),
            of(itemTemplatesNewestFirst, each, 1),
            of(itemTemplateOnDate, each, 1, day, day),
            of(draftItem, each, 1),
            of(storedRows, 2013, key),
            of(countLines, key),
            of(accountOption, each, each),
            of(sumCheckOption),
            of(voucherOptions, each),
            of(accountingPeriod, each, day, day),
            of(voucherKind, 1),
            of(voucherLines, columns(), ledger, 2013, key),
            followedBy(of(voucherLines, columns(), ledger, 2013, key), exceptBudgetAccounts),
            of(keylessVoucherLines, columns(), sales, 2013),
            of(outsideVoucherLines, columns(), ledger, 2013, each),
            of(keylessOutsideVoucherLines, columns(), sales, 2013, each),
            of(cashSum, ledger, 2013, key),
            of(keylessCashSum, sales, 2013),
            of(outsideCashSum, sales, each),
            of(cashAccount, 2013, each),
            of(cashLine, ledger, key, 2013),
            of(keylessCashLine, sales, 2013),
            of(outsideCashLine, ledger, each, 2013),
            of(keylessOutsideCashLine, sales, each, 2013),
            of(ledgerVoucherOf, 2013, each),
            of(voucherDate, ledger, key),
            of(xmlVoucherDateInYear, ledger, 2013, key),
            of(xmlVoucherDate, sales, key),
            of(xmlVoucherLineInYear, ledger, 2013, key, 3),
            of(xmlVoucherLine, sales, key, 3)};
}

std::vector<StatementCase> writingCases() {
    return {of(deleteBeforeInserts, "gl_cashtable", key),
            of(deleteRows, key),
            of(deleteRowsInYear, 2013, key),
            of(deleteRowsOfFreeNumber, freeKey, freeKey),
            of(takeCurrencyNames, key, 2013),
            of(widthsDelete, each, 1, "zh-CN")};
}

/// Statements whose condition is never true.
const std::set<std::string> emptyOnes{"noStoredRows", "createVoucherTable"};

/// One account, with texts as spelled or with one text for all equal ones.
class Account {
public:
    Account(bool spelled, bool longestFirst, Statistics statistics)
        : spelled_(spelled), keyed_(distinctSpellings(longestFirst)) {
        const auto connection = database_.open();
        connection->Execute("select * into sales from gl_accvouch where 1=0");
        connection->BeginTrans();
        fillKeyedTables(*connection);
        for (std::size_t i = 0; i < spellings.size(); ++i) {
            fillLine(*connection, i);
        }
        connection->CommitTrans();
        connection->Close();
        prepareStatistics(database_.file(), statistics);
        connection_ = database_.open();
    }

    /// A text as stored in this account, between quotes.
    [[nodiscard]] std::string as(const std::string& text) const { return spelled_ ? text : common(text); }

    /// The rows that a statement finds.
    [[nodiscard]] std::vector<std::string> read(const StatementCase& statement, const std::string& text) const {
        const std::string query = statement.fill(as(text));
        std::vector<std::string> rows = rowsOf(*connection_, query);
        for (std::string& row : rows) {
            row = withCommonTexts(row);
        }
        std::sort(rows.begin(), rows.end());
        // Which of several lines is the first is undefined.
        return query.starts_with("select top 1") ? std::vector<std::string>{std::to_string(rows.size())} : rows;
    }
    /// The rows left by a statement in the tables to which the library writes.
    [[nodiscard]] std::vector<std::string> left(const StatementCase* statement, const std::string& text) const {
        connection_->BeginTrans();
        if (statement != nullptr) {
            connection_->Execute(statement->fill(as(text)));
        }
        std::vector<std::string> rows;
        for (const char* table : {"gl_cashtable", "GL_myoutput"}) {
            for (const std::string& row : rowsOf(*connection_, std::string("select * from ") + table)) {
                rows.push_back(withCommonTexts(row));
            }
        }
        connection_->RollbackTrans();
        std::sort(rows.begin(), rows.end());
        return rows;
    }

private:
    /// One text for all equal ones: of the spellings, and of the words in statements.
    [[nodiscard]] static std::string common(const std::string& text) {
        const auto equalsText = [&text](const std::string& known) { return equalTexts(known, text); };
        const auto spelling = std::find_if(spellings.begin(), spellings.end(), equalsText);
        if (spelling != spellings.end()) {
            return "text" + std::to_string(100 + (spelling - spellings.begin()));
        }
        static const std::vector<std::string> words{"GL", "bCashCode", "bXJLL", "true"};
        const auto word = std::find_if(words.begin(), words.end(), equalsText);
        return word == words.end() ? text : *word;
    }
    static std::string withCommonTexts(const std::string& row) {
        std::string result;
        std::istringstream fields(row);
        for (std::string field; std::getline(fields, field, '|');) {
            result += common(field) + "|";
        }
        return result;
    }
    /// Another spelling of the same text if there is one.
    static std::string otherSpelling(std::size_t i) {
        return *std::find_if(spellings.rbegin(), spellings.rend(),
                             [i](const std::string& known) { return equalTexts(known, spellings[i]); });
    }

    void fillKeyedTables(Connection& connection) const {
        const auto run = [&connection](const std::string& table, const std::string& names, const std::string& values) {
            connection.Execute("insert into " + table + " (" + names + ") values(" + values + ")");
        };
        int number = 0;
        for (const std::string& spelling : keyed_) {
            const std::string text = "N'" + as(spelling) + "'";
            const std::string kind = number % 4 == 3 ? ",N'预算类会计科目'" : ",N''";
            const std::string cash = number++ % 3 == 2 ? ",0" : ",1";
            for (const std::string year : {"2013,", "2014,"}) {
                run("code", "iyear,ccode,bend,bclose,bCashItem,cUserDefineType", year + text + ",1,0" + cash + kind);
                run("GL_CashItemDataSource", "iyear,cDataSource,bdir,cItemCode,dStartDate",
                    year + text + ",1," + text + ",'2013-01-01'");
            }
            run("fitemss98", "citemcode,citemname", text + "," + text);
            run("GL_VouchDraft", "cUserId,inid,cCashItem", text + ",1," + text);
            run("GL_VoucherOption", "[operator],iUpdateCashFlow", text + ",1");
            run("GL_myoutput", "cauth,csqrmode,LocaleId,cfieldnum,ilength", text + ",1,N'zh-CN',1,10");
            run("accinformation", "csysid,cname,cvalue", text + "," + text + ",N'x'");
            run("zqsystem..ua_period", "cacc_id,iyear,iid,dbegin,dend", text + ",2013,1,'2013-01-01','2013-01-31'");
        }
        run("accinformation", "csysid,cname,cvalue", spelled_ ? "N'gl ',N'BCASHCODE',N'1'" : "N'GL',N'bCashCode',N'1'");
        run("accinformation", "csysid,cname,cvalue", spelled_ ? "N'GL',N'bxjll  ',N'TRUE '" : "N'gl',N'bXJLL',N'true'");
        run("dsign", "isignseq,csign", "1,N'记'");
    }
    void fillLine(Connection& connection, std::size_t i) const {
        const std::string number = std::to_string(i);
        const std::string text = "N'" + as(spellings[i]) + "'";
        const std::string other = "N'" + as(otherSpelling(i)) + "'";
        for (const std::string table : {"gl_accvouch", "sales"}) {
            connection.Execute("insert into " + table +
                               " (iyear,iperiod,isignseq,ino_id,inid,dbill_date,csign,cdigest,ccode,ccashitem_id,"
                               "coutno_id,cexch_name,md,mc) values(2013,1,1,1," +
                               number + ",'2013-01-15'," + text + "," + text + "," + text + "," + text + "," + text +
                               ",N'currency " + number + "'," + std::to_string(2 * i + 3) + ",1)");
        }
        for (const std::string voucher : {"1,", "2,"}) {
            connection.Execute(
                "insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,ccode,"
                "md) values(N'" +
                voucher + number + "',2013,1,1," + other + "," + voucher + number + "," + text + "," + other + "," +
                std::to_string(i + 1) + ")");
        }
    }

    bool spelled_;
    std::vector<std::string> keyed_;
    EmbeddedDatabase database_;
    std::unique_ptr<Connection> connection_;
};

struct Case {
    Statistics statistics;
    bool longestFirst; ///< which of equal spellings the keyed tables hold

    [[nodiscard]] std::string name() const { return nameOf(statistics) + (longestFirst ? "Longest" : "Shortest"); }
    friend void PrintTo(const Case& given, std::ostream* out) { *out << given.name(); }
};

class StatementRowsTest : public testing::TestWithParam<Case> {
protected:
    Account spelled_{true, GetParam().longestFirst, GetParam().statistics};
    Account common_{false, GetParam().longestFirst, GetParam().statistics};
};

TEST_P(StatementRowsTest, ReadsFindTheRowsOfEverySpelling) {
    for (const StatementCase& statement : readingCases()) {
        bool found = false;
        for (const std::string& text : textsFor(statement)) {
            const auto expected = common_.read(statement, text);
            EXPECT_EQ(spelled_.read(statement, text), expected) << statement.name << " of " << text;
            found = found || !(expected.empty() || expected == std::vector<std::string>{"0"});
        }
        EXPECT_TRUE(found) << statement.name << " finds no row in this account, so this proves nothing";
    }
}

TEST_P(StatementRowsTest, WritesReachTheRowsOfEverySpelling) {
    for (const StatementCase& statement : writingCases()) {
        for (const std::string& text : textsFor(statement)) {
            const auto expected = common_.left(&statement, text);
            EXPECT_EQ(spelled_.left(&statement, text), expected) << statement.name << " of " << text;
            EXPECT_NE(expected, common_.left(nullptr, text)) << statement.name << " changes nothing in this account";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Statements, StatementRowsTest,
                         testing::Values(Case{Statistics::shipped, false}, Case{Statistics::shipped, true},
                                         Case{Statistics::none, false}, Case{Statistics::none, true},
                                         Case{Statistics::gathered, false}, Case{Statistics::gathered, true}),
                         [](const auto& tested) { return tested.param.name(); });

// A new statement with a join or a condition belongs to one of the lists above.
TEST(StatementRows, CoverEveryStatementThatJoinsOrFilters) {
    std::set<std::string> covered = emptyOnes;
    for (const auto& list : {readingCases(), writingCases()}) {
        for (const StatementCase& statement : list) {
            covered.insert(statement.name);
        }
    }
    const std::regex constant(R"(constexpr Statement<[^>]*> (\w+)\s*\{([^;]*)\};)");
    const std::regex condition(R"(\b(join|where)\b)", std::regex::icase);
    std::size_t known = 0;
    for (const auto& file : std::filesystem::directory_iterator(Z7_SOURCE_DIR "/src/z7cashflow/statements")) {
        std::ifstream in(file.path());
        std::ostringstream text;
        text << in.rdbuf();
        const std::string source = text.str();
        for (std::sregex_iterator it(source.begin(), source.end(), constant), end; it != end; ++it) {
            ++known;
            if (std::regex_search((*it)[2].str(), condition)) {
                EXPECT_TRUE(covered.contains((*it)[1])) << (*it)[1] << " of " << file.path().filename();
            }
        }
    }
    EXPECT_GE(known, 50U) << "the headers are read otherwise than they are written";
}

} // namespace
} // namespace z7::cashflow::sqlite
