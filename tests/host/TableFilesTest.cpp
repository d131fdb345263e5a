#include "host/account/tableFiles.h"

#include "adapters/sqlite/AccountTables.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// An empty account in a temporary folder, with an open transaction.
class TableFilesTest : public testing::Test {
protected:
    TableFilesTest() {
        const auto file = scratch.path() / "a.db";
        sqlite::createDatabase(file);
        connection.Open(sqlite::connectionString(file, 2024));
        connection.BeginTrans();
    }

    LoadedTables load() {
        sqlite::AccountTables tables(connection);
        return loadTableFiles(connection, tables, tableFilesOfFolder(scratch.path() / "csv"), language,
                              [this] { return stop; });
    }

    /// The message of the failure that loading one file raises, without the folder.
    std::string refusalOf(const std::string& name, const std::string& text) {
        connection.RollbackTrans(); // what an earlier case has loaded
        connection.BeginTrans();
        std::filesystem::remove_all(scratch.path() / "csv");
        scratch.write("csv/" + name, text);
        try {
            load();
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.exitCode(), exit_code::usage);
            EXPECT_THAT(failure.faults(), ElementsAre());
            const std::string message = failure.message(language);
            const std::string folder = (scratch.path() / "csv/").string();
            EXPECT_THAT(message, StartsWith(folder));
            return message.substr(folder.size());
        }
        ADD_FAILURE() << "no failure: " << text;
        return {};
    }

    std::string cell(const std::string& statement) {
        const auto records = connection.Execute(statement);
        return records->atEnd() ? "(none)" : toTextOrEmpty(records->Fields().Item(0));
    }

    test::ScratchFolder scratch;
    sqlite::Connection connection;
    Language language = Language::english;
    bool stop = false;
};

TEST_F(TableFilesTest, LoadsFilesNamedAfterTablesInAnyLetterCase) {
    scratch.write("csv/FITEMSS98.CSV", "\xEF\xBB\xBF"
                                       "CItemCode,citemname\r\n0101,\"Sales, \"\"cash\"\"\"\r\n0102,\r\n0103,\"\"\r\n");
    scratch.write("csv/dsign.csv", "isignseq,csign\n1,收\n");
    scratch.write("csv/README.md", "not, a, table\n");
    scratch.write("csv/notes.csv.bak", "neither\n");
    std::filesystem::create_directory(scratch.path() / "csv" / "code.csv");
    const LoadedTables loaded = load();
    EXPECT_EQ(loaded.tables, 2);
    EXPECT_EQ(loaded.records, 4);
    EXPECT_EQ(cell("select citemname from fitemss98 where citemcode=N'0101'"), "Sales, \"cash\"");
    EXPECT_EQ(cell("select citemcode from fitemss98 where citemname is null"), "0102");
    EXPECT_EQ(cell("select citemcode from fitemss98 where citemname=N''"), "0103");
    EXPECT_EQ(cell("select csign from dsign where isignseq=1"), "收");
}

TEST_F(TableFilesTest, LoadsPeriodsIntoTheSystemDatabase) {
    scratch.write("csv/ua_period.csv", "cacc_id,iyear,iid,dbegin,dend\n001,2024,1,2024-01-01,2024-01-31\n");
    EXPECT_EQ(load().records, 1);
    EXPECT_EQ(cell("select iid from zqsystem..ua_period where cacc_id =N'001'"), "1");
}

TEST_F(TableFilesTest, NamesFileLineColumnAndReason) {
    const std::string head = "iyear,ccode,bCashItem,bend,bclose\n";
    EXPECT_THAT(refusalOf("code.csv", head + "2024,1001,1,1,0\n2O24,1002,1,1,0\n"),
                StartsWith("code.csv, line 3, column iyear: "));
    EXPECT_THAT(refusalOf("code.csv", head + "99999,1001,1,1,0\n"), StartsWith("code.csv, line 2, column iyear: "));
    EXPECT_THAT(refusalOf("code.csv", head + "2024,1001,maybe,1,0\n"),
                StartsWith("code.csv, line 2, column bCashItem: "));
    EXPECT_THAT(refusalOf("code.csv", head + "2024," + std::string(41, 'x') + ",1,1,0\n"),
                StartsWith("code.csv, line 2, column ccode: "));
    EXPECT_THAT(refusalOf("code.csv", head + "2024,,1,1,0\n"), StartsWith("code.csv, line 2, column ccode: "));
    EXPECT_THAT(refusalOf("GL_CashItemDataSource.csv", "iyear,cDataSource,bdir,dStartDate\n2024,1001,1,31.01.2024\n"),
                StartsWith("GL_CashItemDataSource.csv, line 2, column dStartDate: "));
    EXPECT_THAT(refusalOf("GL_CashItemDataSource.csv", "iyear,cDataSource,bdir,dStartDate\n2024,1001,1,2023-02-29\n"),
                StartsWith("GL_CashItemDataSource.csv, line 2, column dStartDate: "));
    EXPECT_THAT(refusalOf("code.csv", head + "2024,1001,1,1,0\n2024,1001,1,1,0\n"), StartsWith("code.csv, line 3"));
}

TEST_F(TableFilesTest, ToleratesNoMistakeInTheHeading) {
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,kind\n"),
              "dsign.csv, line 1, column kind: table \"dsign\" has no such column");
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign,ISignSeq\n"),
              "dsign.csv, line 1, column ISignSeq: the column is named twice");
    EXPECT_EQ(refusalOf("dsign.csv", "csign\n"),
              "dsign.csv, line 1, column isignseq: the column is required and missing");
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,,csign\n"), "dsign.csv, line 1: column name 2 is empty");
    EXPECT_EQ(refusalOf("dsign.csv", ""),
              "dsign.csv, line 1: the first line must name the columns, but the file is empty");
    EXPECT_THAT(
        refusalOf("dsign; drop table code.csv", "a\n"),
        StartsWith(
            "dsign; drop table code.csv: the database has no table \"dsign; drop table code\"; its tables are "));
}

TEST_F(TableFilesTest, WordsEveryReasonInTheUsersLanguage) {
    const std::string head = "iyear,ccode,ccode_name,bend\n";
    const std::string line = "code.csv 第 2 行";
    language = Language::chinese;
    EXPECT_EQ(refusalOf("code.csv", "iyear,ccode,kind\n"), "code.csv 第 1 行 kind 列：表“code”没有此列");
    EXPECT_EQ(refusalOf("code.csv", "iyear,ccode,CCODE\n"), "code.csv 第 1 行 CCODE 列：列名出现了两次");
    EXPECT_EQ(refusalOf("code.csv", "iyear\n"), "code.csv 第 1 行 ccode 列：缺少这个必需的列");
    EXPECT_EQ(refusalOf("code.csv", head + "2024,1001\n"), line + "：字段有 2 个，而列名有 4 个");
    EXPECT_EQ(refusalOf("code.csv", head + "2O24,1001,x,1\n"), line + " iyear 列：“2O24”不是 -32768 至 32767 的整数");
    EXPECT_EQ(refusalOf("code.csv", head + ",1001,x,1\n"), line + " iyear 列：此列必须有值");
    EXPECT_EQ(refusalOf("code.csv", head + "2024,1001,x,maybe\n"), line + " bend 列：“maybe”不是 0、1、true 或 false");
    const std::string name(121, 'x');
    EXPECT_EQ(refusalOf("code.csv", head + "2024,1001," + name + ",1\n"),
              line + " ccode_name 列：“" + name.substr(0, 60) + "...”超过 120 个字符");
    EXPECT_EQ(refusalOf("code.csv", head + "2024,1001,x,1\n2024,1001,y,1\n"),
              "code.csv 第 3 行：键 iyear=2024、ccode=1001 已在第 2 行出现");
    EXPECT_EQ(refusalOf("GL_CashItemDataSource.csv", "iyear,cDataSource,bdir,dStartDate\n2024,1001,1,31.01.2024\n"),
              "GL_CashItemDataSource.csv 第 2 行 dStartDate 列：“31.01.2024”不是日期（年份在前）");
    EXPECT_EQ(refusalOf("gl_accvouch.csv", "iyear,iperiod,isignseq,ino_id,inid,ccode,md\n2024,1,1,1,1,1001,\"1,5\"\n"),
              "gl_accvouch.csv 第 2 行 md 列：“1,5”不是数字（不能有千位分隔符）");
}

TEST_F(TableFilesTest, WantsAsManyFieldsAsColumns) {
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign\n1,a\n2,b,c\n"), "dsign.csv, line 3: fields: 3, column names: 2");
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign\n1\n"), "dsign.csv, line 2: fields: 1, column names: 2");
}

TEST_F(TableFilesTest, ReportsWhatIsNotCsv) {
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign\n1,\xCA\xD5\n"),
              "dsign.csv, line 2: the file looks like GB18030 (GBK); save it as CSV UTF-8");
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign\n1,caf\xE9\n"),
              "dsign.csv, line 2: the text is not valid UTF-8; save the file as CSV UTF-8");
    EXPECT_EQ(refusalOf("dsign.csv", std::string("\xFF\xFEi\0", 4)),
              "dsign.csv, line 1: the file looks like UTF-16; save it as CSV UTF-8");
    EXPECT_EQ(refusalOf("dsign.csv", "PK\x03\x04"),
              "dsign.csv, line 1: the file is a spreadsheet document; save it as CSV UTF-8");
    EXPECT_EQ(
        refusalOf("dsign.csv", "isignseq;csign\n1;a\n"),
        "dsign.csv, line 1: the fields seem to be separated by \";\"; separate them by commas, such as by saving as "
        "CSV UTF-8");
    EXPECT_THAT(refusalOf("dsign.csv", "isignseq\tcsign\n1\ta\n"), HasSubstr("seem to be separated by tabs"));
    EXPECT_THAT(refusalOf("dsign.csv", "isignseq,csign\n1,a\"b\n"), HasSubstr("line 2: a quote in an unquoted field"));
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign\n1,\"a\n"), "dsign.csv, line 2: a quoted field is not closed");
    EXPECT_EQ(refusalOf("dsign.csv", std::string("isignseq,csign\n1,\0\n", 19)),
              "dsign.csv, line 2: there is a zero byte");
}

TEST_F(TableFilesTest, RefusesAmountsThatItCannotKeep) {
    const auto reasonFor = [this](const std::string& amount) {
        return refusalOf("gl_accvouch.csv",
                         "iyear,iperiod,isignseq,ino_id,inid,ccode,md\n2024,1,1,1,1,1001," + amount + "\n")
            .substr(std::string("gl_accvouch.csv, line 2, column md: ").size());
    };
    const std::string most = " is too large; the column takes at most 922337203685477.5807";
    EXPECT_EQ(reasonFor("922337203685478"), "\"922337203685478\"" + most);
    EXPECT_EQ(reasonFor("1e308"), "\"1e308\"" + most);
    EXPECT_EQ(reasonFor("-1e999"), "\"-1e999\"" + most);
    const std::string decimals = " has more than four decimals; round it first";
    EXPECT_EQ(reasonFor("1.00005"), "\"1.00005\"" + decimals);
    EXPECT_EQ(reasonFor("-0.00001"), "\"-0.00001\"" + decimals);
    EXPECT_EQ(reasonFor("15e-5"), "\"15e-5\"" + decimals);
    EXPECT_EQ(reasonFor("1.5e-4"), "\"1.5e-4\"" + decimals);
    EXPECT_EQ(reasonFor("--5"), "\"--5\" is not a number (thousands commas are not allowed)");
}

TEST_F(TableFilesTest, TakesAmountsThatFourDecimalsHold) {
    scratch.write("csv/gl_accvouch.csv",
                  "iyear,iperiod,isignseq,ino_id,inid,ccode,md,mc\n"
                  "2024,1,1,1,1,1001,1.2345000,1200e-5\n2024,1,1,1,2,1001,1.23456e1,0.000000e-9\n"
                  "2024,1,1,1,3,1001, 5.5 ,  \n");
    load();
    const auto amounts = connection.Execute("select md,mc from gl_accvouch order by inid");
    EXPECT_EQ(toDouble(amounts->Fields().Item("md")), 1.2345);
    EXPECT_EQ(toDouble(amounts->Fields().Item("mc")), 0.012);
    amounts->MoveNext();
    EXPECT_EQ(toDouble(amounts->Fields().Item("md")), 12.3456);
    amounts->MoveNext();
    EXPECT_EQ(toDouble(amounts->Fields().Item("md")), 5.5);
    EXPECT_TRUE(amounts->Fields().Item("mc").isNull()) << "blanks alone";
}

TEST_F(TableFilesTest, KeepsBlanksAtTheEndsOfTextsButNotOfColumnNames) {
    scratch.write("csv/fitemss98.csv", "citemcode, citemname \n 0101 ,\tSales \n");
    load();
    EXPECT_EQ(cell("select citemcode from fitemss98"), " 0101 ");
    EXPECT_EQ(cell("select citemname from fitemss98"), "\tSales ");
}

TEST_F(TableFilesTest, ReportsAllFaultsAtOnce) {
    scratch.write("csv/code.csv", "iyear,ccode,bend\n2O24,1001,1\n2024,1001,1\n2024,1002,maybe\n2024,1001,0\n");
    scratch.write("csv/dsign.csv", "isignseq,kind\n");
    scratch.write("csv/nothing.csv", "a\n1\n");
    scratch.write("csv/ua_period.csv", "cacc_id,iyear,iid,dbegin,dend\n001,2024,1,2024-01-01,31.01.2024\n");
    try {
        load();
        ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
        const auto fault = [](const char* code, const char* line) {
            return testing::AllOf(testing::Field(&Failure::Fault::code, code),
                                  testing::Field(&Failure::Fault::line, HasSubstr(line)));
        };
        EXPECT_THAT(
            failure.faults(),
            ElementsAre(fault("not-a-whole-number", "code.csv, line 2, column iyear: "),
                        fault("not-a-truth", "code.csv, line 4, column bend: "),
                        fault("key-taken", "code.csv, line 5: the key iyear=2024, ccode=1001 is already on line 3"),
                        fault("column-unknown", "dsign.csv, line 1, column kind: "),
                        fault("csv-no-table", "nothing.csv: the database has no table \"nothing\""),
                        fault("not-a-date", "ua_period.csv, line 2, column dend: ")));
        EXPECT_EQ(failure.message(language), "6 faults, see above; nothing was created");
    }
}

TEST_F(TableFilesTest, ReportsNoMoreThanFiftyFaults) {
    std::string text = "isignseq,csign\n";
    for (int i = 0; i < 60; ++i) {
        text += "x,a\n";
    }
    scratch.write("csv/dsign.csv", text);
    try {
        load();
        ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.faults().size(), 50U);
        EXPECT_EQ(failure.message(language),
                  "the first 50 faults, see above, and there may be more; nothing was created");
    }
}

TEST_F(TableFilesTest, NamesADoubleKeyThatNoLineOfTheFileHas) {
    connection.Execute("insert into fitemss98 (citemcode,citemname) values (N'1',N'a')");
    scratch.write("csv/fitemss98.csv", "citemcode,citemname\n2,b\n1,c\n");
    try {
        load();
        ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_THAT(failure.message(language), HasSubstr("line 3: the key citemcode=1 is in the table already"));
    }
}

TEST_F(TableFilesTest, TakesTheValueAsItStands) {
    scratch.write("csv/dsign.csv", "isignseq,csign\n1,'); drop table dsign; --\n");
    load();
    EXPECT_EQ(cell("select csign from dsign"), "'); drop table dsign; --");
}

TEST_F(TableFilesTest, RefusesTwoFilesForOneTable) {
    scratch.write("csv/dsign.csv", "isignseq\n1\n");
    scratch.write("csv/DSIGN.csv", "isignseq\n2\n");
    try {
        load();
        ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_THAT(failure.message(Language::english), HasSubstr("there are two files for table \"dsign\""));
    }
}

TEST_F(TableFilesTest, RefusesAFolderWithoutTables) {
    EXPECT_THROW(static_cast<void>(tableFilesOfFolder(scratch.path() / "missing")), Failure);
    EXPECT_THROW(static_cast<void>(tableFilesOfFolder(scratch.write("file", "x"))), Failure);
    std::filesystem::create_directory(scratch.path() / "empty");
    EXPECT_THROW(static_cast<void>(tableFilesOfFolder(scratch.path() / "empty")), Failure);
}

TEST_F(TableFilesTest, StopsWhenAsked) {
    scratch.write("csv/dsign.csv", "isignseq\n1\n");
    stop = true;
    EXPECT_THROW(load(), Interrupted);
}

TEST_F(TableFilesTest, TheSampleIsAFolderLikeAnyOther) {
    std::vector<std::string> names;
    for (const TableFile& file : tableFilesOfSample()) {
        names.push_back(file.shownName);
    }
    EXPECT_THAT(names, ElementsAre("GL_CashItemDataSource.csv", "GL_VouchDraft.csv", "GL_VoucherOption.csv",
                                   "accinformation.csv", "code.csv", "dsign.csv", "fitemss98.csv", "gl_accvouch.csv",
                                   "gl_cashtable.csv", "sales_voucher.csv", "ua_period.csv"));
}

} // namespace
} // namespace z7::cashflow::host
