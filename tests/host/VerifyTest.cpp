#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/odbc/accountSchema.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"
#include "z7cashflow/support/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <functional>
#include <memory>
#include <utility>

namespace z7::cashflow::host {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

/// The account's file reached by a connection string of a server. The test creates the view of the schema version
/// itself.
class ServerOnFile final : public Connection {
public:
    using VersionView = std::function<std::shared_ptr<Recordset>(Connection&, const std::string&)>;

    ServerOnFile(std::string file, VersionView view) : file_(std::move(file)), view_(std::move(view)) {}

    void Open(const std::string&) override { database_.Open(sqlite::connectionString(file_)); }
    void Close() override { database_.Close(); }
    [[nodiscard]] ObjectState State() const override { return database_.State(); }
    [[nodiscard]] std::string ConnectionString() const override { return database_.ConnectionString(); }
    std::shared_ptr<Recordset> Execute(const std::string& text) override {
        return text.find("z7_schema_version") == std::string::npos ? database_.Execute(text) : view_(database_, text);
    }
    [[nodiscard]] std::shared_ptr<Recordset> createRecordset() override { return database_.createRecordset(); }
    void BeginTrans() override { database_.BeginTrans(); }
    void CommitTrans() override { database_.CommitTrans(); }
    void RollbackTrans() override { database_.RollbackTrans(); }

private:
    sqlite::Connection database_;
    std::string file_;
    VersionView view_;
};

/// A small consistent account, which each test damages in its own way.
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

    [[nodiscard]] RunResult verifyOnServer(const ServerOnFile::VersionView& view,
                                           std::vector<std::string> more = {}) const {
        more.insert(more.begin(), {"verify", "--connect", "Driver={Stand-in};Database=company"});
        return runProgram(more, [this, &view] { return std::make_unique<ServerOnFile>(file, view); });
    }

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
    test::ScratchFolder scratch;
    test::ScratchFolder tables;
    std::string file = (scratch.path() / "a.db").string();
};

TEST_F(VerifyTest, FindsNothingInASoundAccount) {
    EXPECT_EQ(init().err, "");
    const RunResult run = verify();
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "The files are sound and the tables agree.\n");
    EXPECT_EQ(runProgram({"verify", "--connect", sqlite::connectionString(file)}).out, run.out);
    EXPECT_EQ(runProgram({"verify", file, "--json"}).out, "{\"form\":1,\"holds\":true,\"findings\":[]}\n");
}

TEST_F(VerifyTest, ComparesTheVersionOfAServersSchema) {
    init();
    const auto version = [](int number) {
        return [number](Connection& database, const std::string&) {
            return database.Execute("select " + std::to_string(number) +
                                    " as version from fitemss98 where citemcode=N'0101'");
        };
    };
    const RunResult known = verifyOnServer(version(odbc::accountSchemaVersion));
    EXPECT_EQ(known.exitCode, 0);
    EXPECT_EQ(known.err, "");
    const RunResult newer = verifyOnServer(version(odbc::accountSchemaVersion + 1));
    EXPECT_EQ(newer.exitCode, 1);
    EXPECT_EQ(
        newer.lines()[0],
        "the account's schema has version 2, but this program requires version 1; use a matching version of the program");
    const auto json = nlohmann::json::parse(verifyOnServer(version(0), {"--json"}).out);
    EXPECT_EQ(json["findings"][0]["kind"], "schema-version");
    EXPECT_THAT(verifyOnServer(version(0), {"--lang", "zh-CN"}).out,
                HasSubstr("账套的表结构为第 0 版，而本程序适用第 1 版"));
}

TEST_F(VerifyTest, RemarksThatAServersSchemaHasNoVersionToRead) {
    init();
    const auto missing = [](Connection& database, const std::string& text) { return database.Execute(text); };
    const auto denied = [](Connection&, const std::string&) -> std::shared_ptr<Recordset> {
        throw Error(229, "ODBC", "The SELECT permission was denied on the object 'z7_schema_version'.", "42000");
    };
    for (const RunResult& run : {verifyOnServer(missing), verifyOnServer(denied)}) {
        EXPECT_EQ(run.exitCode, 0) << run.out;
        EXPECT_EQ(run.out, "The files are sound and the tables agree.\n");
        EXPECT_THAT(run.err,
                    HasSubstr("The schema version was not checked: this login cannot read the view z7_schema_version"));
    }
    EXPECT_THAT(verifyOnServer(missing, {"--lang", "zh-CN"}).err, HasSubstr("未检查表结构版本"));
    const auto lost = [](Connection&, const std::string&) -> std::shared_ptr<Recordset> {
        throw Error(17, "ODBC", "The connection was lost.", "08S01");
    };
    EXPECT_EQ(verifyOnServer(lost).exitCode, 3) << "any other error is one of the database";
    EXPECT_EQ(verify().err, "") << "a file has its version elsewhere";
}

TEST_F(VerifyTest, TakesTheAccountFromItsOnlyPeriods) {
    init();
    EXPECT_EQ(verify().exitCode, 0) << "account 005, and no settings file";
    EXPECT_EQ(runProgram({"allot", file, "--year", "2024"}).exitCode, 0);
    const std::string settings = scratch.write("s.toml", "account = \"006\"\n").string();
    const RunResult run = runProgram({"verify", file, "--settings", settings});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.lines(), Contains("account 006 has no accounting periods; ua_period has those of 005; check the "
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
                    "account \"5555\" of the year 2024 (1 entry lines) is not in the chart of accounts (code)",
                    "the date 2024-02-01 (1 entry lines) is in no accounting period of 2024 of account 005",
                    "voucher 2024/1/1/2 does not balance: debit 1,234.50, credit 0.00", "Findings: 7, see above."));
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
    EXPECT_THAT(run.out, HasSubstr("file " + file + " is damaged, restore it from a backup: "));
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
