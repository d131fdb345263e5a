// Items assigned by hand, as the program reports it.

#include "RunProgram.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"
#include "workbench/changes/RowImage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {
namespace {

using Json = nlohmann::json;
using testing::HasSubstr;
using testing::Not;

/// The sample company before any allocation. Voucher 2024/7/2/12 has no template for its line 1.
class AssignCommandTest : public testing::Test {
protected:
    AssignCommandTest() { EXPECT_EQ(runProgram({"init", database.string(), "--sample"}).exitCode, 0); }

    RunResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin() + 1, database.string());
        return runProgram(arguments);
    }
    [[nodiscard]] std::string sheet(const std::string& text) const { return scratch.write("open.csv", text).string(); }
    [[nodiscard]] std::vector<workbench::RowImage> allRows() const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(database, 2024));
        return workbench::readRowImages(connection, "select " + workbench::rowColumnList() + " from gl_cashtable");
    }
    /// The stored rows of a voucher: "2 0101 100.00" for each.
    [[nodiscard]] std::vector<std::string> rows(const std::string& key) const {
        std::vector<std::string> texts;
        const Json record = Json::parse(run({"rows", key, "--json"}).out);
        for (const Json& row : record.at("rows")) {
            const double amount = row["md"].get<double>() + row["mc"].get<double>();
            texts.push_back(row["inid"].dump() + " " + row["cCashItem"].get<std::string>() + " " + Json(amount).dump());
        }
        return texts;
    }

    test::ScratchFolder scratch;
    std::filesystem::path database = scratch.path() / "company.db";
    const std::string key = "2024/7/1/2"; ///< 149,542.95 on line 2
};

TEST_F(AssignCommandTest, ALineIsPutOnAnItemByCodeOrName) {
    const RunResult assigned = run({"assign", key, "2", "0103"});
    EXPECT_EQ(assigned.exitCode, 0) << assigned.err;
    EXPECT_THAT(assigned.out, HasSubstr("new"));
    EXPECT_THAT(assigned.err, HasSubstr("Logged as run 1."));
    EXPECT_THAT(rows(key), testing::ElementsAre("2 0103 149542.95"));
    EXPECT_EQ(run({"assign", key, "2", "销售商品、提供劳务收到的现金"}).exitCode, 0);
    EXPECT_THAT(rows(key), testing::ElementsAre("2 0101 149542.95"));
    EXPECT_THAT(run({"log"}).out, HasSubstr("assign 2024/7/1/2 2 0103"));
}

TEST_F(AssignCommandTest, ASplitSaysWhatStaysWhere) {
    const RunResult split = run({"assign", key, "2", "0103", "49542.95"});
    EXPECT_THAT(split.out, HasSubstr("Voucher 2024/7/收/2, line 2: the remaining 100,000.00 stay on item 0101 "));
    EXPECT_THAT(rows(key), testing::ElementsAre("2 0103 49542.95", "2 0101 100000.0"));
    const RunResult chinese = run({"assign", key, "2", "0103", "1", "0101", "--lang", "zh-CN"});
    EXPECT_EQ(chinese.exitCode, 0) << chinese.out;
    EXPECT_THAT(rows(key), testing::ElementsAre("2 0103 1.0", "2 0101 149541.95"));
}

TEST_F(AssignCommandTest, ADryRunShowsTheFieldsThatWouldChange) {
    run({"save", key});
    const auto before = allRows();
    const RunResult shown = run({"assign", key, "2", "0103", "--dry-run"});
    EXPECT_THAT(shown.out, HasSubstr("changed"));
    EXPECT_THAT(shown.out, HasSubstr("Item 0101"));
    EXPECT_THAT(shown.out, HasSubstr("Dry run"));
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
    const Json json = Json::parse(run({"assign", key, "2", "0103", "--dry-run", "--json"}).out);
    EXPECT_EQ(json["changes"][0]["was"]["cCashItem"], "0101");
    EXPECT_EQ(json["changed"], 1);
}

TEST_F(AssignCommandTest, AnUnknownItemIsRefusedWithNearMatches) {
    const RunResult refused = run({"assign", key, "2", "0110x"});
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_THAT(refused.err, HasSubstr("There is no cash-flow item \"0110x\"; did you mean one of these: "));
    EXPECT_THAT(run({"assign", key, "2", "nonsense"}).err, HasSubstr("There is no cash-flow item \"nonsense\""));
    EXPECT_THAT(run({"assign", key, "2", "0103", "1,0x"}).err, HasSubstr("\"1,0x\" is not an amount"));
    EXPECT_THAT(run({"assign", key, "x", "0103"}).err, HasSubstr("\"x\" is not the number of a line"));
    EXPECT_EQ(run({"assign", key, "2"}).exitCode, 2);
    EXPECT_THAT(run({"assign", key, "2", "0103", "900000"}).out,
                HasSubstr("10025  The assigned amount exceeds line 2"));
    EXPECT_EQ(run({"assign", key, "77", "0103"}).exitCode, 1);
}

TEST_F(AssignCommandTest, ASpreadsheetAssignsVoucherByVoucher) {
    const std::string file = sheet("voucher,line,account,side,amount,summary,item,remark\n"
                                   "2024/7/1/2,2,1122,credit,149542.95,receipt,0103,x\n"
                                   "2024/7/1/3,2,1122,credit,\"77,000.00\",,0101,\n"
                                   "2024/7/1/3,2,,,,,0103,\n"
                                   "2024/7/1/1,2,6001,credit,1270,,,left open\n");
    const auto before = allRows();
    EXPECT_EQ(run({"assign", "--from", file, "--dry-run"}).exitCode, 0);
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
    const RunResult assigned = run({"assign", "--from", file, "--json"});
    EXPECT_EQ(assigned.exitCode, 0) << assigned.out << assigned.err;
    EXPECT_EQ(assigned.lines().size(), 2U);
    EXPECT_THAT(rows(key), testing::ElementsAre("2 0103 149542.95"));
    EXPECT_THAT(rows("2024/7/1/3"), testing::ElementsAre("2 0101 77000.0", "2 0103 374.76", "3 0401 108.52"));
    EXPECT_EQ(run({"undo", "1"}).exitCode, 0) << "one run";
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
}

TEST_F(AssignCommandTest, ASpreadsheetMayNameTheKindByItsSign) {
    const std::string file = sheet("voucher,line,amount,item\n2024/7/收/3,2,77000,0101\n2024/7/1/3,2,,0103\n");
    const RunResult assigned = run({"assign", "--from", file, "--json"});
    EXPECT_EQ(assigned.exitCode, 0) << assigned.out << assigned.err;
    EXPECT_EQ(assigned.lines().size(), 1U) << "both spellings are one voucher";
    EXPECT_THAT(rows("2024/7/1/3"), testing::ElementsAre("2 0101 77000.0", "2 0103 374.76", "3 0401 108.52"));
    const RunResult unknown = run({"assign", "--from",
                                   sheet("voucher,line,item\n2024/7/現/3,2,0101\n"
                                         "2024/7/现/4,2,9999\n")});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_THAT(unknown.err, HasSubstr("line 2"));
    EXPECT_THAT(unknown.err, HasSubstr("現"));
    EXPECT_THAT(unknown.err, HasSubstr("现"));
    EXPECT_THAT(unknown.err, HasSubstr("has 3 faults"));
}

TEST_F(AssignCommandTest, AllFaultsOfASpreadsheetAreReportedAtOnceAndNothingIsStored) {
    const auto before = allRows();
    const RunResult form = run({"assign", "--from",
                                sheet("voucher,line,amount,item\n2024-7,2,1,0101\n2024/7/1/2,x,1,0101\n"
                                      "2024/7/1/2,2,1.x,0101\n2023/7/1/2,2,1,0101\n")});
    EXPECT_EQ(form.exitCode, 2);
    EXPECT_THAT(form.err, HasSubstr("line 2"));
    EXPECT_THAT(form.err, HasSubstr("\"x\" is not the number of a line"));
    EXPECT_THAT(form.err, HasSubstr("\"1.x\" is not an amount"));
    EXPECT_THAT(form.err, HasSubstr("has 4 faults, and no voucher was changed"));
    const RunResult matter = run({"assign", "--from",
                                  sheet("voucher,line,account,side,amount,item\n2024/7/1/2,2,1122,credit,1,9999\n"
                                        "2024/7/1/2,9,,,1,0101\n2024/7/1/2,2,1001,,1,0101\n2024/7/1/2,2,,debit,1,0101\n"
                                        "2024/7/1/2,2,,,1e6,0101\n2024/7/1/999,1,,,1,0101\n")});
    EXPECT_EQ(matter.exitCode, 2);
    for (const char* fault :
         {"item \"9999\"", "has no line 9", "differs from the account 1122 of the line", "side \"debit\" differs",
          "exceeds what is left of the line", "There is no voucher 2024/7/1/999"}) {
        EXPECT_THAT(matter.err, HasSubstr(fault));
    }
    EXPECT_THAT(run({"assign", "--from", sheet("voucher,line\n")}).err, HasSubstr("the column item is missing"));
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
}

TEST_F(AssignCommandTest, ClearRemovesTheRowsOfAVoucher) {
    run({"save", key});
    const auto before = allRows();
    EXPECT_THAT(run({"clear", key, "--dry-run"}).out, HasSubstr("removed"));
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
    EXPECT_EQ(Json::parse(run({"clear", key, "--json"}).out)["removed"], 1);
    EXPECT_EQ(allRows().size(), before.size() - 1);
    EXPECT_EQ(run({"undo", "2"}).exitCode, 0);
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
}

TEST_F(AssignCommandTest, ReassignMovesTheRowsOfAnItem) {
    run({"allot", "--year", "2024", "--period", "7-8"});
    const auto before = allRows();
    const std::vector<std::string> words{"reassign", "--year", "2024", "--from", "0111", "--to", "0114"};
    const auto with = [&words](const std::vector<std::string>& more) {
        std::vector<std::string> all = words;
        all.insert(all.end(), more.begin(), more.end());
        return all;
    };
    EXPECT_THAT(run(with({"--period", "7", "--dry-run"})).out, HasSubstr("Item 0111"));
    EXPECT_THAT(run(with({"--account", "9999"})).out, HasSubstr("There are no vouchers to change."));
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
    const RunResult moved = run(with({"--json"}));
    EXPECT_EQ(moved.exitCode, 0) << moved.err;
    EXPECT_FALSE(moved.lines().empty());
    EXPECT_THAT(run(with({})).out, HasSubstr("There are no vouchers to change."));
    EXPECT_THAT(run({"log"}).out, HasSubstr("reassign --from 0111 --to 0114 --year 2024"));
    EXPECT_EQ(run({"reassign", "--year", "2024", "--from", "0111", "--to", "9x"}).exitCode, 2);
    EXPECT_EQ(run({"undo", "2"}).exitCode, 0);
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
}

TEST_F(AssignCommandTest, SaveAndAllotShowWhatWouldChangeAndGenerateAnew) {
    run({"assign", key, "2", "0103"});
    const auto before = allRows();
    EXPECT_THAT(run({"save", key}).out, HasSubstr("kept 1"));
    EXPECT_THAT(run({"save", key, "--regenerate", "--dry-run"}).out, HasSubstr("Item 0103"));
    const RunResult shown = run({"allot", "--year", "2024", "--period", "7", "--regenerate", "--dry-run"});
    EXPECT_THAT(shown.out, HasSubstr("Item 0103"));
    EXPECT_THAT(shown.out, Not(HasSubstr("no cash-flow account         0")));
    EXPECT_THAT(run({"allot", "--year", "2024", "--period", "7", "--dry-run"}).out, HasSubstr("kept"));
    EXPECT_TRUE(workbench::sameRows(before, allRows(), true));
    EXPECT_EQ(run({"save", key, "--regenerate", "--keep-items"}).exitCode, 0);
    EXPECT_THAT(rows(key), testing::ElementsAre("2 0101 149542.95"));
    EXPECT_EQ(run({"save", key, "--keep-items"}).exitCode, 2) << "only beside --regenerate";
    const RunResult all = run({"allot", "--year", "2024", "--period", "7", "--regenerate", "--keep-items"});
    EXPECT_THAT(all.out, HasSubstr("new"));
}

} // namespace
} // namespace z7::cashflow::host
