#include "host/account/serverAccountMaker.h"

#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "ServerDouble.h"
#include "doubles/ScratchFolder.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace z7::cashflow::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

TableFile fileWith(const std::string& table, const std::string& text) {
    return {table, table + ".csv", [text] { return std::make_unique<std::istringstream>(text); }};
}

class ServerAccountMakerTest : public testing::Test {
protected:
    ServerAccountMakerTest() { server.content["company"]; }

    ServerAccount make(const std::vector<TableFile>& files = {}, const std::vector<std::string>& options = {}) {
        return makeServerAccount(string, server.connections(), files, readAccountOptions(options), Language::english,
                                 [this] { return stopAfter-- == 0; });
    }

    /// The message of the failure, which must have left the server unchanged.
    std::string refusal(int exitCode, const std::vector<TableFile>& files = {}) {
        const ServerDouble::Content before = server.content;
        std::string message;
        try {
            make(files);
            ADD_FAILURE() << "no failure";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.exitCode(), exitCode);
            message = failure.message(Language::english);
        }
        EXPECT_TRUE(server.content == before) << message;
        EXPECT_EQ(server.openConnections(), 0U);
        return message;
    }

    [[nodiscard]] std::vector<std::string> journalOf(const std::string& beginning) const {
        std::vector<std::string> events;
        for (const std::string& event : server.journal()) {
            if (event.starts_with(beginning)) {
                events.push_back(event);
            }
        }
        return events;
    }

    ServerDouble server;
    std::string string = "Driver={FreeTDS};Server=s;Database=company;UID=u;PWD=hush";
    int stopAfter = -1; ///< number of records after which a signal arrives; negative for never
    const std::vector<TableFile> few{fileWith("dsign", "isignseq,csign\n1,收\n2,\n"),
                                     fileWith("UA_Period", "cacc_id,iyear,iid,dbegin,dend\n"
                                                           "001,2024,1,2024-01-01,2024-01-31\n")};
};

TEST_F(ServerAccountMakerTest, MakesAnEmptyAccountStatementByStatement) {
    const ServerAccount account = make();
    EXPECT_EQ(account.database, "company");
    EXPECT_EQ(account.loaded.tables, 0);
    EXPECT_EQ(server.content.at("company").size(), 17U) << "twelve tables and five views";
    EXPECT_EQ(server.content.at("zqsystem").size(), 1U);
    std::vector<std::string> steps;
    for (const std::string& event : server.journal()) {
        if (!event.starts_with("select ")) {
            steps.push_back(event);
        }
    }
    EXPECT_THAT(
        steps,
        ElementsAre(
            "open company", "create database [zqsystem]", "begin", "create table gl_accvouch (",
            "create index gl_accvouch_iyear_ino_id_inid on gl_accvouch (iyear, ino_id, inid);",
            "create index gl_accvouch_coutno_id_iyear on gl_accvouch (coutno_id, iyear);",
            "create table gl_cashtable (",
            "create index gl_cashtable_iYear_iPeriod_iSignSeq_iNo_id_inid on gl_cashtable (iYear, iPeriod, "
            "iSignSeq, iNo_id, inid);",
            "create table code (", "create table fitemss98 (", "create table GL_CashItemDataSource (",
            "create index GL_CashItemDataSource_iyear_cDataSource_bdir on GL_CashItemDataSource (iyear, "
            "cDataSource, bdir);",
            "create table GL_VouchDraft (", "create table GL_VoucherOption (", "create table GL_myoutput (",
            "create table accinformation (", "create table dsign (", "create index dsign_isignseq on dsign (isignseq);",
            "create view gl_v_accvouch as", "create view gl_v_code as", "create view gl_v_cashtable as",
            "create view GL_V_CashItemDataSource as", "create view z7_schema_version as select 1 as version;",
            "create table z7_run (", "create index z7_run_cToken on z7_run (cToken);", "create table z7_run_row (",
            "create index z7_run_row_iRun_iYear_iPeriod_iSignSeq_iNo_id on z7_run_row (iRun, iYear, iPeriod, "
            "iSignSeq, iNo_id);",
            "use [zqsystem]", "create table ua_period (", "use [company]", "commit"));
}

TEST_F(ServerAccountMakerTest, FillsItWithTheSampleCompany) {
    const ServerAccount account = make(tableFilesOfSample(), {"bCashCode=true"});
    EXPECT_EQ(account.loaded.tables, 11);
    EXPECT_EQ(account.loaded.records, 925);
    std::size_t rows = server.content.at("zqsystem").at("ua_period").rows.size();
    EXPECT_EQ(rows, 24U);
    for (const auto& [name, table] : server.content.at("company")) {
        rows += table.rows.size();
    }
    EXPECT_EQ(rows, 925U + 1U) << "and the option";
    EXPECT_THAT(server.content.at("company").at("accinformation").rows.back(),
                ElementsAre("GL", "bCashCode", "True", "(null)"));
    EXPECT_THAT(server.content.at("company").at("sales_voucher").rows, Not(IsEmpty()));
}

TEST_F(ServerAccountMakerTest, MakesTheDatabaseThatIsNamedAndNotThere) {
    server.content.erase("company");
    EXPECT_EQ(make(few).database, "company");
    EXPECT_EQ(server.content.at("company").size(), 17U);
    EXPECT_THAT(journalOf("open "), ElementsAre("open company", "open master", "open company"));
    EXPECT_THAT(journalOf("create database"), SizeIs(2));
}

TEST_F(ServerAccountMakerTest, ANewDatabaseIgnoresLetterCaseWhateverTheServerDoes) {
    server.content.erase("company");
    server.ignoresLetterCase = false;
    make();
    EXPECT_THAT(journalOf("create database"),
                ElementsAre("create database [company] collate Chinese_PRC_CI_AS", "create database [zqsystem]"));
}

TEST_F(ServerAccountMakerTest, AFailureAtAnyPointLeavesTheServerAsItWas) {
    for (const bool companyThere : {true, false}) {
        for (const bool cutsLine : {true, false}) {
            std::size_t n = 1;
            for (bool failed = true; failed; ++n) {
                SCOPED_TRACE((companyThere ? "in its database, call " : "without its database, call ") +
                             std::to_string(n) + (cutsLine ? ", line cut" : ""));
                server.content = {{"master", {}}};
                if (companyThere) {
                    server.content["company"];
                }
                const ServerDouble::Content before = server.content;
                server.failAt(n, cutsLine);
                try {
                    make(few);
                    EXPECT_TRUE(!server.hasFailed() || (n == 1 && !companyThere))
                        << "only the first try to open a database that is not there may fail";
                } catch (const Failure& failure) {
                    EXPECT_EQ(failure.exitCode(), exit_code::database);
                    EXPECT_THAT(failure.message(Language::english), Not(HasSubstr("hush")));
                    EXPECT_TRUE(server.content == before) << failure.message(Language::english);
                }
                failed = server.hasFailed();
                EXPECT_EQ(server.openConnections(), 0U);
            }
            EXPECT_GT(n, 50U) << "each call was tried";
            EXPECT_EQ(server.content.at("company").at("dsign").rows.size(), 2U);
        }
    }
}

TEST_F(ServerAccountMakerTest, ABadFileIsRefusedWithItsPlace) {
    EXPECT_EQ(refusal(exit_code::usage, {few[0], fileWith("code", "iyear,ccode,bend\n2024,1001,1\n2024,1002,maybe\n")}),
              "code.csv, line 3, column bend: \"maybe\" is not 0, 1, true or false");
    EXPECT_THAT(journalOf("rollback"), SizeIs(1));
    EXPECT_EQ(refusal(exit_code::usage, {fileWith("dsign", "isignseq,nosuch\n1,2\n")}),
              "dsign.csv, line 1, column nosuch: table \"dsign\" has no such column");
    EXPECT_EQ(refusal(exit_code::usage, {fileWith("dsign", "csign\n收\n")}),
              "dsign.csv, line 1, column isignseq: the column is required and missing");
    EXPECT_EQ(refusal(exit_code::usage, {fileWith("dsign", "isignseq\n70000\n")}),
              "dsign.csv, line 2, column isignseq: \"70000\" is not a whole number from -32768 to 32767");
    EXPECT_EQ(refusal(exit_code::usage, {fileWith("fitemss98", "citemcode\n" + std::string(41, 'x') + "\n")}),
              "fitemss98.csv, line 2, column citemcode: \"" + std::string(41, 'x') +
                  "\" is not a text of at most 40 characters");
    EXPECT_THAT(refusal(exit_code::usage, {fileWith("nosuch", "a\n1\n")}), HasSubstr("dsign, fitemss98"));
    EXPECT_THAT(refusal(exit_code::usage, {fileWith("gl_v_code", "ccode\n1\n")}), HasSubstr("no table \"gl_v_code\""));
    server.refusedRows.insert("7");
    EXPECT_EQ(refusal(exit_code::usage, {fileWith("fitemss98", "citemcode\n1\n7\n")}),
              "fitemss98.csv, line 3: the database refuses the row: Violation of PRIMARY KEY constraint.");
}

TEST_F(ServerAccountMakerTest, ABadFileLeavesNoNewDatabaseBehind) {
    server.content.erase("company");
    EXPECT_THAT(refusal(exit_code::usage, {fileWith("dsign", "isignseq\nx\n")}), HasSubstr("line 2"));
    EXPECT_THAT(journalOf("drop database"), ElementsAre("drop database [company]", "drop database [zqsystem]"));
}

TEST_F(ServerAccountMakerTest, AnAccountThatIsThereStaysAsItIs) {
    make(few);
    EXPECT_EQ(
        refusal(exit_code::usage, few),
        "Database company already contains gl_accvouch, gl_cashtable, code, fitemss98, GL_CashItemDataSource, "
        "GL_VouchDraft, GL_VoucherOption, GL_myoutput, accinformation, dsign, gl_v_accvouch, gl_v_code, "
        "gl_v_cashtable, GL_V_CashItemDataSource, z7_schema_version, z7_run, z7_run_row, and nothing was changed; "
        "choose another database, or remove them first");
    EXPECT_THAT(journalOf("begin"), SizeIs(1)) << "of the first time";
    server.content["other"]["code"];
    string = "DSN=ledger;Database={other}";
    EXPECT_THAT(refusal(exit_code::usage), HasSubstr("Database other already contains code"));
}

TEST_F(ServerAccountMakerTest, RefusesDatabasesThatCannotHoldAnAccount) {
    string = "Driver={FreeTDS};Server=s;UID=u;PWD=hush";
    EXPECT_THAT(refusal(exit_code::usage), HasSubstr("\"master\" is a database of the server itself"));
    string += ";Database=tempdb";
    EXPECT_THAT(refusal(exit_code::usage), HasSubstr("Database=NAME"));
    string = "Driver={FreeTDS};Server=s;Database=company";
    server.ignoresLetterCase = false;
    EXPECT_THAT(refusal(exit_code::usage), HasSubstr("is case-sensitive"));
}

TEST_F(ServerAccountMakerTest, SharesTheSystemDatabaseWithOtherAccounts) {
    make(few);
    server.content["second"];
    string = "Driver={FreeTDS};Server=s;Database=second;year=2024";
    EXPECT_EQ(make(few).loaded.records, 3);
    EXPECT_THAT(server.content.at("zqsystem").at("ua_period").rows, SizeIs(1)) << "the period was there already";
    EXPECT_THAT(journalOf("create database"), SizeIs(1));
    EXPECT_THAT(journalOf("create table ua_period"), SizeIs(1));
}

TEST_F(ServerAccountMakerTest, TakesNumbersFromTheFile) {
    make({fileWith("GL_CashItemDataSource", "iyear,cDataSource,bdir,iID\n2024,1122,0,7\n"),
          fileWith("dsign", "isignseq\n1\n")});
    EXPECT_THAT(journalOf("set "), ElementsAre("set identity_insert [GL_CashItemDataSource] on",
                                               "set identity_insert [GL_CashItemDataSource] off"));
}

TEST_F(ServerAccountMakerTest, AnInterruptionLeavesTheServerAsItWas) {
    server.content.erase("company");
    const ServerDouble::Content before = server.content;
    stopAfter = 2;
    EXPECT_THROW(make(few), Interrupted);
    EXPECT_TRUE(server.content == before);
}

TEST(ServerInit, RefusesWhatIsNotAServerOrAString) {
    const EnvironmentGuard home("HOME", "/nonexistent");
    const EnvironmentGuard config("XDG_CONFIG_HOME", nullptr);
    const EnvironmentGuard connect("Z7CF_CONNECT", nullptr);
    const RunResult bad = runProgram({"init", "--connect", "Server=x", "--lang", "en"});
    EXPECT_EQ(bad.exitCode, exit_code::database);
    EXPECT_THAT(bad.err, HasSubstr("names neither a driver"));
    const RunResult driver = runProgram({"init", "--connect", "Driver={No such driver};Database=x", "--lang", "en"});
    EXPECT_EQ(driver.exitCode, exit_code::database);
    EXPECT_THAT(driver.err, HasSubstr("cannot be opened"));
}

} // namespace
} // namespace z7::cashflow::host
