// Open vouchers, and the lists that vouchers refer to.

#include "EnvironmentGuard.h"
#include "PlainTables.h"
#include "RunProgram.h"
#include "doubles/ScratchFolder.h"
#include "workbench/vouchers/openLineColumns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <iterator>
#include <map>
#include <set>

namespace z7::cashflow::host {
namespace {

using Json = nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

std::vector<Json> recordsOf(const RunResult& run) {
    std::vector<Json> records;
    for (const std::string& line : run.lines()) {
        records.push_back(Json::parse(line));
    }
    return records;
}

/// The open vouchers of a year must agree with the plain tables: the same vouchers with the same differences, and
/// otherwise only vouchers whose rows add up but that have another fault.
void expectSameAsTables(const RunResult& open, const PlainTables& tables) {
    std::map<std::string, std::int64_t> differences;
    for (const Json& voucher : recordsOf(open)) {
        const std::int64_t difference = PlainTables::units(voucher["difference"].get<double>());
        EXPECT_EQ(difference, PlainTables::units(voucher["cash"].get<double>()) -
                                  PlainTables::units(voucher["rows"].get<double>()));
        EXPECT_FALSE(voucher["error"].empty()) << voucher;
        if (difference != 0) {
            differences[voucher["voucher"]] = difference;
        }
    }
    EXPECT_EQ(differences, tables.open);
}

class OpenCommandTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(runProgram({"init", file, "--sample", "--quiet"}).exitCode, 0); }
    void allot() const { ASSERT_EQ(run({"allot", "--year", "2024", "--quiet"}).exitCode, 1); }
    [[nodiscard]] RunResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin() + 1, file);
        return runProgram(arguments);
    }
    [[nodiscard]] RunResult open(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments{"vouchers", "--year", "2024", "--open"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }
    void sql(const std::string& statement) const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(file, 2024));
        connection.Execute(statement);
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    test::ScratchFolder folder;
    std::string file = (folder.path() / "company.db").string();
};

TEST_F(OpenCommandTest, NamesTheVouchersInWhichTheStatementDiffers) {
    expectSameAsTables(open({"--json"}), PlainTables(file, 2024));
    allot();
    const PlainTables tables(file, 2024);
    ASSERT_FALSE(tables.open.empty());
    const RunResult listed = open({"--json"});
    EXPECT_EQ(listed.exitCode, 1);
    expectSameAsTables(listed, tables);
    std::map<std::string, double> differences;
    for (const Json& voucher : recordsOf(listed)) {
        if (voucher["difference"] != 0.0) {
            differences[voucher["voucher"]] = voucher["difference"];
        }
    }
    std::map<std::string, double> ofStatement;
    const Json statement = Json::parse(run({"statement", "--year", "2024", "--json"}).out);
    for (const Json& voucher : statement["vouchers"]) {
        ofStatement[voucher["voucher"]] = voucher["difference"];
    }
    EXPECT_EQ(differences, ofStatement);
}

TEST_F(OpenCommandTest, NamesExactlyTheVouchersThatAllotRefuses) {
    std::map<std::string, int> refused;
    for (const Json& result : recordsOf(run({"allot", "--year", "2024", "--json"}))) {
        if (result["outcome"] == "refused") {
            refused[result["voucher"]] = result["error"]["number"];
        }
    }
    std::map<std::string, int> listed;
    for (const Json& voucher : recordsOf(open({"--json"}))) {
        listed[voucher["voucher"]] = voucher["error"]["number"];
    }
    EXPECT_EQ(listed, refused);
}

TEST_F(OpenCommandTest, RowsOfAVoucherThatTheLedgerLostAreOpen) {
    allot();
    sql("delete from gl_accvouch where iyear=2024 and iperiod=1 and isignseq=1 and ino_id=1");
    expectSameAsTables(open({"--json"}), PlainTables(file, 2024));
    EXPECT_THAT(open({}).out, HasSubstr("2024/1/收/1 "));
}

TEST_F(OpenCommandTest, ThePeriodsAreThoseAskedFor) {
    allot();
    for (const Json& voucher : recordsOf(open({"--json", "--period", "7-9"}))) {
        const std::string key = voucher["voucher"];
        EXPECT_TRUE(key.starts_with("2024/7/") || key.starts_with("2024/9/")) << key;
    }
    EXPECT_EQ(open({"--period", "1"}).exitCode, 0);
    EXPECT_EQ(open({"--period", "1"}).out, "No vouchers are open.\n");
    EXPECT_EQ(open({"--period", "1", "--group", "--lang", "zh-CN"}).out, "没有待处理的凭证。\n");
    EXPECT_EQ(open({"--period", "1", "--lines"}).out, "No vouchers are open.\n");
    EXPECT_EQ(open({"--period", "1", "--json"}).out, "");
}

TEST_F(OpenCommandTest, SaysReasonRemedyAndTotal) {
    allot();
    const std::string table = open({}).out;
    EXPECT_THAT(table, HasSubstr("2024/4/付/10"));
    EXPECT_THAT(table, HasSubstr("Line 1: 2241 debit 3,300.00 has no template: add one"));
    EXPECT_THAT(table, HasSubstr("Line 4: 8301 credit 20,000.00 has no template"))
        << "a voucher without stored rows is explained by the rows that it would get";
    EXPECT_THAT(table, HasSubstr("Open vouchers: 10; their differences add up to -20,094.00."));
    EXPECT_THAT(open({"--lang", "zh-CN"}).out, HasSubstr("待处理凭证 10 张，差额合计 -20,094.00。"));
}

TEST_F(OpenCommandTest, GroupsAddUpTheLinesOfTheRefusals) {
    allot();
    struct Sum {
        std::set<std::string> vouchers;
        std::int64_t amount = 0;
        bool operator==(const Sum&) const = default;
    };
    std::map<std::string, Sum> expected;
    for (const Json& voucher : recordsOf(open({"--json"}))) {
        for (const Json& finding : voucher["error"]["findings"]) {
            if (finding["kind"] == "no-template") {
                Sum& sum = expected[finding["account"].get<std::string>() + " " + finding["side"].get<std::string>()];
                sum.vouchers.insert(voucher["voucher"]);
                sum.amount += PlainTables::units(finding["amount"].get<double>());
            }
        }
    }
    ASSERT_EQ(expected.at("2241 debit").vouchers.size(), 3U);
    std::size_t groups = 0;
    for (const Json& group : recordsOf(open({"--group", "--json"}))) {
        if (group["kind"] == "no-template") {
            const Sum& sum = expected.at(group["account"].get<std::string>() + " " + group["side"].get<std::string>());
            EXPECT_EQ(group["vouchers"], sum.vouchers.size());
            EXPECT_EQ(PlainTables::units(group["amount"].get<double>()), sum.amount);
            EXPECT_TRUE(sum.vouchers.contains(group["first"]));
            ++groups;
        }
    }
    EXPECT_EQ(groups, expected.size());
    EXPECT_THAT(open({"--group", "--csv"}).lines(), testing::Contains("2241,Debit,no template,3,5064.00,2024/4/付/10"));
}

TEST_F(OpenCommandTest, AllotEndsWithTheSameSummary) {
    allot();
    const std::string allotted = run({"allot", "--year", "2024", "--quiet"}).out;
    EXPECT_THAT(allotted, HasSubstr("What is open:\n" + open({"--group"}).out));
}

TEST_F(OpenCommandTest, OpenLinesHaveTheColumnsThatAreReadBack) {
    allot();
    const auto lines = open({"--lines", "--csv"}).lines();
    ASSERT_FALSE(lines.empty());
    std::string heading;
    for (const std::string_view column : workbench::openLineColumns::all) {
        heading += (heading.empty() ? "" : ",") + std::string(column);
    }
    EXPECT_EQ(lines.front(), heading);
    EXPECT_EQ(heading, "voucher,line,account,side,amount,summary,item");
    EXPECT_THAT(lines, testing::Contains(StartsWith("2024/4/付/10,1,2241,debit,3300.00,")));
    EXPECT_THAT(lines, testing::Contains(StartsWith("2024/7/付/12,1,6601,debit,50.00,")))
        << "a line of which a part is allocated is open for the rest";
    EXPECT_EQ(lines.size(), 1 + recordsOf(open({"--lines", "--json"})).size());
    EXPECT_THAT(open({"--lines", "--lang", "zh-CN"}).out, HasSubstr("建议项目"));
}

TEST_F(OpenCommandTest, BeforeAnyRowIsStoredEachLineIsProposedTheItemThatItWouldGet) {
    std::map<std::string, std::string> proposed;
    for (const Json& line : recordsOf(open({"--lines", "--json", "--period", "1"}))) {
        proposed[line["voucher"].get<std::string>() + " " + std::to_string(line["line"].get<int>())] = line["item"];
    }
    ASSERT_GT(proposed.size(), 10U);
    ASSERT_EQ(run({"allot", "--year", "2024", "--period", "1", "--quiet"}).exitCode, 0);
    sqlite::Connection connection;
    connection.Open(sqlite::connectionString(file, 2024));
    const auto rows = connection.Execute("select iSignSeq,iNo_id,inid,cCashItem from gl_cashtable where iPeriod=1");
    std::map<std::string, std::string> stored;
    for (; !rows->atEnd(); rows->MoveNext()) {
        const auto text = [&](const char* column) { return toText(rows->Fields().Item(column)); };
        stored["2024/1/" + text("iSignSeq") + "/" + text("iNo_id") + " " + text("inid")] = text("cCashItem");
    }
    EXPECT_EQ(proposed, stored);
}

TEST_F(OpenCommandTest, ALineWithoutATemplateIsProposedTheItemThatItsAccountHasMostOften) {
    allot();
    const auto insert = [this](int number, const char* item) {
        sql("insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode) values(N'" +
            std::to_string(number) + "',2024,6,2,N'x'," + std::to_string(number) + ",1,N'" + item + "',5,0,N'2241')");
    };
    insert(901, "0114");
    insert(902, "0112");
    insert(903, "0112");
    insert(904, "9999"); // no item, and so no model
    insert(905, "9999");
    insert(906, "9999");
    for (const Json& line : recordsOf(open({"--lines", "--json", "--period", "4"}))) {
        EXPECT_EQ(line["account"], "2241");
        EXPECT_EQ(line["item"], "0112");
        EXPECT_FALSE(line["itemName"].get<std::string>().empty());
    }
}

TEST_F(OpenCommandTest, GroupAndLinesGoWithOpenAlone) {
    EXPECT_EQ(run({"vouchers", "--year", "2024", "--lines"}).exitCode, 2);
    EXPECT_THAT(run({"vouchers", "--year", "2024", "--group"}).err, HasSubstr("--group can only be used with --open"));
    EXPECT_THAT(open({"--group", "--lines"}).err, HasSubstr("cannot be used together"));
}

TEST_F(OpenCommandTest, AKeyTakesTheSignOfItsKind) {
    for (const char* command : {"rows", "check", "voucher"}) {
        const RunResult bySign = run({command, "2024/6/付/10"});
        const RunResult byNumber = run({command, "2024/6/2/10"});
        EXPECT_EQ(bySign.exitCode, 0) << bySign.err;
        EXPECT_EQ(bySign.out, byNumber.out) << command;
    }
    EXPECT_EQ(run({"save", "2024/6/付/10"}).exitCode, 0);
    const RunResult unknown = run({"rows", "2024/6/票/10"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.err, "z7cf: No voucher kind has the sign \"票\"; the signs are 收 (1), 付 (2), 转 (3)\n");
    EXPECT_THAT(run({"rows", "2024/6/票/10", "--lang", "zh-CN"}).err, HasSubstr("没有类别字为“票”的凭证类别"));
}

TEST_F(OpenCommandTest, AnAmbiguousSignIsRefusedAndTheListsShowNumbers) {
    sql("update dsign set csign=N'付' where isignseq=3");
    const RunResult ambiguous = run({"rows", "2024/6/付/10"});
    EXPECT_EQ(ambiguous.exitCode, 2);
    EXPECT_THAT(ambiguous.err, HasSubstr("belongs to several voucher kinds (2, 3)"));
    EXPECT_THAT(open({}).out, HasSubstr("2024/4/2/10"));
    EXPECT_THAT(open({}).out, HasSubstr("2024/11/收/6"));
}

TEST_F(OpenCommandTest, EveryListComesAsTableCsvAndJsonAndGoesToANewFile) {
    const std::vector<std::vector<std::string>> commands{
        {"items"},
        {"accounts", "--year", "2024"},
        {"templates", "--year", "2024"},
        {"kinds"},
        {"vouchers", "--year", "2024", "--period", "2"},
        {"vouchers", "--year", "2024", "--period", "4", "--open"},
        {"vouchers", "--year", "2024", "--period", "4", "--open", "--group"},
        {"vouchers", "--year", "2024", "--period", "4", "--open", "--lines"}};
    int number = 0;
    for (const auto& command : commands) {
        const auto with = [&](std::initializer_list<std::string> more) {
            std::vector<std::string> arguments = command;
            arguments.insert(arguments.end(), more);
            return run(arguments);
        };
        const std::size_t records = recordsOf(with({"--json"})).size();
        ASSERT_GT(records, 1U) << command.front();
        const std::size_t total = command.back() == "--group" ? 1 : 0;
        EXPECT_EQ(with({"--csv"}).lines().size(), records + 1 + total) << command.front();
        EXPECT_GE(with({}).lines().size(), records + 2) << command.front();
        EXPECT_NE(with({}).out, with({"--lang", "zh-CN"}).out);
        const std::string target = (folder.path() / ("list" + std::to_string(++number))).string();
        EXPECT_EQ(with({"--csv", "-o", target}).out, "");
        EXPECT_EQ(with({"--csv", "-o", target}).exitCode, 2) << "nothing is overwritten";
        std::ifstream stream(target);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), with({"--csv"}).out);
    }
}

TEST_F(OpenCommandTest, AVoucherIsShownWithItsRowsBesideItsLines) {
    const Json voucher = Json::parse(run({"voucher", "2024/6/2/10", "--json"}).out);
    EXPECT_EQ(voucher["sign"], "付");
    ASSERT_EQ(voucher["lines"].size(), 2U);
    EXPECT_EQ(voucher["lines"][0]["rows"].size(), 2U);
    EXPECT_EQ(voucher["lines"][0]["cash"], false);
    EXPECT_EQ(voucher["lines"][1]["cash"], true);
    EXPECT_EQ(voucher["lines"][1]["credit"], 1000.0);
    EXPECT_EQ(voucher["otherRows"].size(), 0U);
    const auto lines = run({"voucher", "2024/6/2/10", "--csv"}).lines();
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_THAT(lines[1], StartsWith("1,6602,"));
    EXPECT_THAT(lines[2], StartsWith(",,,,,,,0114,"));
    EXPECT_THAT(lines[4], HasSubstr("Total,,,1000.00,1000.00"));
    EXPECT_THAT(run({"voucher", "2024/6/2/10", "--lang", "zh-CN"}).out, HasSubstr("凭证 2024/6/付/10，2024-06-25"));
}

TEST_F(OpenCommandTest, ARowWithoutALineFollowsTheLines) {
    const Json voucher = Json::parse(run({"voucher", "2024/7/2/11", "--json"}).out);
    ASSERT_EQ(voucher["otherRows"].size(), 1U);
    EXPECT_EQ(voucher["otherRows"][0]["line"], 3);
    EXPECT_EQ(voucher["error"]["number"], 10008);
    EXPECT_THAT(run({"voucher", "2024/7/2/11"}).out, HasSubstr("A row belongs to line 3"));
}

TEST_F(OpenCommandTest, RowsSayWhereTheirItemsComeFrom) {
    EXPECT_THAT(run({"rows", "2024/7/2/2", "--generate", "--why"}).out,
                HasSubstr("template of 1405 debit, from 2024-01-01"));
    EXPECT_THAT(run({"rows", "2024/6/2/10", "--why"}).out, HasSubstr("stored earlier"));
    EXPECT_THAT(run({"rows", "2024/6/2/10", "--why", "--lang", "zh-CN"}).out, HasSubstr("已保存的行"));
    const Json rows = Json::parse(run({"rows", "2024/7/2/2", "--generate", "--why", "--json"}).out).at("rows");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]["itemSource"]["from"], "template");
    EXPECT_EQ(rows[0]["itemSource"]["account"], "1405");
    EXPECT_EQ(rows[0]["itemSource"]["side"], "debit");
    EXPECT_EQ(rows[0]["itemSource"]["since"], "2024-01-01");
    EXPECT_FALSE(
        Json::parse(run({"rows", "2024/7/2/2", "--generate", "--json"}).out)["rows"][0].contains("itemSource"));
    sql("update gl_accvouch set citem_class=N'98',citem_id=N'0112' where iperiod=7 and isignseq=2 and ino_id=2 and inid=1");
    EXPECT_EQ(
        Json::parse(run({"rows", "2024/7/2/2", "--generate", "--why", "--json"}).out)["rows"][0]["itemSource"]["from"],
        "auxiliary-item");
}

TEST(OpenVouchersOfTheHouseholdJournal, AreThoseInWhichTheStatementDiffers) {
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
        const PlainTables tables(file, std::stoi(year));
        const RunResult open = runProgram({"vouchers", file, "--year", year, "--open", "--json"});
        expectSameAsTables(open, tables);
        EXPECT_EQ(open.lines().size(), tables.open.size());
    }
}

} // namespace
} // namespace z7::cashflow::host
