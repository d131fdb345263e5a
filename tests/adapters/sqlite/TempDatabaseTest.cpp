#include "adapters/sqlite/TempDatabase.h"

#include "adapters/sqlite/EmbeddedDatabase.h"
#include "doubles/childProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

/// Gives this process a folder for temporary files of its own.
class TempDatabaseTest : public testing::Test {
protected:
    TempDatabaseTest() {
        const char* value = std::getenv("TMPDIR");
        former_ = value == nullptr ? std::optional<std::string>() : value;
        setenv("TMPDIR", folder_.path().c_str(), 1);
    }
    ~TempDatabaseTest() override {
        if (former_) {
            setenv("TMPDIR", former_->c_str(), 1);
        } else {
            unsetenv("TMPDIR");
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
    TestFolder folder_;
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
    connection->Execute(makeTable_); // the name is free again
    EXPECT_EQ(folders(), 1);
}

TEST_F(TempDatabaseTest, ARunThatGoesOnKeepsItsTables) {
    int toChild[2];
    int fromChild[2];
    ASSERT_EQ(pipe(toChild), 0);
    ASSERT_EQ(pipe(fromChild), 0);
    const pid_t child = fork();
    if (child == 0) {
        char go = 0;
        int code = 1;
        try {
            const auto connection = database_.open();
            connection->Execute(makeTable_);
            static_cast<void>(write(fromChild[1], "r", 1));
            static_cast<void>(read(toChild[0], &go, 1));
            connection->Execute("insert into tempdb..X (inid,ccode) values(1,N'1')");
            code = connection->Execute("select * from tempdb..X")->RecordCount() == 1 ? 0 : 2;
        } catch (...) {
        }
        _exit(code);
    }
    char ready = 0;
    ASSERT_EQ(read(fromChild[0], &ready, 1), 1);
    const auto connection = database_.open();
    connection->Execute(makeTable_);
    EXPECT_EQ(folders(), 2);
    ASSERT_EQ(write(toChild[1], "g", 1), 1);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    for (const int descriptor : {toChild[0], toChild[1], fromChild[0], fromChild[1]}) {
        close(descriptor);
    }
}

TEST_F(TempDatabaseTest, ManyProgramsAtOnceEachGetOne) {
    constexpr int programs = 16;
    for (int i = 0; i < programs; ++i) {
        if (fork() == 0) {
            int code = 1;
            try {
                const auto connection = database_.open();
                connection->Execute(makeTable_);
                connection->Execute("insert into tempdb..X (inid,ccode) values(1,N'1')");
                code = connection->Execute("select * from tempdb..X")->RecordCount() == 1 ? 0 : 2;
                connection->Close();
            } catch (...) {
            }
            _exit(code);
        }
    }
    for (int i = 0; i < programs; ++i) {
        int status = 0;
        wait(&status);
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }
    EXPECT_EQ(folders(), 0);
}

TEST_F(TempDatabaseTest, AMissingFolderForTemporaryFilesIsNamed) {
    setenv("TMPDIR", (folder_.path() / "missing").c_str(), 1);
    const auto connection = database_.open();
    const Error error = conformance::errorOf([&] { connection->Execute(makeTable_); });
    EXPECT_NE(error.description().find("TMPDIR"), std::string::npos) << error.description();
}

} // namespace
} // namespace z7::cashflow::sqlite
