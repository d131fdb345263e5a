// The log of changes is added to accounts that were made without it.

#include "host/account/accountLog.h"

#include "ServerDouble.h"
#include "adapters/odbc/accountSchema.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/FaultyDisk.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "workbench/changes/RunLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::host {
namespace {

using sqlite::FaultyDisk;
using test::ScratchFolder;
using testing::HasSubstr;

/// A server's account without the log.
class AccountLogOnServer : public testing::Test {
protected:
    AccountLogOnServer() {
        server_.content["company001"]["gl_cashtable"].columns.push_back({"md", "money", 8, false, false, false});
        connection_ = server_.connections()();
        connection_->Open("Driver={FreeTDS};Database=company001");
    }

    ServerDouble server_;
    std::unique_ptr<Connection> connection_;
};

TEST_F(AccountLogOnServer, IsAddedOnceAndInOneTransaction) {
    server_.schemaVersion = odbc::accountSchemaVersion;
    EXPECT_TRUE(startLog(*connection_));
    EXPECT_TRUE(server_.content["company001"].contains("z7_run"));
    EXPECT_TRUE(server_.content["company001"].contains("z7_run_row"));
    const std::size_t calls = server_.calls();
    EXPECT_FALSE(startLog(*connection_));
    EXPECT_EQ(server_.calls(), calls + 1) << "it only looks whether the log is there";
}

TEST_F(AccountLogOnServer, IsAddedToAnAccountThatIsOlderThanTheViewOfItsVersion) {
    EXPECT_TRUE(startLog(*connection_));
    EXPECT_TRUE(workbench::hasLog(*connection_));
}

TEST_F(AccountLogOnServer, IsRefusedWhereTheSchemaHasAnotherVersion) {
    server_.schemaVersion = odbc::accountSchemaVersion + 1;
    try {
        static_cast<void>(startLog(*connection_));
        FAIL() << "it was not refused";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.exitCode(), exit_code::refused);
        EXPECT_THAT(failure.message(Language::english), HasSubstr("version 2"));
    }
    EXPECT_FALSE(workbench::hasLog(*connection_));
}

TEST_F(AccountLogOnServer, AFailureAtAnyCallLeavesBothTablesOrNone) {
    bool failed = true;
    int failures = 0;
    for (std::size_t call = 1; failed; ++call) {
        server_.failAt(call, false);
        failed = false;
        try {
            static_cast<void>(startLog(*connection_));
        } catch (const Error&) {
            failed = true;
            ++failures;
        }
        server_.failAt(1000, false);
        const auto& tables = server_.content["company001"];
        ASSERT_EQ(tables.contains("z7_run"), tables.contains("z7_run_row")) << call;
        ASSERT_EQ(tables.contains("z7_run"), !failed) << call;
    }
    EXPECT_GT(failures, 5);
}

TEST(AccountLogOfAFile, AFailingDiskLeavesBothTablesOrNone) {
    const ScratchFolder scratch;
    const std::filesystem::path file = scratch.path() / "company.db";
    sqlite::createDatabase(file);
    const auto open = [&file] {
        auto connection = std::make_unique<sqlite::Connection>();
        connection->Open(sqlite::connectionString(file, std::int16_t{2024}));
        return connection;
    };
    for (const char* const table : {"z7_run_row", "z7_run"}) {
        open()->Execute("drop table " + std::string(table));
    }
    FaultyDisk disk;
    bool failed = true;
    int failures = 0;
    for (int call = 1; failed; ++call) {
        failed = false;
        try {
            const auto connection = open();
            disk.failFrom(call, FaultyDisk::Fault::full);
            static_cast<void>(startLog(*connection));
        } catch (const Error&) {
            failed = true;
            ++failures;
        }
        disk.failFrom(1000000, FaultyDisk::Fault::full);
        const bool there = workbench::hasLog(*open());
        EXPECT_TRUE(there || failed) << call;
        if (there) { // also where only what follows the commit has failed
            EXPECT_TRUE(workbench::readRuns(*open()).empty()) << "the table of runs is there too";
            failed = false;
        } else {
            EXPECT_THROW(open()->Execute("select top 1 iRun from z7_run"), Error) << "no half of it";
        }
        ASSERT_LT(call, 500);
    }
    EXPECT_GT(failures, 1);
}

} // namespace
} // namespace z7::cashflow::host
