// What the commands report about faulty vouchers: every command reports the same, and nothing is changed.

#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <map>

namespace z7::cashflow::host {
namespace {

using Json = nlohmann::json;
using testing::HasSubstr;
using testing::Not;

/// A small account of the years 2023 and 2024, with a cash account and templates for 6001 credit and 6602 debit.
class VoucherCommandsTest : public testing::Test {
protected:
    VoucherCommandsTest() { make("account.db", "GL,bXJLL,True\n", "001"); }

    void make(const std::string& name, const std::string& option, const std::string& periodsOf) {
        database = scratch.path() / name;
        const std::string folder = (scratch.path() / (name + ".tables")).string();
        const auto write = [&](const std::string& table, const std::string& text) {
            scratch.write(name + ".tables/" + table + ".csv", text);
        };
        write("accinformation", "csysid,cname,cvalue\nGL,bCashCode,False\nGL,bAutoDisplay,False\n" + option);
        write("code", "iyear,ccode,ccode_name,bCashItem,bend,bclose\n2023,1001,Cash,1,1,0\n2023,6001,Sales,0,1,0\n"
                      "2024,1001,Cash,1,1,0\n2024,6001,Sales,0,1,0\n2024,6602,Costs,0,1,0\n2024,6603,Fees,0,1,0\n");
        write("fitemss98", "citemcode,citemname\n0101,Sales\n0114,Other\n");
        write("dsign", "isignseq,csign\n1,R\n");
        write("ua_period", "cacc_id,iyear,iid,dbegin,dend\n" + periodsOf + ",2023,1,2023-01-01,2023-12-31\n" +
                               periodsOf + ",2024,1,2024-01-01,2024-06-30\n" + periodsOf +
                               ",2024,2,2024-07-01,2024-12-31\n");
        write("GL_CashItemDataSource", "iyear,bDataStyle,cDataSource,bdir,cItemCode\n2023,0,6001,0,0101\n"
                                       "2024,0,6001,0,0101\n2024,0,6602,1,0114\n");
        write("gl_accvouch", "iyear,iperiod,isignseq,ino_id,inid,dbill_date,csign,ccode,md,mc,citem_class,citem_id\n" +
                                 receipt(2024, 1, "2024-01-02", "70") + receipt(2024, 2, "2024-02-02", "30"));
        const RunResult made = runProgram({"init", database.string(), "--from", folder});
        EXPECT_EQ(made.exitCode, 0) << made.err;
    }

    /// A cash sale: line 1 on 1001 debit, line 2 on 6001 credit.
    static std::string receipt(int year, int number, const std::string& date, const std::string& amount) {
        const std::string key = std::to_string(year) + ",1,1," + std::to_string(number) + ",";
        return key + "1," + date + ",R,1001," + amount + ",0,,\n" + key + "2," + date + ",R,6001,0," + amount + ",,\n";
    }

    void sql(const std::string& statement) const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(database, 2024));
        connection.Execute(statement);
    }

    [[nodiscard]] std::string rows(const std::string& condition = "1=1") const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(database, 2024));
        const auto records = connection.Execute("select iYear,iNo_id,inid,cCashItem,md,mc from gl_cashtable where " +
                                                condition + " order by iYear,iNo_id,inid,cCashItem,md,mc");
        std::string text;
        for (; !records->atEnd(); records->MoveNext()) {
            for (int i = 0; i < records->Fields().Count(); ++i) {
                text += (i == 0 ? "" : " ") + toText(records->Fields().Item(i));
            }
            text += "\n";
        }
        return text;
    }

    [[nodiscard]] RunResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin() + 1, database.string());
        return runProgram(arguments);
    }

    [[nodiscard]] std::map<std::string, Json> resultsOf(const std::vector<std::string>& arguments, int exitCode) const {
        const RunResult result = run(arguments);
        EXPECT_EQ(result.exitCode, exitCode) << result.err;
        std::map<std::string, Json> results;
        for (const std::string& line : result.lines()) {
            results[Json::parse(line).at("voucher")] = Json::parse(line);
        }
        return results;
    }

    /// Every command refuses the voucher with that number and text, and changes nothing.
    void expectRefusedByAll(const std::string& key, int number, const std::string& words) const {
        const std::string before = rows();
        const std::string document = scratch.write("rows.xml", "<root><rows></rows></root>").string();
        for (const std::vector<std::string>& command :
             std::vector<std::vector<std::string>>{{"rows", key},
                                                   {"rows", key, "--generate"},
                                                   {"export", key},
                                                   {"export", key, "--generate"},
                                                   {"save", key},
                                                   {"import", key, document, "--force"}}) {
            const RunResult refused = run(command);
            EXPECT_EQ(refused.exitCode, 1) << testing::PrintToString(command);
            EXPECT_THAT(refused.err, HasSubstr("Error " + std::to_string(number))) << testing::PrintToString(command);
            EXPECT_THAT(refused.err, HasSubstr(words)) << testing::PrintToString(command);
            EXPECT_EQ(refused.out, "") << testing::PrintToString(command);
        }
        const RunResult check = run({"check", key});
        EXPECT_EQ(check.exitCode, 1);
        EXPECT_THAT(check.out, HasSubstr(words));
        const RunResult asJson = run({"check", key, "--json"});
        EXPECT_EQ(Json::parse(asJson.out).at("verdict"), "refused");
        EXPECT_EQ(Json::parse(asJson.out).at("error").at("number"), number);
        const auto allotted = resultsOf({"allot", "--year", "2024", "--json"}, 1);
        EXPECT_EQ(allotted.at(key).at("outcome"), "refused");
        EXPECT_EQ(allotted.at(key).at("error").at("number"), number);
        EXPECT_THAT(allotted.at(key).at("error").at("description").get<std::string>(), HasSubstr(words));
        const auto listed = resultsOf({"vouchers", "--year", "2024", "--json"}, 1);
        EXPECT_EQ(listed.at(key).at("error").at("number"), number);
        EXPECT_TRUE(listed.at(key).at("cashSum").is_null());
        EXPECT_TRUE(listed.at(key).at("needed").is_null());
        EXPECT_THAT(run({"vouchers", "--year", "2024"}).err, HasSubstr(words));
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    test::ScratchFolder scratch;
    std::filesystem::path database;
};

TEST_F(VoucherCommandsTest, AVoucherDatedInAnotherYearIsRefusedAndTheOtherYearsRowsStay) {
    sql("insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,csign,ccode,md,mc) values "
        "(2023,1,1,1,1,'2023-01-09',N'R',N'1001',100,0)");
    sql("insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,csign,ccode,md,mc) values "
        "(2023,1,1,1,2,'2023-01-09',N'R',N'6001',0,100)");
    ASSERT_EQ(run({"allot", "--year", "2023"}).exitCode, 0);
    const std::string before = rows("iYear=2023");
    ASSERT_EQ(before, "2023 1 2 0101 0 100\n");
    sql("update gl_accvouch set dbill_date='2023-01-09' where iyear=2024 and ino_id=1");
    expectRefusedByAll("2024/1/1/1", 10021, "Line 1 is dated 2023-01-09, outside the accounting periods of 2024");
    EXPECT_EQ(rows("iYear=2023"), before);
    EXPECT_EQ(rows("iYear=2024"), "2024 2 2 0101 0 30\n") << "the other voucher of the run is stored";
}

TEST_F(VoucherCommandsTest, AVoucherWithoutADateIsRefused) {
    sql("update gl_accvouch set dbill_date=null where iyear=2024 and ino_id=1");
    expectRefusedByAll("2024/1/1/1", 10021, "The voucher has no date; enter its dbill_date.");
    EXPECT_THAT(run({"check", "2024/1/1/1", "--lang", "zh-CN"}).out, HasSubstr("凭证没有制单日期"));
}

TEST_F(VoucherCommandsTest, ASecondLineInAnotherYearIsFoundToo) {
    sql("update gl_accvouch set dbill_date='2025-01-01' where iyear=2024 and ino_id=1 and inid=2");
    expectRefusedByAll("2024/1/1/1", 10021, "Line 2 is dated 2025-01-01");
}

TEST_F(VoucherCommandsTest, ALineWithoutAnAmountIsTheSameRefusalEverywhere) {
    sql("update gl_accvouch set mc=null,md=null where iyear=2024 and ino_id=1 and inid=1");
    for (const std::vector<std::string>& command :
         std::vector<std::vector<std::string>>{{"save", "2024/1/1/1"}, {"rows", "2024/1/1/1", "--generate"}}) {
        const RunResult refused = run(command);
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_THAT(refused.err, HasSubstr("Error 94: Line 1: 1001 has no debit amount; enter 0 if there is none."));
    }
    const RunResult check = run({"check", "2024/1/1/1", "--json"});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_EQ(Json::parse(check.out).at("error").at("number"), 94);
    EXPECT_EQ(resultsOf({"allot", "--year", "2024", "--json"}, 1).at("2024/1/1/1").at("error").at("number"), 94);
    EXPECT_EQ(resultsOf({"vouchers", "--year", "2024", "--json"}, 1).at("2024/1/1/1").at("error").at("number"), 94);
    EXPECT_THAT(run({"rows", "2024/1/1/1"}).out, HasSubstr("cannot be processed: Line 1"));
}

TEST_F(VoucherCommandsTest, AnAmountThatIsMissingOnOneSideOfACashLineIsRefusedEvenWhereRowsAreStored) {
    ASSERT_EQ(run({"save", "2024/1/1/1"}).exitCode, 0);
    sql("update gl_accvouch set mc=null where iyear=2024 and ino_id=1 and inid=1");
    for (const char* command : {"check", "save"}) {
        const RunResult refused = run({command, "2024/1/1/1"});
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_THAT(refused.out + refused.err, HasSubstr("Line 1: 1001 has no credit amount")) << command;
    }
    sql("update gl_accvouch set mc=0 where iyear=2024 and ino_id=1 and inid=1");
    EXPECT_EQ(run({"check", "2024/1/1/1"}).exitCode, 0);
}

TEST_F(VoucherCommandsTest, AnItemOfATemplateThatDoesNotExistIsNotStored) {
    sql("update GL_CashItemDataSource set cItemCode=N'9999' where cDataSource=N'6001'");
    const auto results = resultsOf({"allot", "--year", "2024", "--json"}, 1);
    const Json& error = results.at("2024/1/1/1").at("error");
    EXPECT_EQ(error.at("number"), 10022);
    EXPECT_EQ(error.at("description"), "Line 2: cash-flow item 9999 (from the template of 6001 "
                                       "credit) does not exist; correct it there, or add the item to fitemss98.");
    EXPECT_EQ(error.at("findings")[0].at("origin"), "template");
    EXPECT_EQ(rows(), "") << "the save was rolled back";
}

TEST_F(VoucherCommandsTest, AnItemOfTheLineThatDoesNotExistIsNotStored) {
    sql("update gl_accvouch set citem_class=N'98',citem_id=N'8888' where ino_id=1 and inid=2");
    const RunResult refused = run({"save", "2024/1/1/1"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("Line 2: cash-flow item 8888 (from the line's auxiliary item) does not exist"));
    EXPECT_EQ(rows(), "");
}

TEST_F(VoucherCommandsTest, AnItemOfADocumentThatDoesNotExistIsNotStored) {
    ASSERT_EQ(run({"save", "2024/1/1/1"}).exitCode, 0);
    std::string document = run({"export", "2024/1/1/1"}).out;
    const std::size_t item = document.find("cCashItem='0101'");
    ASSERT_NE(item, std::string::npos);
    document.replace(item, 16, "cCashItem='9999'");
    const std::string file = scratch.write("rows.xml", document).string();
    const std::string before = rows();
    const RunResult refused = run({"import", "2024/1/1/1", file});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("cash-flow item 9999 (from the document) does not exist"));
    EXPECT_EQ(rows(), before);
}

TEST_F(VoucherCommandsTest, StoredRowsThatNoReaderFindsAreKeptAndNamed) {
    sql("insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode) values "
        "(N'A',2024,1,1,N'R',1,2,N'7777',0,70,N'6001')");
    const std::string before = rows();
    for (const char* command : {"check", "save"}) {
        const RunResult refused = run({command, "2024/1/1/1"});
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_THAT(refused.out + refused.err,
                    HasSubstr("Line 2: cash-flow item 7777 (from the stored row) does not exist"));
    }
    EXPECT_EQ(rows(), before) << "somebody's work is not overwritten";
    const std::string file = scratch.write("rows.xml", run({"export", "2024/1/1/1", "--generate"}).out).string();
    EXPECT_EQ(run({"import", "2024/1/1/1", file}).exitCode, 0) << "a document replaces them";
    EXPECT_EQ(rows(), "2024 1 2 0101 0 70\n");
}

TEST_F(VoucherCommandsTest, ImportRefusesADocumentThatHoldsNoRows) {
    make("loose.db", "GL,bXJLL,False\n", "001");
    ASSERT_EQ(run({"save", "2024/1/1/1"}).exitCode, 0);
    const std::string before = rows();
    for (const char* text : {"<html><body>x</body></html>", "<root/>", "<root><row/></root>", "<rows/>"}) {
        const RunResult refused = run({"import", "2024/1/1/1", scratch.write("page.xml", text).string()});
        EXPECT_EQ(refused.exitCode, 1) << text;
        EXPECT_THAT(refused.err, HasSubstr("Error 10023: The document does not contain cash-flow rows")) << text;
        EXPECT_EQ(rows(), before) << text;
    }
}

TEST_F(VoucherCommandsTest, ImportOfNoRowsSaysWhatItRemovedAndThatTheVoucherDoesNotMatchNow) {
    make("loose.db", "GL,bXJLL,False\n", "001");
    ASSERT_EQ(run({"save", "2024/1/1/1"}).exitCode, 0);
    const std::string file = scratch.write("none.xml", "<root><rows/></root>").string();
    const RunResult emptied = run({"import", "2024/1/1/1", file});
    EXPECT_EQ(emptied.exitCode, 0) << emptied.err;
    EXPECT_THAT(emptied.out, HasSubstr("Voucher 2024/1/R/1: rows removed: 1, none stored.\n"));
    EXPECT_THAT(emptied.out, HasSubstr("The rows do not match the voucher: The voucher moves 70.00 debit in cash, its "
                                       "rows 0.00: 70.00 debit is not allocated."));
    EXPECT_EQ(rows(), "");
}

TEST_F(VoucherCommandsTest, ImportRefusesTheRowsOfAnotherVoucherUnlessForced) {
    ASSERT_EQ(run({"allot", "--year", "2024"}).exitCode, 0);
    sql("update gl_accvouch set md=30 where ino_id=1 and md=70");
    sql("update gl_accvouch set mc=30 where ino_id=1 and mc=70");
    const std::string before = rows();
    const std::string file = scratch.write("rows.xml", run({"export", "2024/1/1/2"}).out).string();
    const RunResult refused = run({"import", "2024/1/1/1", file});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("Error 10023: The document contains rows of voucher ?/1/1/2; --force stores"));
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(run({"import", "2024/1/1/1", file, "--force"}).exitCode, 0);
    EXPECT_EQ(rows(), "2024 1 2 0101 0 30\n2024 2 2 0101 0 30\n");
}

TEST_F(VoucherCommandsTest, ASumThatDoesNotMatchIsReportedIfItMayBeStored) {
    make("loose.db", "GL,bXJLL,False\n", "001");
    ASSERT_EQ(run({"save", "2024/1/1/1"}).exitCode, 0);
    std::string document = run({"export", "2024/1/1/1"}).out;
    const std::size_t amount = document.find("mc='70'");
    ASSERT_NE(amount, std::string::npos) << document;
    document.replace(amount, 7, "mc='1'");
    const std::string file = scratch.write("rows.xml", document).string();
    const RunResult stored = run({"import", "2024/1/1/1", file});
    EXPECT_EQ(stored.exitCode, 0) << stored.err;
    EXPECT_THAT(stored.out,
                HasSubstr("rows stored: 1.\nchanged 1\nThe rows do not match the voucher: The voucher moves 70.00 "
                          "debit in cash, its rows 1.00 debit: 69.00 debit is not allocated."));
    const Json json = Json::parse(run({"import", "2024/1/1/1", file, "--json"}).out);
    EXPECT_EQ(json.at("outcome"), "stored");
    EXPECT_EQ(json.at("mismatch").at("number"), 10009);
}

TEST_F(VoucherCommandsTest, EveryCommandReportsAnAccountWithoutPeriodsInTheSameWay) {
    make("other.db", "GL,bXJLL,True\n", "005");
    sql("insert into zqsystem..ua_period (cacc_id,iyear,iid,dbegin,dend) values (N'006',2024,1,'2024-01-01','2024-12-31')");
    for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{{"vouchers", "--year", "2024"},
                                                                                         {"allot", "--year", "2024"},
                                                                                         {"rows", "2024/1/1/1"},
                                                                                         {"check", "2024/1/1/1"},
                                                                                         {"save", "2024/1/1/1"},
                                                                                         {"export", "2024/1/1/1"}}) {
        const RunResult refused = run(command);
        EXPECT_EQ(refused.exitCode, 3) << testing::PrintToString(command);
        EXPECT_EQ(refused.err, "z7cf: Account 001 has no accounting periods; check the account in the settings and the "
                               "table ua_period\n");
        EXPECT_EQ(refused.out, "");
    }
    EXPECT_EQ(rows(), "");
}

TEST_F(VoucherCommandsTest, AYearWithVouchersButWithoutPeriodsIsReportedWithTheExistingYears) {
    sql("delete from zqsystem..ua_period where iyear=2024");
    for (const char* command : {"vouchers", "allot"}) {
        const RunResult refused = run({command, "--year", "2024"});
        EXPECT_EQ(refused.exitCode, 3);
        EXPECT_THAT(refused.err, HasSubstr("Account 001 has no accounting periods for 2024, only for 2023;"));
    }
}

TEST_F(VoucherCommandsTest, AMissingPeriodRefusesItsVouchersInEveryList) {
    sql("delete from zqsystem..ua_period where iyear=2024 and iid=1");
    const auto allotted = resultsOf({"allot", "--year", "2024", "--json"}, 1);
    const auto listed = resultsOf({"vouchers", "--year", "2024", "--json"}, 1);
    ASSERT_EQ(allotted.size(), 2U);
    for (const auto& [key, result] : allotted) {
        EXPECT_EQ(result.at("error").at("number"), 10021);
        EXPECT_EQ(listed.at(key).at("error"), result.at("error")) << "the same words";
    }
}

TEST_F(VoucherCommandsTest, AYearOrPeriodThatTheAccountLacksIsAMistakeOfTheCommandLine) {
    for (const char* command : {"vouchers", "allot"}) {
        const RunResult year = run({command, "--year", "2030"});
        EXPECT_EQ(year.exitCode, 2);
        EXPECT_EQ(year.err, "z7cf: Account 001 has no accounting year 2030; it has 2023, 2024\n");
        for (const char* period : {"99", "1-99", "3"}) {
            const RunResult refused = run({command, "--year", "2024", "--period", period});
            EXPECT_EQ(refused.exitCode, 2) << period;
            EXPECT_THAT(refused.err, HasSubstr("The accounting year 2024 has no period "));
            EXPECT_THAT(refused.err, HasSubstr("; it has 1, 2\n"));
        }
        const RunResult none = run({command, "--year", "2024", "--period", "2"});
        EXPECT_EQ(none.exitCode, 0) << "a period without vouchers is none of these";
        EXPECT_THAT(none.err, HasSubstr("There are no vouchers."));
    }
}

TEST_F(VoucherCommandsTest, ARangeOfPeriodsIsTaken) {
    sql("update gl_accvouch set iperiod=2,dbill_date='2024-07-05' where ino_id=2");
    EXPECT_EQ(resultsOf({"allot", "--year", "2024", "--period", "1-2", "--json"}, 0).size(), 2U);
    EXPECT_EQ(resultsOf({"vouchers", "--year", "2024", "--period", "2-2", "--json"}, 0).size(), 1U);
    for (const char* period : {"2-1", "1-", "-2", "1-2-3", "a", "1,2", "256", "1 - 2", ""}) {
        const RunResult refused = run({"allot", "--year", "2024", std::string("--period=") + period});
        EXPECT_EQ(refused.exitCode, 2) << period << refused.err;
    }
}

TEST_F(VoucherCommandsTest, AKeyOutOfRangeNamesThePart) {
    EXPECT_EQ(run({"rows", "2024/256/1/1"}).err,
              "z7cf: In the voucher key \"2024/256/1/1\" the period must be 0 to 255\n");
    EXPECT_EQ(run({"rows", "2024/1/32768/1"}).err,
              "z7cf: In the voucher key \"2024/1/32768/1\" the kind must be 0 to 32767\n");
    EXPECT_EQ(run({"rows", "0/1/1/1"}).exitCode, 2);
}

TEST_F(VoucherCommandsTest, ARefusalNamesLineAccountSideDifferenceAndRemedy) {
    sql("update gl_accvouch set ccode=N'6603' where ino_id=1 and inid=2");
    const RunResult refused = run({"save", "2024/1/1/1"});
    EXPECT_EQ(refused.err,
              "z7cf: Error 10009: The voucher moves 70.00 debit in cash, its rows 0.00: 70.00 debit is not "
              "allocated. Line 2: 6603 credit 70.00 has no template: add one to GL_CashItemDataSource, or "
              "enter the item on the line.\n");
    const RunResult chinese = run({"save", "2024/1/1/1", "--lang", "zh-CN"});
    EXPECT_EQ(chinese.err, "z7cf: 错误 10009：凭证现金净额为借方 70.00，现金流量行合计为0.00，借方 70.00 未分配。"
                           "第 2 条分录：科目 6603 贷方 70.00 没有取数关系，请在 GL_CashItemDataSource 中增加，"
                           "或在分录上录入现金流量项目。\n");
}

TEST_F(VoucherCommandsTest, RowsThatAreStoredTwiceAreNamedAsSuch) {
    ASSERT_EQ(run({"save", "2024/1/1/1"}).exitCode, 0);
    sql("insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode) select "
        "N'DOUBLE',iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode from gl_cashtable");
    const RunResult check = run({"check", "2024/1/1/1"});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_THAT(check.out, HasSubstr("its rows 140.00 debit: 70.00 debit too much is allocated."));
    EXPECT_THAT(check.out, HasSubstr("1 rows are stored twice; without the duplicates the rows match."));
    const Json json = Json::parse(run({"check", "2024/1/1/1", "--json"}).out);
    EXPECT_EQ(json.at("error").at("findings")[1].at("kind"), "rows-doubled");
}

TEST_F(VoucherCommandsTest, SplitRowsThatHappenToBeEqualAreNotCalledDoubled) {
    ASSERT_EQ(run({"save", "2024/1/1/1"}).exitCode, 0);
    sql("update gl_cashtable set mc=30");
    sql("insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode) select "
        "N'HALF',iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode from gl_cashtable");
    const RunResult check = run({"check", "2024/1/1/1"});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_THAT(check.out, Not(HasSubstr("twice")));
    EXPECT_THAT(check.out, HasSubstr("10.00 debit is not allocated"));
}

/// Records how often it is flushed, and what was written by then.
class FlushedBuffer final : public std::stringbuf {
public:
    std::vector<std::string> flushed;

protected:
    int sync() override {
        flushed.push_back(str());
        return 0;
    }
};

TEST_F(VoucherCommandsTest, AllotHandsEachLineOfJsonToItsReaderAtOnce) {
    FlushedBuffer buffer;
    std::istringstream in;
    std::ostream out(&buffer);
    std::ostringstream err;
    ASSERT_EQ(runApplication({"allot", database.string(), "--year", "2024", "--json"}, Console{in, out, err}), 0);
    ASSERT_GE(buffer.flushed.size(), 2U);
    EXPECT_THAT(buffer.flushed.front(), HasSubstr("2024/1/1/1"));
    EXPECT_THAT(buffer.flushed.front(), Not(HasSubstr("2024/1/1/2"))) << "the second voucher is not done yet";
}

} // namespace
} // namespace z7::cashflow::host
