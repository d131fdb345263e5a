#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "ScratchFolder.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>

namespace z7::cashflow::host {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

/// A small account that agrees in itself, which each test spoils in its own way.
class VerifyTest : public testing::Test {
protected:
    VerifyTest() {
        tables.write("code.csv", "iyear,ccode,bCashItem,bend\n2024,1001,1,1\n2024,6602,0,1\n");
        tables.write("fitemss98.csv", "citemcode,citemname\n0101,Sales\n0114,Other\n");
        tables.write("GL_CashItemDataSource.csv", "iyear,cDataSource,bdir,cItemCode\n2024,6602,1,0114\n");
        tables.write("ua_period.csv", "cacc_id,iyear,iid,dbegin,dend\n005,2024,1,2024-01-01,2024-01-31\n");
        tables.write("accinformation.csv",
                     "csysid,cname,cvalue\nGL,bCashCode,False\nGL,bAutoDisplay,False\nGL,bXJLL,True\n");
        tables.write("gl_accvouch.csv",
                     "iyear,iperiod,isignseq,ino_id,inid,dbill_date,ccode,md,mc\n"
                     "2024,1,1,1,1,2024-01-05,6602,100.10,0\n2024,1,1,1,2,2024-01-05,1001,0,100.10\n");
    }

    RunResult init() { return runProgram({"init", file, "--from", tables.path().string()}); }
    [[nodiscard]] RunResult verify() const { return runProgram({"verify", file}); }

    void execute(const std::string& statement) const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(file, 2024));
        connection.Execute(statement);
        connection.Close();
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    ScratchFolder scratch;
    ScratchFolder tables;
    std::string file = (scratch.path() / "a.db").string();
};

TEST_F(VerifyTest, FindsNothingInASoundAccount) {
    EXPECT_EQ(init().err, "");
    const RunResult run = verify();
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "The files are sound and the tables agree.\n");
    EXPECT_EQ(runProgram({"verify", "--connect", sqlite::connectionString(file)}).out, run.out);
    EXPECT_EQ(runProgram({"verify", file, "--json"}).out, "{\"holds\":true,\"findings\":[]}\n");
}

TEST_F(VerifyTest, TakesTheAccountFromItsOnlyPeriods) {
    init();
    EXPECT_EQ(verify().exitCode, 0) << "account 005, and no settings file";
    EXPECT_EQ(runProgram({"allot", file, "--year", "2024"}).exitCode, 0);
    const std::string settings = scratch.write("s.toml", "account = \"006\"\n").string();
    const RunResult run = runProgram({"verify", file, "--settings", settings});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.lines(),
                Contains("the account 006 has no accounting periods; ua_period has those of 005; look at the "
                         "account in the settings"));
}

TEST_F(VerifyTest, NamesWhatDoesNotAgree) {
    init();
    execute("insert into GL_CashItemDataSource (iyear,cDataSource,bdir,cItemCode) values (2024,N'1001',1,N'9999')");
    execute("insert into GL_VouchDraft (cUserId,inid,cCashItem) values (N'demo',1,N'8888')");
    execute("insert into gl_cashtable (iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode) values "
            "(2024,1,1,N'',1,1,N'7777',1,0,N'6602')");
    execute(
        "insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,ccode,md,mc,citem_class,citem_id) values "
        "(2024,1,1,2,1,'2024-02-01',N'5555',1234.5,0,N'98',N'6666')");
    const RunResult run = verify();
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(
        run.lines(),
        ElementsAre("GL_CashItemDataSource: the item \"9999\" (1 records) is not in the list of items (fitemss98)",
                    "GL_VouchDraft: the item \"8888\" (1 records) is not in the list of items (fitemss98)",
                    "gl_accvouch: the item \"6666\" (1 records) is not in the list of items (fitemss98)",
                    "gl_cashtable: the item \"7777\" (1 records) is not in the list of items (fitemss98)",
                    "the account \"5555\" of the year 2024 (1 entry lines) is not in the chart of accounts (code)",
                    "the date 2024-02-01 (1 entry lines) lies in no period of the year 2024 of the account 005",
                    "the voucher 2024/1/1/2 does not balance: debit 1,234.50, credit 0.00", "Findings: 7, see above."));
    const auto json = nlohmann::json::parse(runProgram({"verify", file, "--json"}).out);
    EXPECT_FALSE(json["holds"].get<bool>());
    std::vector<std::string> kinds;
    for (const auto& finding : json["findings"]) {
        kinds.push_back(finding["kind"]);
    }
    EXPECT_THAT(kinds, ElementsAre("template-item", "draft-item", "line-item", "row-item", "line-account", "period",
                                   "balance"));
    EXPECT_THAT(runProgram({"verify", file, "--lang", "zh-CN"}).out, HasSubstr("凭证 2024/1/1/2 借贷不平"));
}

TEST_F(VerifyTest, ListsTwentyOfAKindAndCountsTheOthers) {
    init();
    for (int number = 10; number < 35; ++number) {
        execute(
            "insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,ccode,md,mc) values (2024,1,1," +
            std::to_string(number) + ",1,'2024-01-05',N'6602',1,0)");
    }
    const auto lines = verify().lines();
    ASSERT_EQ(lines.size(), 22U);
    EXPECT_EQ(lines[20], "and 5 more of this kind");
}

TEST_F(VerifyTest, InitRemarksWhatTheTablesDoNotAgreeIn) {
    tables.write("GL_CashItemDataSource.csv", "iyear,cDataSource,bdir,cItemCode\n2024,6602,1,9999\n");
    const RunResult run = init();
    EXPECT_EQ(run.exitCode, 0) << "the tables are loaded as they are";
    EXPECT_EQ(run.err, "GL_CashItemDataSource: the item \"9999\" (1 records) is not in the list of items (fitemss98)\n"
                       "Findings in the loaded tables: 1, see above; z7cf verify checks them again.\n");
}

TEST_F(VerifyTest, NamesTheFileThatIsDamaged) {
    init();
    std::fstream bytes(file, std::ios::in | std::ios::out | std::ios::binary);
    bytes.seekp(8192);
    bytes << std::string(4096, 'x');
    bytes.close();
    const RunResult run = verify();
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.out, HasSubstr("the file " + file + " is damaged, restore it from a backup: "));
    EXPECT_THAT(run.out, testing::Not(HasSubstr("zqsystem")));
}

TEST_F(VerifyTest, AFileThatIsNotThereIsExitCodeThree) {
    const RunResult run = verify();
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("There is no database file"));
    EXPECT_FALSE(std::filesystem::exists(file));
}

} // namespace
} // namespace z7::cashflow::host
