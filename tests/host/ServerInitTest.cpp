#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/odbc/Connection.h"
#include "doubles/ScratchFolder.h"
#include "host/cli/exitCode.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <random>

namespace z7::cashflow::host {
namespace {

using testing::HasSubstr;

/// Accounts created by the program on the server of the environment variable Z7CF_TEST_SQLSERVER, each in a new
/// database that is dropped at the end.
class ServerInitTest : public testing::Test {
protected:
    void SetUp() override {
        const char* server = std::getenv("Z7CF_TEST_SQLSERVER");
        if (server == nullptr || *server == '\0') {
            GTEST_SKIP() << "Z7CF_TEST_SQLSERVER holds no connection string, so there is no server";
        }
        std::random_device random;
        name_ = "z7cf_" + std::to_string(random()) + std::to_string(random());
        admin_.Open(server);
        samplePeriodsThere_ = there("zqsystem") && count(sampleAccount) > 0;
        string_ = scratch.write("server.txt", server + (";Database=" + name_ + "\n")).string();
    }
    void TearDown() override {
        if (admin_.State() == ObjectState::closed) {
            return;
        }
        // The server takes a while to release the sessions that the program has just closed.
        for (int tries = 1; there(name_); ++tries) {
            try {
                admin_.Execute("drop database " + name_);
            } catch (const Error& error) {
                ASSERT_LT(tries, 200) << error.description();
            }
        }
        if (!samplePeriodsThere_ && there("zqsystem")) {
            admin_.Execute("delete" + std::string(sampleAccount));
        }
    }

    bool there(const std::string& database) {
        return !admin_.Execute("select db_id(N'" + database + "') as id")->Fields().Item(0).isNull();
    }
    std::int32_t count(const std::string& fromTable) {
        return toInt32(admin_.Execute("select count(*) as n" + fromTable)->Fields().Item(0));
    }
    [[nodiscard]] RunResult init(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"init", "--connect", "@" + string_, "--lang", "en"});
        return runProgram(arguments);
    }
    /// Runs a command on the server's account and on the embedded one, and compares the output.
    void expectTheSame(std::vector<std::string> arguments) const {
        std::vector<std::string> onServer = arguments;
        arguments.insert(arguments.begin() + 1, embedded.string());
        onServer.insert(onServer.end(), {"--connect", "@" + string_});
        const RunResult expected = runProgram(arguments);
        const RunResult actual = runProgram(onServer);
        SCOPED_TRACE(testing::PrintToString(arguments));
        EXPECT_EQ(actual.exitCode, expected.exitCode) << actual.err;
        EXPECT_EQ(actual.err, expected.err);
        EXPECT_EQ(actual.out, expected.out);
    }

    static constexpr const char* sampleAccount = " from zqsystem..ua_period where cacc_id=N'001'";

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    test::ScratchFolder scratch;
    std::filesystem::path embedded = scratch.path() / "sample.db";
    odbc::Connection admin_;
    std::string name_;
    std::string string_; ///< file with the connection string
    bool samplePeriodsThere_ = false;
};

TEST_F(ServerInitTest, TheSampleCompanyIsTheSameAsInTheEmbeddedDatabase) {
    const RunResult made = init({"--sample", "--json"});
    ASSERT_EQ(made.exitCode, 0) << made.err;
    EXPECT_EQ(made.out, "{\"form\":1,\"database\":\"" + name_ + "\",\"tables\":11,\"records\":925}\n");
    ASSERT_EQ(runProgram({"init", embedded.string(), "--sample"}).exitCode, 0);
    expectTheSame({"allot", "--year", "2024", "--json"});
    expectTheSame({"vouchers", "--year", "2024", "--json"});
    expectTheSame({"rows", "2024/6/2/10", "--json"});
    expectTheSame({"rows", "2024/8/2/10", "--generate", "--json"});
    expectTheSame({"check", "2024/7/2/10", "--json"});
    expectTheSame({"save", "2024/12/1/6", "--json"});
}

TEST_F(ServerInitTest, OptionsAndAnAccountThatIsThere) {
    ASSERT_EQ(init({"--set", "bCashCode=true"}).exitCode, 0);
    const std::string table = name_ + "..accinformation";
    EXPECT_EQ(count(" from " + table + " where csysid=N'GL' and cname=N'bCashCode' and cvalue=N'True'"), 1);
    const RunResult again = init({"--sample"});
    EXPECT_EQ(again.exitCode, exit_code::usage);
    EXPECT_THAT(again.err, HasSubstr("Database " + name_ + " holds gl_accvouch, gl_cashtable, code"));
    EXPECT_EQ(count(" from " + table), 1);
}

TEST_F(ServerInitTest, ABadFileLeavesNothingBehind) {
    scratch.write("tables/dsign.csv", "isignseq,csign\n1,收\n");
    for (const auto& [text, reason] :
         {std::pair<const char*, const char*>{"iyear,ccode,bend\n2024,1001,maybe\n",
                                              "code.csv, line 2, column bend: \"maybe\" is not 0, 1, true or false\n"},
          {"iyear,ccode\n2024,1001\n2024,1001\n", "code.csv, line 3: "}}) {
        scratch.write("tables/code.csv", text);
        const RunResult refused = init({"--from", (scratch.path() / "tables").string()});
        EXPECT_EQ(refused.exitCode, exit_code::usage);
        EXPECT_THAT(refused.err, HasSubstr(reason));
        EXPECT_FALSE(there(name_));
    }
    admin_.Execute("create database " + name_);
    EXPECT_EQ(init({"--from", (scratch.path() / "tables").string()}).exitCode, exit_code::usage);
    EXPECT_TRUE(there(name_)) << "what was there stays";
    EXPECT_EQ(count(" from " + name_ + ".sys.tables"), 0);
    scratch.write("tables/code.csv", "iyear,ccode\n2024,1001\n");
    const RunResult made = init({"--from", (scratch.path() / "tables").string()});
    EXPECT_EQ(made.out, "Created " + name_ + " (tables: 2, records: 2).\n") << made.err;
}

} // namespace
} // namespace z7::cashflow::host
