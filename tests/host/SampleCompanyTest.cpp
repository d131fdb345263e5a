#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"
#include "host/account/csvReader.h"
#include "host/account/tableFiles.h"
#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>

namespace z7::cashflow::host {
namespace {

using Record = std::map<std::string, std::string>; ///< a record by column name; null is the empty text
using Json = nlohmann::json;

std::vector<Record> recordsOf(std::istream& stream) {
    std::vector<std::string> names;
    std::vector<Record> records;
    readCsv(stream, [&](const CsvRecord& csv) {
        if (names.empty()) {
            for (const auto& name : csv.fields) {
                names.push_back(name.value());
            }
            return;
        }
        Record record;
        for (std::size_t i = 0; i < names.size(); ++i) {
            record[names[i]] = csv.fields.at(i).value_or("");
        }
        records.push_back(std::move(record));
    });
    return records;
}

/// The tables of a set of CSV files, by name.
std::map<std::string, std::vector<Record>> tablesOf(const std::vector<TableFile>& files) {
    std::map<std::string, std::vector<Record>> tables;
    for (const TableFile& file : files) {
        tables[file.table] = recordsOf(*file.open());
    }
    return tables;
}

std::string keyOf(const Record& line) {
    return line.at("iyear") + "/" + line.at("iperiod") + "/" + line.at("isignseq") + "/" + line.at("ino_id");
}

std::int64_t cents(const std::string& amount) { return amount.empty() ? 0 : std::llround(std::stod(amount) * 100); }

/// All stored rows as text, with or without their GUIDs.
std::vector<std::string> storedRows(const std::filesystem::path& database, bool withGuid) {
    sqlite::Connection connection;
    connection.Open(sqlite::connectionString(database));
    const auto rows =
        connection.Execute("select * from gl_cashtable order by iYear,iPeriod,iSignSeq,iNo_id,inid,cCashItem,md,mc");
    std::vector<std::string> texts;
    for (; !rows->atEnd(); rows->MoveNext()) {
        std::string text;
        for (int i = 0; i < rows->Fields().Count(); ++i) {
            if (withGuid || rows->Fields().Name(i) != "RowGuid") {
                text += (rows->Fields().Item(i).isNull() ? "(null)" : toText(rows->Fields().Item(i))) + "|";
            }
        }
        texts.push_back(text);
    }
    return texts;
}

std::map<std::string, Json> resultsByVoucher(const RunResult& run) {
    std::map<std::string, Json> results;
    for (const std::string& line : run.lines()) {
        const Json json = Json::parse(line);
        EXPECT_TRUE(results.emplace(json.at("voucher"), json).second) << "twice: " << line;
    }
    return results;
}

class SampleCompanyTest : public testing::Test {
protected:
    SampleCompanyTest() {
        const RunResult made = runProgram({"init", database.string(), "--sample"});
        EXPECT_EQ(made.exitCode, 0) << made.err;
    }

    [[nodiscard]] RunResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin() + 1, database.string());
        return runProgram(arguments);
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    test::ScratchFolder scratch;
    std::filesystem::path database = scratch.path() / "sample.db";
};

/// Each month has 5 receipts, 9 payments, 2 transfers between own accounts and 7 vouchers without cash. These are
/// all other vouchers of the year, with their outcome according to the accounting rules.
const std::map<std::string, std::pair<std::string, int>>& particularVouchers() {
    static const std::map<std::string, std::pair<std::string, int>> vouchers{
        {"2024/1/1/1", {"stored", 0}},        // capital paid in
        {"2024/2/1/1", {"stored", 0}},        // a loan taken up
        {"2024/3/2/10", {"stored", 0}},       // equipment bought
        {"2024/3/2/11", {"refused", 10009}},  // an advance on an account that has no template
        {"2024/4/1/6", {"stored", 0}},        // the item stands on the line: item class 98
        {"2024/4/2/10", {"refused", 10009}},  // an item on the line that is of another class
        {"2024/5/1/6", {"stored", 0}},        // a grant with budget lines that have no template
        {"2024/5/2/10", {"refused", 10009}},  // ccashitem_id alone does not serve a ledger voucher
        {"2024/5/2/11", {"stored", 0}},       // the same on an account with a template
        {"2024/6/2/10", {"stored", 0}},       // one line split over two rows, stored before
        {"2024/7/2/10", {"refused", 10008}},  // a stored row stands on the account that the line had before
        {"2024/7/2/11", {"refused", 10008}},  // a stored row of a line that is gone
        {"2024/7/2/12", {"refused", 10009}},  // a stored row of 400 for a line of 450
        {"2024/8/2/10", {"stored", 0}},       // the loan paid back with interest
        {"2024/8/2/11", {"stored", 0}},       // too much paid, taken back in red: negative on both sides
        {"2024/8/1/6", {"no-cash", 0}},       // the bank account is closed
        {"2024/1/3/8", {"no-cash", 0}},       // the same, on the credit side
        {"2024/9/1/6", {"nothing", 0}},       // booked on a bank account that is no end-level account
        {"2024/9/2/10", {"refused", 10009}},  // no template for this account and side
        {"2024/10/1/6", {"stored", 0}},       // equipment sold
        {"2024/10/1/7", {"stored", 0}},       // a receipt taken back in red: a negative debit of the bank
        {"2024/6/3/8", {"nothing", 0}},       // three cash lines that cancel out
        {"2024/10/3/8", {"nothing", 0}},      // two cash lines that cancel out, beside two others
        {"2024/11/1/6", {"refused", 10009}},  // the other account is closed, so its line does not count
        {"2024/11/2/10", {"refused", 10009}}, // a budget line with a template counts twice
        {"2024/11/2/11", {"stored", 0}},      // a red line beside a black one on the same account
        {"2024/12/1/6", {"refused", 94}},     // a cash line without a credit amount
        {"2024/12/2/10", {"stored", 0}},      // rows stored before that meet the voucher
    };
    return vouchers;
}

TEST(SampleData, EveryVoucherBalancesToTheCent) {
    const auto tables = tablesOf(tableFilesOfSample());
    std::map<std::string, std::int64_t> balance;
    for (const Record& line : tables.at("gl_accvouch")) {
        balance[keyOf(line)] += cents(line.at("md")) - cents(line.at("mc"));
    }
    EXPECT_EQ(balance.size(), 304U);
    for (const auto& [voucher, difference] : balance) {
        EXPECT_EQ(difference, 0) << voucher;
    }
}

TEST(SampleData, HangsTogether) {
    const auto tables = tablesOf(tableFilesOfSample());
    std::set<std::string> accounts;
    std::set<std::string> items;
    for (const Record& account : tables.at("code")) {
        accounts.insert(account.at("ccode"));
    }
    for (const Record& item : tables.at("fitemss98")) {
        items.insert(item.at("citemcode"));
    }
    bool chinese = false;
    bool english = false;
    bool foreign = false;
    bool quantity = false;
    bool outside = false;
    for (const Record& line : tables.at("gl_accvouch")) {
        EXPECT_TRUE(accounts.contains(line.at("ccode"))) << keyOf(line);
        EXPECT_EQ(line.at("dbill_date").substr(0, 5), "2024-");
        EXPECT_EQ(std::stoi(line.at("dbill_date").substr(5, 2)), std::stoi(line.at("iperiod"))) << keyOf(line);
        const std::string& summary = line.at("cdigest");
        const bool ascii =
            std::all_of(summary.begin(), summary.end(), [](char c) { return static_cast<signed char>(c) > 0; });
        (ascii ? english : chinese) = true;
        foreign = foreign || line.at("cexch_name") == "USD";
        quantity = quantity || cents(line.at("nd_s")) != 0;
        outside = outside || !line.at("coutno_id").empty();
    }
    EXPECT_TRUE(chinese && english && foreign && quantity && outside);
    for (const Record& row : tables.at("gl_cashtable")) {
        EXPECT_TRUE(items.contains(row.at("cCashItem")));
    }
    for (const Record& row : tables.at("GL_CashItemDataSource")) {
        EXPECT_TRUE(items.contains(row.at("cItemCode")));
        EXPECT_TRUE(accounts.contains(row.at("cDataSource")));
    }
}

TEST_F(SampleCompanyTest, EveryVoucherComesToTheOutcomeThatItsLinesGive) {
    const auto tables = tablesOf(tableFilesOfSample());
    std::set<std::string> cashAccounts;
    for (const Record& account : tables.at("code")) {
        if (account.at("bCashItem") == "1") {
            cashAccounts.insert(account.at("ccode"));
        }
    }
    std::map<std::string, std::vector<Record>> vouchers;
    for (const Record& line : tables.at("gl_accvouch")) {
        vouchers[keyOf(line)].push_back(line);
    }
    const RunResult allotted = run({"allot", "--year", "2024", "--json"});
    EXPECT_EQ(allotted.exitCode, 1) << "some are refused";
    const auto results = resultsByVoucher(allotted);
    ASSERT_EQ(results.size(), vouchers.size());
    std::map<std::string, int> counts;
    int rows = 0;
    for (const auto& [voucher, lines] : vouchers) {
        const Json& result = results.at(voucher);
        const std::string outcome = result.at("outcome");
        ++counts[outcome];
        rows += result.at("rows").get<int>();
        const auto particular = particularVouchers().find(voucher);
        if (particular != particularVouchers().end()) {
            EXPECT_EQ(outcome, particular->second.first) << voucher << ": " << result;
            EXPECT_EQ(result.contains("error") ? result["error"]["number"].get<int>() : 0, particular->second.second)
                << voucher;
            continue;
        }
        const auto others = std::count_if(lines.begin(), lines.end(),
                                          [&](const Record& line) { return !cashAccounts.contains(line.at("ccode")); });
        const auto cash = static_cast<std::ptrdiff_t>(lines.size()) - others;
        EXPECT_EQ(outcome, cash == 0 ? "no-cash" : others == 0 ? "nothing" : "stored") << voucher << ": " << result;
        EXPECT_EQ(result.at("rows"), cash == 0 || others == 0 ? 0 : others) << voucher;
        EXPECT_FALSE(result.contains("error")) << voucher;
    }
    // Twelve months of 14 vouchers with cash, 2 transfers and 7 without cash, and the particular ones.
    EXPECT_EQ(counts["stored"], 12 * 14 + 13);
    EXPECT_EQ(counts["nothing"], 12 * 2 + 3);
    EXPECT_EQ(counts["no-cash"], 12 * 7 + 2);
    EXPECT_EQ(counts["refused"], 10);
    // A month's receipts give 2+1+2+1+1 rows and its payments 1+2+1+1+1+1+1+1+2; the particular ones give 12,
    // and the three with red lines 1, 1 and 2.
    EXPECT_EQ(rows, 12 * (7 + 11) + 12 + 4);
}

/// The lines of a run without the details of single rows.
std::vector<Json> resultsOf(const RunResult& run) {
    std::vector<Json> results;
    for (const std::string& line : run.lines()) {
        results.push_back(Json::parse(line));
        for (const char* member : {"kept", "new", "changed", "removed", "changes"}) {
            results.back().erase(member);
        }
    }
    return results;
}

TEST_F(SampleCompanyTest, ASecondAllotmentLeavesEveryRowUntouched) {
    const RunResult first = run({"allot", "--year", "2024", "--json"});
    const auto rows = storedRows(database, false);
    const auto guids = storedRows(database, true);
    const RunResult second = run({"allot", "--year", "2024", "--json"});
    EXPECT_EQ(resultsOf(second), resultsOf(first));
    EXPECT_EQ(second.out.find("\"new\""), std::string::npos);
    EXPECT_EQ(storedRows(database, false), rows);
    EXPECT_EQ(storedRows(database, true), guids) << "the identities too";
    // Existing rows of refused vouchers are kept: their 4 rows besides the 232 stored ones.
    EXPECT_EQ(rows.size(), 232U + 4U);
}

TEST_F(SampleCompanyTest, ADryRunReportsTheSameAndChangesNothing) {
    const auto before = storedRows(database, true);
    const RunResult tried = run({"allot", "--year", "2024", "--dry-run", "--json"});
    EXPECT_EQ(storedRows(database, true), before);
    const RunResult real = run({"allot", "--year", "2024", "--json"});
    EXPECT_EQ(resultsOf(tried), resultsOf(real));
    EXPECT_EQ(tried.exitCode, real.exitCode);
}

TEST_F(SampleCompanyTest, APeriodAloneIsAllotted) {
    const auto results = resultsByVoucher(run({"allot", "--year", "2024", "--period", "3", "--json"}));
    EXPECT_EQ(results.size(), 25U);
    for (const auto& [voucher, result] : results) {
        EXPECT_EQ(voucher.rfind("2024/3/", 0), 0U) << voucher;
    }
}

TEST_F(SampleCompanyTest, StoredRowsMatchTheirVouchersAfterwards) {
    const auto results = resultsByVoucher(run({"allot", "--year", "2024", "--json"}));
    int looked = 0;
    for (const auto& [voucher, state] : resultsByVoucher(run({"vouchers", "--year", "2024", "--json"}))) {
        const Json& result = results.at(voucher);
        const std::string outcome = result.at("outcome");
        if (outcome == "stored") {
            EXPECT_EQ(state.at("matched"), true) << voucher;
            EXPECT_EQ(state.at("stored"), result.at("rows")) << voucher;
            EXPECT_EQ(state.at("needed"), true) << voucher;
            ++looked;
        } else if (outcome != "refused") {
            EXPECT_EQ(state.at("stored"), 0) << voucher;
            EXPECT_TRUE(state.at("matched").is_null()) << voucher;
            EXPECT_EQ(state.at("needed"), false) << voucher;
        } else {
            EXPECT_NE(state.at("matched"), true) << voucher;
        }
    }
    EXPECT_EQ(looked, 181);
}

// A red line reduces the amount on its own side; it is not posted to the other side.
TEST_F(SampleCompanyTest, RedLinesGiveNegativeRowsOnTheirOwnSide) {
    ASSERT_EQ(run({"allot", "--year", "2024", "--period", "8-11", "--quiet"}).exitCode, 1);
    using Row = std::tuple<std::string, std::string, double, double>; // account, item, debit, credit
    const std::map<std::string, std::vector<Row>> expected{
        {"2024/8/2/11", {{"2202", "0111", -300.0, 0.0}}},
        {"2024/10/1/7", {{"1122", "0101", 0.0, -500.0}}},
        {"2024/11/2/11", {{"2211", "0112", 400.0, 0.0}, {"2211", "0112", -100.0, 0.0}}},
    };
    for (const auto& [voucher, rows] : expected) {
        const Json stored = Json::parse(run({"rows", voucher, "--json"}).out).at("rows");
        std::vector<Row> found;
        for (const Json& row : stored) {
            found.emplace_back(row.at("ccode"), row.at("cCashItem"), row.at("md"), row.at("mc"));
        }
        EXPECT_EQ(found, rows) << voucher;
    }
}

TEST_F(SampleCompanyTest, TheAccountingSystemOfTheSettingsKeepsBudgetLinesOut) {
    EXPECT_EQ(run({"save", "2024/11/2/10"}).exitCode, 1);
    const auto settings = scratch.write("gov.toml", "accounting_system = \"政府会计制度\"\n");
    const RunResult saved = run({"save", "2024/11/2/10", "--settings", settings.string(), "--json"});
    EXPECT_EQ(saved.exitCode, 0) << saved.err;
    EXPECT_EQ(
        saved.out,
        "{\"form\":1,\"voucher\":\"2024/11/2/10\",\"sign\":\"付\",\"outcome\":\"stored\",\"rows\":1,\"new\":1}\n");
}

TEST_F(SampleCompanyTest, CarriesTheCurrencyIntoTheRows) {
    ASSERT_EQ(run({"allot", "--year", "2024", "--period", "1", "--quiet"}).exitCode, 0);
    sqlite::Connection connection;
    connection.Open(sqlite::connectionString(database));
    const auto rows = connection.Execute("select cexch_name,mc_f from gl_cashtable where iYear=2024 and iPeriod=1 and "
                                         "iSignSeq=1 and iNo_id=4 and ccode=N'1122'");
    ASSERT_FALSE(rows->atEnd());
    EXPECT_EQ(rows->Fields().Item("cexch_name"), Variant("USD"));
    EXPECT_GT(toDouble(rows->Fields().Item("mc_f")), 0.0);
}

TEST(SampleCompanyOptions, WithCashCodeTheRowsStandOnCashLines) {
    const test::ScratchFolder scratch;
    const std::string file = (scratch.path() / "cash.db").string();
    ASSERT_EQ(runProgram({"init", file, "--sample", "--set", "bCashCode=true", "--quiet"}).exitCode, 0);
    const RunResult rows = runProgram({"rows", file, "2024/1/1/2", "--generate", "--json", "--quiet"});
    ASSERT_EQ(rows.exitCode, 0) << rows.err;
    const Json json = Json::parse(rows.out).at("rows");
    ASSERT_EQ(json.size(), 1U);
    EXPECT_EQ(json[0].at("ccode"), "1001");
    EXPECT_EQ(json[0].at("cCashItem"), "0101");
}

/// A real journal outside the project, if it exists.
class HouseholdTest : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::is_directory(folder)) {
            GTEST_SKIP() << "the journal is not there: " << folder;
        }
        const RunResult made = runProgram({"init", database.string(), "--from", folder.string()});
        ASSERT_EQ(made.exitCode, 0) << made.err;
    }

    std::filesystem::path folder = std::filesystem::path(Z7_SOURCE_DIR).parent_path() / "shared" / "data" / "household";
    test::ScratchFolder scratch;
    std::filesystem::path database = scratch.path() / "household.db";
};

TEST_F(HouseholdTest, EveryVoucherIsAccountedForAndASecondRunChangesNothing) {
    const auto tables = tablesOf(tableFilesOfFolder(folder));
    std::set<std::string> cashAccounts; // year and code
    std::set<std::string> templates;    // year, code and side
    for (const Record& account : tables.at("code")) {
        if (account.at("bCashItem") == "1") {
            cashAccounts.insert(account.at("iyear") + " " + account.at("ccode"));
        }
    }
    for (const Record& row : tables.at("GL_CashItemDataSource")) {
        templates.insert(row.at("iyear") + " " + row.at("cDataSource") + " " + row.at("bdir"));
    }
    struct Expected {
        std::int64_t cashSum = 0;
        std::int64_t withoutTemplate = 0;
        int cashLines = 0;
        int rows = 0;
    };
    std::map<std::string, Expected> vouchers;
    for (const Record& line : tables.at("gl_accvouch")) {
        Expected& voucher = vouchers[keyOf(line)];
        const std::string account = line.at("iyear") + " " + line.at("ccode");
        const std::int64_t amount = cents(line.at("md")) - cents(line.at("mc"));
        if (cashAccounts.contains(account)) {
            ++voucher.cashLines;
            voucher.cashSum += amount;
        } else if (templates.contains(account + (cents(line.at("md")) != 0 ? " 1" : " 0"))) {
            ++voucher.rows;
        } else {
            voucher.withoutTemplate += amount;
        }
    }
    ASSERT_EQ(vouchers.size(), 1140U);
    std::map<std::string, Json> results;
    for (const char* year : {"2013", "2014", "2015"}) {
        const RunResult run = runProgram({"allot", database.string(), "--year", year, "--json"});
        EXPECT_LE(run.exitCode, 1) << run.err;
        results.merge(resultsByVoucher(run));
    }
    ASSERT_EQ(results.size(), vouchers.size());
    for (const auto& [voucher, expected] : vouchers) {
        const std::string outcome = expected.cashLines == 0         ? "no-cash"
                                    : expected.cashSum == 0         ? "nothing"
                                    : expected.withoutTemplate == 0 ? "stored"
                                                                    : "refused";
        const Json& result = results.at(voucher);
        EXPECT_EQ(result.at("outcome"), outcome) << voucher << " " << result;
        EXPECT_EQ(result.at("rows"), outcome == "stored" ? expected.rows : 0) << voucher;
        if (outcome == "refused") {
            EXPECT_EQ(result["error"]["number"], 10009) << voucher;
        }
    }
    const auto rows = storedRows(database, false);
    EXPECT_FALSE(rows.empty());
    for (const char* year : {"2013", "2014", "2015"}) {
        static_cast<void>(runProgram({"allot", database.string(), "--year", year, "--quiet"}));
    }
    EXPECT_EQ(storedRows(database, false), rows);
}

} // namespace
} // namespace z7::cashflow::host
