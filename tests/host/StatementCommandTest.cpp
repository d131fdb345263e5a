#include "EnvironmentGuard.h"
#include "PlainTables.h"
#include "RunProgram.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <map>
#include <set>

namespace z7::cashflow::host {
namespace {

using Json = nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;

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
    test::ScratchFolder folder_;
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

TEST_F(StatementCommandTest, GroupsFollowTheSettingsAndItsNames) {
    std::ofstream(folder_.path() / "groups.toml") << "[statement_groups]\n010 = \"Operating\"\n0111 = \"Suppliers\"\n";
    const std::string settings = (folder_.path() / "groups.toml").string();
    const Json grouped = Json::parse(statement({"--json", "--settings", settings}).out);
    const Json plain = Json::parse(statement({"--json"}).out);
    std::map<std::string, std::int64_t> expected;
    for (const Json& item : plain["items"]) {
        const std::string code = item["code"];
        const std::string group = code.starts_with("0111")  ? "0111"
                                  : code.starts_with("010") ? "010"
                                                            : code.substr(0, 2);
        expected[group] += PlainTables::units(item["net"].get<double>());
    }
    ASSERT_GE(expected.size(), 3U);
    std::map<std::string, std::int64_t> nets;
    std::map<std::string, std::string> names;
    for (const Json& group : grouped["groups"]) {
        nets[group["code"]] = PlainTables::units(group["net"].get<double>());
        names[group["code"]] = group["name"];
    }
    EXPECT_EQ(nets, expected);
    EXPECT_EQ(names["010"], "Operating");
    EXPECT_EQ(names["0111"], "Suppliers");
    EXPECT_EQ(grouped["items"], plain["items"]);
    EXPECT_THAT(statement({"--settings", settings}).out, HasSubstr("010     Operating"));
}

TEST_F(StatementCommandTest, EveryFigureOfThePageThatVouchersMakeUpIsALink) {
    const std::string target = (folder_.path() / "months.html").string();
    EXPECT_EQ(statement({"--html", target, "--by", "month"}).exitCode, 1);
    std::ifstream stream(target);
    const std::string page{std::istreambuf_iterator<char>(stream), {}};
    const std::string figures = page.substr(page.find("<table>"), page.find("</table>") - page.find("<table>"));
    std::size_t cells = 0;
    for (std::size_t place = figures.find("<td class=\"n\">"); place != std::string::npos;
         place = figures.find("<td class=\"n\">", place)) {
        place += 14;
        const bool nothing = figures.compare(place, 9, "0.00</td>") == 0;
        EXPECT_TRUE(nothing || figures.compare(place, 10, "<a href=\"#") == 0) << figures.substr(place, 60);
        ++cells;
    }
    EXPECT_GT(cells, 100U);
}

TEST(StatementOfTheHouseholdJournal, FiguresOfEachYearEqualThoseCountedRowByRow) {
    const std::filesystem::path data = std::filesystem::path(Z7_SOURCE_DIR) / "../shared/data/household";
    if (!std::filesystem::exists(data)) {
        GTEST_SKIP() << "the household journal is not there";
    }
    const EnvironmentGuard language("LC_ALL", "C");
    const EnvironmentGuard home("HOME", "/nonexistent");
    const test::ScratchFolder folder;
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
