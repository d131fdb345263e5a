#include "adapters/sqlite/TempDatabase.h"

#include "adapters/sqlite/EmbeddedDatabase.h"
#include "doubles/ScratchFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#ifndef _WIN32
#include "doubles/ChildProcess.h"
#endif

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

#ifdef _WIN32
constexpr const char* variable = "TMP";
#else
constexpr const char* variable = "TMPDIR";
#endif

/// Sets the variable of the environment that names the folder for temporary files, or removes it.
void setVariable(const std::string& value) {
#ifdef _WIN32
    _putenv_s(variable, value.c_str());
#else
    if (value.empty()) {
        unsetenv(variable);
    } else {
        setenv(variable, value.c_str(), 1);
    }
#endif
}

/// Gives this process its own folder for temporary files.
class TempDatabaseTest : public testing::Test {
protected:
    TempDatabaseTest() {
        const char* value = std::getenv(variable);
        former_ = value == nullptr ? std::optional<std::string>() : value;
        setVariable(folder_.path().string());
    }
    ~TempDatabaseTest() override {
        if (former_) {
            setVariable(*former_);
        } else {
            setVariable({});
        }
    }
    [[nodiscard]] int folders() const {
        int count = 0;
        for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder_.path())) {
            ++count;
        }
        return count;
    }

    EmbeddedDatabase database_;
    test::ScratchFolder folder_;
    const std::string makeTable_ = "select inid,ccode into tempdb..X from gl_accvouch where 1=0";

private:
    std::optional<std::string> former_;
};

TEST_F(TempDatabaseTest, ComesWithTheFirstStatementThatNamesItAndGoesWithTheLastSession) {
    auto connection = database_.open();
    connection->Execute("select * from code");
    EXPECT_EQ(folders(), 0);
    connection->Execute(makeTable_);
    EXPECT_EQ(folders(), 1);
    const auto other = database_.open();
    EXPECT_EQ(other->Execute("select * from tempdb..X")->RecordCount(), 0);
    connection->Close();
    EXPECT_EQ(folders(), 1);
    other->Close();
    EXPECT_EQ(folders(), 0);
    EXPECT_EQ(database_.open()->Execute("select * from code")->RecordCount(), 0);
}

TEST_F(TempDatabaseTest, ComesWithinATransactionAsWell) {
    const auto connection = database_.open();
    connection->BeginTrans();
    connection->Execute("insert into fitemss98 (citemcode) values(N'1')");
    connection->Execute(makeTable_);
    connection->Execute("insert into tempdb..X (inid,ccode) values(1,N'1')");
    connection->CommitTrans();
    EXPECT_EQ(connection->Execute("select * from tempdb..X")->RecordCount(), 1);
    EXPECT_EQ(connection->Execute("select * from fitemss98")->RecordCount(), 1);
}

#ifndef _WIN32 // rights are lists, and other runs are copies of the test
TEST_F(TempDatabaseTest, IsClosedToOtherUsers) {
    const auto connection = database_.open();
    connection->Execute(makeTable_);
    const fs::path folder = fs::directory_iterator(folder_.path())->path();
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
}

TEST_F(TempDatabaseTest, WhatAKilledRunLeftIsRemovedByTheNext) {
    ASSERT_EQ(test::inProcess([this] {
                  const auto connection = database_.open();
                  connection->Execute(makeTable_);
                  static_cast<void>(std::raise(SIGKILL));
              }),
              -SIGKILL);
    ASSERT_EQ(folders(), 1);
    const auto connection = database_.open();
    connection->Execute(makeTable_); // the name is available again
    EXPECT_EQ(folders(), 1);
}

TEST_F(TempDatabaseTest, ARunThatGoesOnKeepsItsTables) {
    const test::Signal ready;
    const test::Signal go;
    test::ChildProcess other([&] {
        const auto connection = database_.open();
        connection->Execute(makeTable_);
        ready.send();
        go.wait();
        connection->Execute("insert into tempdb..X (inid,ccode) values(1,N'1')");
        return connection->Execute("select * from tempdb..X")->RecordCount() == 1 ? 0 : 2;
    });
    ready.wait();
    const auto connection = database_.open();
    connection->Execute(makeTable_);
    EXPECT_EQ(folders(), 2);
    go.send();
    EXPECT_EQ(other.wait(), 0);
}

TEST_F(TempDatabaseTest, ManyProgramsAtOnceEachGetOne) {
    std::vector<test::ChildProcess> programs;
    for (int i = 0; i < 16; ++i) {
        programs.emplace_back([&] {
            const auto connection = database_.makeConnection();
            connection->Open(
                database_.connectionString(std::int16_t{2013}, 5000)); // the first ones lock each other out
            connection->Execute(makeTable_);
            connection->Execute("insert into tempdb..X (inid,ccode) values(1,N'1')");
            const int code = connection->Execute("select * from tempdb..X")->RecordCount() == 1 ? 0 : 2;
            connection->Close();
            return code;
        });
    }
    for (test::ChildProcess& program : programs) {
        EXPECT_EQ(program.wait(), 0);
    }
    EXPECT_EQ(folders(), 0);
}
#endif

TEST_F(TempDatabaseTest, AMissingFolderForTemporaryFilesIsNamed) {
    setVariable((folder_.path() / "missing").string());
    const auto connection = database_.open();
    const Error error = conformance::errorOf([&] { connection->Execute(makeTable_); });
    EXPECT_NE(error.description().find(variable), std::string::npos) << error.description();
}

} // namespace
} // namespace z7::cashflow::sqlite
