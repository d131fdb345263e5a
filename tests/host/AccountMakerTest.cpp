#include "host/account/accountMaker.h"

#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/FaultyDisk.h"
#include "adapters/sqlite/database.h"
#include "doubles/ChildProcess.h"
#include "doubles/ScratchFolder.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <vector>

namespace z7::cashflow::host {
namespace {

const std::function<bool()> neverStop = [] { return false; };

TableFile fileWith(const std::string& table, const std::string& text) {
    return {table, table + ".csv", [text] { return std::make_unique<std::istringstream>(text); }};
}

std::set<std::string> namesIn(const std::filesystem::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

std::string optionOf(const std::filesystem::path& database, const std::string& name) {
    sqlite::Connection connection;
    connection.Open(sqlite::connectionString(database));
    const auto option = connection.Execute("select cvalue,cdefault from accinformation where cname=N'" + name + "'");
    return option->atEnd() ? "(none)"
                           : toTextOrEmpty(option->Fields().Item("cvalue")) + "/" +
                                 toTextOrEmpty(option->Fields().Item("cdefault"));
}

class AccountMakerTest : public testing::Test {
protected:
    test::ScratchFolder scratch;
    std::filesystem::path file = scratch.path() / "company.db";
    std::set<std::string> bothFiles{"company.db", "company.zqsystem.db"};
};

TEST_F(AccountMakerTest, MakesAnEmptyAccountAndNothingElse) {
    const LoadedTables loaded = makeAccount(file, {}, {}, Language::english, neverStop);
    EXPECT_EQ(loaded.tables, 0);
    EXPECT_EQ(namesIn(scratch.path()), bothFiles);
    EXPECT_EQ(optionOf(file, "bCashCode"), "(none)");
}

TEST_F(AccountMakerTest, OptionsTakeThePlaceOfThoseOfTheFiles) {
    const std::string options = "csysid,cname,cvalue,cdefault\nGL,bCashCode,False,False\nGL,bXJLL,True,False\n";
    makeAccount(file, {fileWith("accinformation", options)},
                readAccountOptions({"bcashcode=TRUE", "bAutoDisplay=false"}), Language::english, neverStop);
    EXPECT_EQ(optionOf(file, "bCashCode"), "True/False");
    EXPECT_EQ(optionOf(file, "bAutoDisplay"), "False/");
    EXPECT_EQ(optionOf(file, "bXJLL"), "True/False");
}

TEST_F(AccountMakerTest, ABadFileLeavesNothingBehind) {
    EXPECT_THROW(makeAccount(file, {fileWith("dsign", "isignseq\n1\n"), fileWith("fitemss98", "citemcode\n1\n1\n")}, {},
                             Language::english, neverStop),
                 Failure);
    EXPECT_EQ(namesIn(scratch.path()), std::set<std::string>{});
}

TEST_F(AccountMakerTest, AnInterruptionLeavesNothingBehind) {
    int asked = 0;
    EXPECT_THROW(makeAccount(file, {fileWith("dsign", "isignseq\n1\n2\n3\n")}, {}, Language::english,
                             [&asked] { return ++asked > 2; }),
                 Interrupted);
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(namesIn(scratch.path()), std::set<std::string>{});
}

TEST_F(AccountMakerTest, ADiskThatFillsUpLeavesNothingOrAWholeAccount) {
    using sqlite::FaultyDisk;
    FaultyDisk disk;
    disk.failFrom(1000000, FaultyDisk::Fault::full);
    const std::int64_t records = makeAccount(file, tableFilesOfSample(), {}, Language::english, neverStop).records;
    const int calls = FaultyDisk::calls();
    scratch.clear();
    constexpr int wholeNumberOfRuns = 60;
    const int stride = std::max(1, calls / wholeNumberOfRuns);
    int refused = 0;
    // The last calls one by one, because there the log is written to the file.
    for (int call = 1; call <= calls + 1; call += call > calls - 20 ? 1 : stride) {
        bool created = false;
        disk.failFrom(call, call % 2 == 0 ? FaultyDisk::Fault::full : FaultyDisk::Fault::growsNoMore);
        try {
            EXPECT_EQ(makeAccount(file, tableFilesOfSample(), {}, Language::english, neverStop).records, records);
            created = true;
        } catch (const Failure&) {
            ++refused;
        } catch (const Error&) {
            ++refused;
        }
        disk.failFrom(1000000, FaultyDisk::Fault::full);
        if (created) {
            EXPECT_EQ(namesIn(scratch.path()), bothFiles) << call;
            EXPECT_EQ(optionOf(file, "bXJLL"), "True/False") << call;
            scratch.clear();
        }
        ASSERT_EQ(namesIn(scratch.path()), std::set<std::string>{}) << call;
    }
    EXPECT_GT(refused, wholeNumberOfRuns / 2);
}

TEST_F(AccountMakerTest, TwoProgramsThatMakeOneAccountMakeItOnce) {
    std::vector<test::ChildProcess> programs;
    for (int i = 0; i < 4; ++i) {
        programs.emplace_back([&, i] {
            try {
                makeAccount(file, {fileWith("fitemss98", "citemcode\n" + std::to_string(i) + "\n")}, {},
                            Language::english, neverStop);
                return 0;
            } catch (const Failure& failure) {
                return failure.exitCode() == exit_code::usage ? 1 : 2;
            }
        });
    }
    int made = 0;
    for (test::ChildProcess& program : programs) {
        const int code = program.wait();
        ASSERT_TRUE(code == 0 || code == 1) << code;
        made += code == 0 ? 1 : 0;
    }
    EXPECT_EQ(made, 1);
    EXPECT_EQ(namesIn(scratch.path()), bothFiles);
    sqlite::Connection connection;
    connection.Open(sqlite::connectionString(file));
    EXPECT_EQ(connection.Execute("select * from fitemss98")->RecordCount(), 1);
}

TEST_F(AccountMakerTest, OverwritesNothing) {
    for (const char* name : {"company.db", "company.zqsystem.db"}) {
        const test::ScratchFolder folder;
        folder.write(name, "precious");
        try {
            makeAccount(folder.path() / "company.db", {}, {}, Language::english, neverStop);
            ADD_FAILURE() << "no failure for " << name;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.exitCode(), exit_code::usage);
            EXPECT_THAT(failure.message(Language::english), testing::HasSubstr(name));
        }
        EXPECT_EQ(namesIn(folder.path()), std::set<std::string>{name});
        EXPECT_EQ(std::filesystem::file_size(folder.path() / name), 8U);
    }
}

TEST_F(AccountMakerTest, DoesNotFollowALinkThatLeadsNowhere) {
    std::filesystem::create_symlink(scratch.path() / "elsewhere.db", file);
    EXPECT_THROW(makeAccount(file, {}, {}, Language::english, neverStop), Failure);
    EXPECT_EQ(namesIn(scratch.path()), std::set<std::string>{"company.db"});
}

TEST_F(AccountMakerTest, AMissingFolderIsAFailureOfTheDisk) {
    try {
        makeAccount(scratch.path() / "missing" / "a.db", {}, {}, Language::english, neverStop);
        ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.exitCode(), exit_code::database);
    }
}

TEST(AccountOptions, AreReadAndChecked) {
    EXPECT_TRUE(readAccountOptions({}).empty());
    const auto options = readAccountOptions({"BCASHCODE=True", "bXJLL=false"});
    ASSERT_EQ(options.size(), 2U);
    EXPECT_EQ(options[0].name, "bCashCode");
    EXPECT_EQ(options[0].value, "True");
    EXPECT_EQ(options[1].name, "bXJLL");
    EXPECT_EQ(options[1].value, "False");
    const auto messageOf = [](const std::vector<std::string>& texts) {
        try {
            static_cast<void>(readAccountOptions(texts));
        } catch (const Failure& failure) {
            return failure.message(Language::english);
        }
        return std::string("(no failure)");
    };
    EXPECT_EQ(messageOf({"bCashcodes=true"}),
              "Unknown account option \"bCashcodes\"; the options are bCashCode, bAutoDisplay, bXJLL");
    EXPECT_EQ(messageOf({"bCashCode"}), "--set takes NAME=VALUE, not \"bCashCode\"");
    EXPECT_EQ(messageOf({"=true"}), "--set takes NAME=VALUE, not \"=true\"");
    EXPECT_EQ(messageOf({"bCashCode=1"}), "Account option \"bCashCode\" takes true or false, not \"1\"");
    EXPECT_EQ(messageOf({"bCashCode="}), "Account option \"bCashCode\" takes true or false, not \"\"");
    EXPECT_EQ(messageOf({"bCashCode=true", "bcashcode=false"}), "Account option \"bCashCode\" is given twice");
}

} // namespace
} // namespace z7::cashflow::host
