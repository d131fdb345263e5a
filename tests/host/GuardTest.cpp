#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <map>
#include <utility>

namespace z7::cashflow::host {
namespace {

using Json = nlohmann::json;
using testing::HasSubstr;

/// An account whose vouchers 1, 3, 5 and 6 contain quotes that would end a text early, each in another column; the
/// other vouchers are harmless.
class GuardTest : public testing::Test {
protected:
    GuardTest() {
        scratch.write("t/accinformation.csv",
                      "csysid,cname,cvalue\nGL,bCashCode,False\nGL,bAutoDisplay,False\nGL,bXJLL,True\n");
        scratch.write("t/code.csv", "iyear,ccode,ccode_name,bCashItem,bend,bclose\n"
                                    "2024,1001,Cash,1,1,0\n2024,6001,Sales,0,1,0\n2024,O'Brien,Costs,0,1,0\n"
                                    "2024,\"x'; delete from gl_accvouch --\",Costs,0,1,0\n");
        scratch.write("t/fitemss98.csv", "citemcode,citemname\n01,Sales\n\"0' or 1=1 --\",Hostile\n");
        scratch.write("t/ua_period.csv", "cacc_id,iyear,iid,dbegin,dend\n001,2024,1,2024-01-01,2024-01-31\n");
        scratch.write("t/dsign.csv", "isignseq,csign\n1,R\n");
        scratch.write("t/gl_accvouch.csv", "iyear,iperiod,isignseq,ino_id,inid,dbill_date,ccode,md,mc,cdept_id,"
                                           "citem_class,citem_id\n" +
                                               line(1, "O'Brien", "", "98", "01") + line(2, "6001", "", "98", "01") +
                                               line(3, "\"x'; delete from gl_accvouch --\"", "", "98", "01") +
                                               line(4, "6001", "", "98", "01") +
                                               line(5, "6001", "\"d'); drop table gl_cashtable --\"", "98", "01") +
                                               line(6, "6001", "", "98", "\"0' or 1=1 --\"") +
                                               line(7, "6001", "", "98", "01"));
        const RunResult made =
            runProgram({"init", database.string(), "--from", (scratch.path() / "t").string(), "--json"});
        EXPECT_EQ(made.exitCode, 0) << made.err;
    }

    /// A receipt of 5: a cash line, and another line with these values.
    static std::string line(int number, const std::string& account, const std::string& department,
                            const std::string& itemClass, const std::string& item) {
        const std::string key = "2024,1,1," + std::to_string(number);
        return key + ",1,2024-01-02,1001,5,0,,,\n" + key + ",2,2024-01-02," + account + ",0,5," + department + "," +
               itemClass + "," + item + "\n";
    }

    [[nodiscard]] RunResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin() + 1, database.string());
        return runProgram(arguments);
    }

    [[nodiscard]] std::int32_t count(const std::string& table) const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(database));
        return toInt32(connection.Execute("select count(*) from " + table)->Fields().Item(0));
    }

    void change(const std::string& statement) const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(database, 2024));
        connection.Execute(statement);
    }
    [[nodiscard]] std::string storedText(const std::string& column) const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(database, 2024));
        return toTextOrEmpty(connection.Execute("select " + column + " from gl_cashtable")->Fields().Item(0));
    }
    /// The document of voucher 2's rows with changed attributes, for import.
    [[nodiscard]] std::string changedRows(const std::vector<std::pair<std::string, std::string>>& attributes) const {
        std::string text = run({"export", "2024/1/1/2", "--generate"}).out;
        const std::size_t row = text.find("<row ");
        for (const auto& [name, value] : attributes) {
            const std::size_t begin = text.find(' ' + name + "='", row);
            EXPECT_NE(begin, std::string::npos) << name << text;
            const std::size_t end = text.find('\'', begin + name.size() + 3) + 1;
            text.replace(begin, end - begin, ' ' + name + "=\"" + value + '"');
        }
        return text;
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    test::ScratchFolder scratch;
    std::filesystem::path database = scratch.path() / "hostile.db";
};

TEST_F(GuardTest, AllotRefusesHostileVouchersAndStoresTheOthers) {
    const RunResult allotted = run({"allot", "--year", "2024", "--json"});
    EXPECT_EQ(allotted.exitCode, 1) << allotted.err;
    std::map<std::string, Json> results;
    for (const std::string& text : allotted.lines()) {
        const Json json = Json::parse(text);
        results[json.at("voucher")] = json;
    }
    ASSERT_EQ(results.size(), 7U);
    for (const char* honest : {"2024/1/1/2", "2024/1/1/4", "2024/1/1/7"}) {
        EXPECT_EQ(results[honest].at("outcome"), "stored") << results[honest];
        EXPECT_EQ(results[honest].at("rows"), 1);
    }
    for (const char* hostile : {"2024/1/1/1", "2024/1/1/3", "2024/1/1/5"}) {
        EXPECT_EQ(results[hostile].at("outcome"), "refused") << results[hostile];
        EXPECT_EQ(results[hostile].at("error").at("number"), errors::statementRefused);
        EXPECT_THAT(results[hostile].at("error").at("description").get<std::string>(), HasSubstr("'"));
    }
    EXPECT_EQ(results["2024/1/1/6"].at("outcome"), "refused");
    EXPECT_EQ(count("gl_cashtable"), 3) << "the three honest rows, and nothing half-written";
    EXPECT_EQ(count("gl_accvouch"), 14);
}

TEST_F(GuardTest, SaveReportsTheRefusalInTheUsersLanguage) {
    const RunResult english = run({"save", "2024/1/1/3"});
    EXPECT_EQ(english.exitCode, 1);
    EXPECT_THAT(english.err, HasSubstr("Error 10020: A value would change the statement"));
    EXPECT_THAT(english.err, HasSubstr("delete from gl_accvouch"));
    const RunResult chinese = run({"save", "2024/1/1/3", "--lang", "zh-CN"});
    EXPECT_EQ(chinese.exitCode, 1);
    EXPECT_THAT(chinese.err, HasSubstr("错误 10020：该值会改变它所写入的数据库语句"));
    EXPECT_THAT(chinese.err, HasSubstr("delete from gl_accvouch"));
    EXPECT_EQ(count("gl_cashtable"), 0);
    EXPECT_EQ(count("gl_accvouch"), 14);
}

TEST_F(GuardTest, RowsAndCheckRefuseWithoutADatabaseFailure) {
    const RunResult rows = run({"rows", "2024/1/1/1", "--generate"});
    EXPECT_EQ(rows.exitCode, 1);
    EXPECT_THAT(rows.err, HasSubstr("Error 10020"));
    {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(database, 2024));
        connection.Execute("insert into gl_cashtable (iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode) "
                           "values (2024,1,1,N'R',1,2,N'01',0,5,N'O''Brien')");
    }
    const RunResult check = run({"check", "2024/1/1/1"});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_THAT(check.err, HasSubstr("Error 10020"));
    EXPECT_EQ(count("gl_cashtable"), 1);
}

TEST_F(GuardTest, AHostileVoucherDoesNotEndTheList) {
    sqlite::Connection connection;
    connection.Open(sqlite::connectionString(database, 2024));
    connection.Execute("insert into gl_cashtable (iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode) "
                       "values (2024,1,1,N'R',1,2,N'01',0,5,N'O''Brien')");
    connection.Close();
    const RunResult list = run({"vouchers", "--year", "2024", "--json"});
    EXPECT_EQ(list.exitCode, 1) << list.err;
    ASSERT_EQ(list.lines().size(), 7U);
    const Json first = Json::parse(list.lines()[0]);
    EXPECT_EQ(first.at("error").at("number"), errors::statementRefused);
    EXPECT_TRUE(first.at("stored").is_null());
    EXPECT_TRUE(first.at("matched").is_null());
    EXPECT_FALSE(Json::parse(list.lines()[1]).contains("error"));
    EXPECT_THAT(list.err, HasSubstr("Voucher 2024/1/R/1: error 10020"));
}

TEST_F(GuardTest, TextsOfOneLineThatWorkTogetherStoreNothing) {
    for (const std::string closing : {"a''", "''''", "''", "a''''b"}) {
        change("update gl_accvouch set csign=N'付'',9,1,N''0111'',450,0,N''6601', cdept_id=N'" + closing +
               "', cperson_id=N'''' where ino_id=2");
        const RunResult saved = run({"save", "2024/1/1/2", "--json"});
        EXPECT_EQ(saved.exitCode, 1) << closing;
        EXPECT_EQ(Json::parse(saved.out).at("error").at("number"), errors::statementRefused) << saved.out;
        EXPECT_EQ(count("gl_cashtable"), 0) << closing;
    }
    const RunResult allotted = run({"allot", "--year", "2024"});
    EXPECT_EQ(allotted.exitCode, 1) << allotted.err;
    EXPECT_EQ(count("gl_cashtable"), 2) << "vouchers 4 and 7, and none under another number";
    EXPECT_EQ(count("gl_cashtable where iNo_id=4 or iNo_id=7"), 2);
}

TEST_F(GuardTest, TwoQuotesInACodeAreRefusedAndNotTakenForOne) {
    change("update gl_accvouch set cdept_id=N'a''''b' where ino_id=2");
    const RunResult saved = run({"save", "2024/1/1/2"});
    EXPECT_EQ(saved.exitCode, 1);
    EXPECT_THAT(saved.err, HasSubstr("cdept_id is \"a''b\", which contains a quote"));
    EXPECT_EQ(count("gl_cashtable"), 0);
}

TEST_F(GuardTest, ADocumentWhoseValuesWorkTogetherStoresNothing) {
    ASSERT_EQ(run({"save", "2024/1/1/2"}).exitCode, 0);
    const std::vector<std::vector<std::pair<std::string, std::string>>> attacks{
        {{"cCashItem", "0101',N'999"}, {"md_f", "N'0"}, {"mc_f", "0'"}},
        {{"RowGuid", "x',2024,1"}, {"cCashItem", "a'"}},
        {{"RowGuid", "x''"}},
        {{"inid", "2 and inid=2"}},
        {{"inid", "2; delete from gl_cashtable"}},
        {{"RowGuid", "x',1,1"}, {"inid", "2 or 1=1"}, {"md_f", "''"}},
    };
    for (const auto& attack : attacks) {
        const std::string file = scratch.write("hostile.xml", changedRows(attack)).string();
        const RunResult imported = run({"import", "2024/1/1/2", file, "--json"});
        EXPECT_EQ(imported.exitCode, 1) << imported.out;
        EXPECT_EQ(Json::parse(imported.out).at("error").at("number"), errors::statementRefused) << imported.out;
        EXPECT_EQ(count("gl_cashtable"), 1);
        EXPECT_EQ(storedText("cCashItem"), "01") << "the rows from before";
    }
}

TEST_F(GuardTest, ALineNumberWithABlankIsHonest) {
    const std::string file = scratch.write("blank.xml", changedRows({{"inid", " 2"}})).string();
    const RunResult imported = run({"import", "2024/1/1/2", file, "--json"});
    EXPECT_EQ(imported.exitCode, 0) << imported.out << imported.err;
    EXPECT_EQ(count("gl_cashtable"), 1);
}

TEST_F(GuardTest, AnOutsideKeyWithTwoQuotesIsNotTheKeyWithOne) {
    change("update gl_accvouch set coutno_id=N'K''1' where ino_id=2");
    change("update gl_accvouch set coutno_id=N'K''''1' where ino_id=4");
    const RunResult saved =
        runProgram({"outside", "save", database.string(), "gl_accvouch", "K''1", "--year", "2024", "--json"});
    EXPECT_EQ(saved.exitCode, 1);
    EXPECT_EQ(Json::parse(saved.out).at("error").at("number"), errors::statementRefused) << saved.out;
    EXPECT_EQ(count("gl_cashtable"), 0);
}

TEST_F(GuardTest, SignsThatEndNoTextAreStoredAsTheyAre) {
    const std::string signs = "付款[1]%_\"--/*;\\{x}";
    change("update gl_accvouch set cdefine1=N'" + signs + "', csign=N'付' where ino_id=2");
    const RunResult saved = run({"save", "2024/1/1/2"});
    EXPECT_EQ(saved.exitCode, 0) << saved.err;
    EXPECT_EQ(storedText("cDefine1"), signs);
    EXPECT_EQ(storedText("csign"), "付");
}

TEST_F(GuardTest, TheSettingsCanSwitchItOff) {
    const std::string settings = scratch.write("off.toml", "guard = false\n").string();
    const RunResult saved = run({"save", "2024/1/1/1", "--json", "--settings", settings});
    EXPECT_EQ(saved.exitCode, 1);
    const Json error = Json::parse(saved.out).at("error");
    EXPECT_NE(error.at("number"), errors::statementRefused) << "now the database itself refuses the statement";
    EXPECT_EQ(count("gl_cashtable"), 0);
}

} // namespace
} // namespace z7::cashflow::host
