#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "ScratchFolder.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <fstream>
#include <map>
#include <set>

namespace z7::cashflow::host {
namespace {

using Json = nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;

/// An account file, read table by table without the program's own queries.
class PlainTables {
public:
    PlainTables(const std::filesystem::path& file, int year) {
        connection_.Open(sqlite::connectionString(file));
        std::set<std::string> items;
        read("select citemcode from fitemss98", [&](auto&& text) { items.insert(text("citemcode")); });
        std::map<std::string, bool> accounts;
        read("select ccode,bCashItem,bend,bclose from code where iyear=" + std::to_string(year), [&](auto&& text) {
            accounts[text("ccode")] = text("bCashItem") == "True";
            if (text("bCashItem") == "True" && text("bend") == "True" && text("bclose") == "False") {
                cashAccounts.insert(text("ccode"));
            }
        });
        read("select iperiod,isignseq,ino_id,ccode,md,mc from gl_accvouch where iyear=" + std::to_string(year),
             [&](auto&& text) {
                 if (cashAccounts.contains(text("ccode"))) {
                     const std::int64_t moved = units(text("md")) - units(text("mc"));
                     cash += moved;
                     open[key(year, text)] += moved;
                 }
             });
        read("select iPeriod,iSignSeq,iNo_id,ccode,cCashItem,md,mc from gl_cashtable where iyear=" +
                 std::to_string(year),
             [&](auto&& text) {
                 if (!items.contains(text("cCashItem")) || !accounts.contains(text("ccode"))) {
                     return;
                 }
                 std::int64_t effect = units(text("md")) - units(text("mc"));
                 effect = accounts[text("ccode")] ? effect : -effect;
                 (effect > 0 ? receipts : payments)[text("cCashItem")] += std::abs(effect);
                 open[key(year, text)] -= effect;
             });
        std::erase_if(open, [](const auto& each) { return each.second == 0; });
    }

    std::set<std::string> cashAccounts;
    std::int64_t cash = 0; ///< in ten-thousandths, as all amounts here
    std::map<std::string, std::int64_t> receipts;
    std::map<std::string, std::int64_t> payments;
    std::map<std::string, std::int64_t> open; ///< by voucher, without those that are accounted for

    static std::int64_t units(double amount) { return std::llround(amount * 10000); }

private:
    static std::int64_t units(const std::string& amount) { return amount.empty() ? 0 : units(std::stod(amount)); }
    template <class Text> static std::string key(int year, Text&& text) {
        return std::to_string(year) + "/" + text("iperiod") + "/" + text("isignseq") + "/" + text("ino_id");
    }
    template <class Action> void read(const std::string& query, Action&& action) {
        const auto records = connection_.Execute(query);
        for (; !records->EndOfFile(); records->MoveNext()) {
            action([&](const char* column) { return toTextOrEmpty(records->Fields().Item(column)); });
        }
    }

    sqlite::Connection connection_;
};

void expectSame(const Json& statement, const PlainTables& tables) {
    std::map<std::string, std::int64_t> receipts;
    std::map<std::string, std::int64_t> payments;
    std::int64_t net = 0;
    for (const Json& item : statement["items"]) {
        const std::string code = item["code"];
        receipts[code] = PlainTables::units(item["receipts"].get<double>());
        payments[code] = PlainTables::units(item["payments"].get<double>());
        net += receipts[code] - payments[code];
        EXPECT_EQ(PlainTables::units(item["net"].get<double>()), receipts[code] - payments[code]) << code;
    }
    const auto withoutZeros = [](std::map<std::string, std::int64_t> amounts) {
        std::erase_if(amounts, [](const auto& each) { return each.second == 0; });
        return amounts;
    };
    EXPECT_EQ(withoutZeros(receipts), withoutZeros(tables.receipts));
    EXPECT_EQ(withoutZeros(payments), withoutZeros(tables.payments));
    EXPECT_EQ(PlainTables::units(statement["total"]["net"].get<double>()), net);
    EXPECT_EQ(PlainTables::units(statement["cash"]["net"].get<double>()), tables.cash);
    EXPECT_EQ(PlainTables::units(statement["difference"].get<double>()), tables.cash - net);
    std::map<std::string, std::int64_t> open;
    for (const Json& voucher : statement["vouchers"]) {
        open[voucher["voucher"]] = PlainTables::units(voucher["difference"].get<double>());
    }
    EXPECT_EQ(open, tables.open);
}

class StatementCommandTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(runProgram({"init", file_, "--sample", "--quiet"}).exitCode, 0);
        ASSERT_EQ(runProgram({"allot", file_, "--year", "2024", "--quiet"}).exitCode, 1);
    }
    RunResult statement(const std::vector<std::string>& more) {
        std::vector<std::string> arguments{"statement", file_, "--year", "2024"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runProgram(arguments);
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    ScratchFolder folder_;
    std::string file_ = (folder_.path() / "company.db").string();
};

TEST_F(StatementCommandTest, FiguresOfTheSampleCompanyEqualThoseCountedRowByRow) {
    const RunResult run = statement({"--json"});
    EXPECT_EQ(run.exitCode, 1);
    const PlainTables tables(file_, 2024);
    ASSERT_FALSE(tables.receipts.empty());
    ASSERT_FALSE(tables.open.empty());
    expectSame(Json::parse(run.out), tables);
}

TEST_F(StatementCommandTest, TheDifferenceIsWhatTheRefusedVouchersLack) {
    std::set<std::string> refused;
    for (const std::string& line : runProgram({"allot", file_, "--year", "2024", "--json"}).lines()) {
        const Json result = Json::parse(line);
        if (result["outcome"] == "refused") {
            refused.insert(result["voucher"]);
        }
    }
    const Json found = Json::parse(statement({"--json"}).out);
    ASSERT_FALSE(found["vouchers"].empty());
    for (const Json& voucher : found["vouchers"]) {
        EXPECT_TRUE(refused.contains(voucher["voucher"])) << voucher;
    }
}

TEST_F(StatementCommandTest, AMonthAColumnAddsUpToTheYear) {
    const Json year = Json::parse(statement({"--json"}).out);
    const Json months = Json::parse(statement({"--json", "--by", "month"}).out);
    ASSERT_EQ(months["items"].size(), year["items"].size());
    for (std::size_t i = 0; i < months["items"].size(); ++i) {
        ASSERT_EQ(months["items"][i]["periods"].size(), 12U);
        std::int64_t sum = 0;
        for (const Json& period : months["items"][i]["periods"]) {
            sum += PlainTables::units(period["net"].get<double>());
        }
        EXPECT_EQ(sum, PlainTables::units(year["items"][i]["net"].get<double>()));
    }
}

TEST_F(StatementCommandTest, QuartersFollowEachOtherWithoutAGapInTheBalance) {
    double closing = 0;
    for (const char* periods : {"1-3", "4-6", "7-9", "10-12"}) {
        const Json quarter = Json::parse(statement({"--json", "--period", periods}).out);
        EXPECT_EQ(PlainTables::units(quarter["cash"]["opening"].get<double>()), PlainTables::units(closing)) << periods;
        closing = quarter["cash"]["closing"].get<double>();
    }
}

TEST_F(StatementCommandTest, AnOpeningBalanceMovesTheAccountAndNotTheProof) {
    const Json before = Json::parse(statement({"--json"}).out);
    const std::string account = before["accounts"][0]["code"];
    const Json after = Json::parse(statement({"--json", "--opening", account + "=1,000.25"}).out);
    EXPECT_EQ(PlainTables::units(after["accounts"][0]["opening"].get<double>()),
              PlainTables::units(before["accounts"][0]["opening"].get<double>()) + 10002500);
    EXPECT_EQ(after["difference"], before["difference"]);
}

TEST_F(StatementCommandTest, OpeningsThatCannotBeTakenAreUsageErrors) {
    for (const char* opening : {"1001", "=5", "1001=x", "1001=1.00001"}) {
        const RunResult run = statement({"--opening", opening});
        EXPECT_EQ(run.exitCode, 2) << opening;
        EXPECT_THAT(run.err, HasSubstr(opening));
    }
    const RunResult unknown = statement({"--opening", "6001=5"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_THAT(unknown.err, HasSubstr("6001"));
}

TEST_F(StatementCommandTest, TheTableEndsWithTheProofInBothLanguages) {
    EXPECT_THAT(statement({"--by-currency"}).out, HasSubstr("Net change of the cash accounts"));
    EXPECT_THAT(statement({"--by", "quarter", "--lang", "zh-CN"}).out, HasSubstr("现金科目净变动"));
}

TEST_F(StatementCommandTest, CsvIsOneTableWithALineForEachFigure) {
    const auto lines = statement({"--csv"}).lines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front(), "section,code,name,opening,receipts,payments,net,closing");
    const Json json = Json::parse(statement({"--json"}).out);
    EXPECT_EQ(lines.size(), 1 + json["items"].size() + 1 + json["accounts"].size() + 1 + json["vouchers"].size());
}

TEST_F(StatementCommandTest, AReportGoesToANewFileAndOverwritesNothing) {
    const std::string target = (folder_.path() / "year.csv").string();
    const RunResult run = statement({"--csv", "-o", target});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(statement({"--csv", "--output", target}).exitCode, 2);
    std::ifstream stream(target);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_EQ(text, statement({"--csv"}).out);
}

TEST_F(StatementCommandTest, EveryLinkOfThePageLeadsSomewhereAndTextsAreEscaped) {
    {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(file_));
        connection.Execute("update fitemss98 set citemname=N'<b>\"&' + citemname where citemcode like N'01%'");
    }
    const std::string target = (folder_.path() / "2024.html").string();
    EXPECT_EQ(statement({"--html", target}).exitCode, 1);
    std::ifstream stream(target);
    const std::string page{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_THAT(page, Not(HasSubstr("<b>")));
    EXPECT_THAT(page, HasSubstr("&lt;b&gt;&quot;&amp;"));
    EXPECT_THAT(page, Not(HasSubstr("http")));
    std::size_t links = 0;
    for (std::size_t place = page.find("href=\"#"); place != std::string::npos; place = page.find("href=\"#", place)) {
        place += 7;
        const std::string target = page.substr(place, page.find('"', place) - place);
        EXPECT_THAT(page, HasSubstr("id=\"" + target + "\""));
        ++links;
    }
    EXPECT_GT(links, 20U);
}

TEST(StatementOfTheHouseholdJournal, FiguresOfEachYearEqualThoseCountedRowByRow) {
    const std::filesystem::path data = std::filesystem::path(Z7_SOURCE_DIR) / "../shared/data/household";
    if (!std::filesystem::exists(data)) {
        GTEST_SKIP() << "the household journal is not there";
    }
    const EnvironmentGuard language("LC_ALL", "C");
    const EnvironmentGuard home("HOME", "/nonexistent");
    const ScratchFolder folder;
    const std::string file = (folder.path() / "house.db").string();
    ASSERT_EQ(runProgram({"init", file, "--from", data.string(), "--quiet"}).exitCode, 0);
    for (const char* year : {"2013", "2014"}) {
        (void)runProgram({"allot", file, "--year", year, "--quiet"});
        const RunResult run = runProgram({"statement", file, "--year", year, "--json"});
        const PlainTables tables(file, std::stoi(year));
        ASSERT_FALSE(tables.payments.empty());
        expectSame(Json::parse(run.out), tables);
        EXPECT_EQ(run.exitCode, tables.open.empty() ? 0 : 1);
    }
}

} // namespace
} // namespace z7::cashflow::host
