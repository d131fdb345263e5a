#include "host/account/tableFiles.h"

#include "ScratchFolder.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/TableLoader.h"
#include "adapters/sqlite/database.h"
#include "host/cli/ExitCode.h"
#include "host/cli/Failure.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// An empty account in a folder of its own, with a transaction open.
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
        connection.RollbackTrans(); // what the case before has loaded
        connection.BeginTrans();
        std::filesystem::remove_all(scratch.path() / "csv");
        scratch.write("csv/" + name, text);
        try {
            load();
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.exitCode(), exitCode::usage);
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
        return records->EndOfFile() ? "(none)" : toTextOrEmpty(records->Fields().Item(0));
    }

    ScratchFolder scratch;
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
              "dsign.csv, line 1, column isignseq: the column is required and is not there");
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,,csign\n"), "dsign.csv, line 1: column name 2 is empty");
    EXPECT_EQ(refusalOf("dsign.csv", ""),
              "dsign.csv, line 1: the first line must name the columns, but the file is empty");
    EXPECT_THAT(
        refusalOf("dsign; drop table code.csv", "a\n"),
        StartsWith(
            "dsign; drop table code.csv, line 1: the database has no table \"dsign; drop table code\"; tables are "));
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
    EXPECT_THAT(refusalOf("code.csv", head + "2024,1001,x,1\n2024,1001,y,1\n"),
                StartsWith("code.csv 第 3 行：数据库拒绝这一行："));
    EXPECT_EQ(refusalOf("GL_CashItemDataSource.csv", "iyear,cDataSource,bdir,dStartDate\n2024,1001,1,31.01.2024\n"),
              "GL_CashItemDataSource.csv 第 2 行 dStartDate 列：“31.01.2024”不是日期（年份在前）");
    EXPECT_EQ(refusalOf("gl_accvouch.csv", "iyear,iperiod,isignseq,ino_id,inid,ccode,md\n2024,1,1,1,1,1001,\"1,5\"\n"),
              "gl_accvouch.csv 第 2 行 md 列：“1,5”不是数字（不能有千位分隔符）");
}

TEST_F(TableFilesTest, WantsAsManyFieldsAsColumns) {
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign\n1,a\n2,b,c\n"),
              "dsign.csv, line 3: the number of fields is 3, that of the column names 2");
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign\n1\n"),
              "dsign.csv, line 2: the number of fields is 1, that of the column names 2");
}

TEST_F(TableFilesTest, TellsWhatIsNoCsv) {
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign\n1,\xCA\xD5\n"), "dsign.csv, line 2: the text is no valid UTF-8");
    EXPECT_THAT(refusalOf("dsign.csv", "isignseq,csign\n1,a\"b\n"),
                HasSubstr("line 2: a quote stands where none may be"));
    EXPECT_EQ(refusalOf("dsign.csv", "isignseq,csign\n1,\"a\n"), "dsign.csv, line 2: a quoted field is not closed");
    EXPECT_EQ(refusalOf("dsign.csv", std::string("isignseq,csign\n1,\0\n", 19)),
              "dsign.csv, line 2: there is a zero byte");
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
