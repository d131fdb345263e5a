#include "adapters/sqlite/EmbeddedDatabase.h"
#include "adapters/sqlite/FaultyDisk.h"
#include "adapters/sqlite/RelaxedCommits.h"
#include "doubles/ScratchFolder.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#ifndef _WIN32
#include "doubles/ChildProcess.h"

#include <unistd.h>
#endif

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;
using conformance::errorOf;

void expectRefusal(const fs::path& file, const std::string& wanted) {
    Connection connection;
    const Error error = errorOf([&] { connection.Open(connectionString(file)); });
    EXPECT_GT(error.number(), 0);
    EXPECT_NE(error.description().find(wanted), std::string::npos) << error.description();
    EXPECT_EQ(connection.State(), ObjectState::closed);
}

/// Runs a text on a file without the adapter's checks.
void runBare(const fs::path& file, const std::string& sql) {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(file.string().c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
    sqlite3_close(handle);
}

TEST(DatabaseFile, MissingFileIsNotMade) {
    const test::ScratchFolder folder;
    const fs::path file = folder.path() / "none.db";
    expectRefusal(file, "Create the account first");
    EXPECT_FALSE(fs::exists(file));
}

TEST(DatabaseFile, AFolderIsNotAnAccount) {
    const test::ScratchFolder folder;
    expectRefusal(folder.path(), "is a folder");
}

TEST(DatabaseFile, WhatIsNotADatabaseIsRefusedAndLeftUnchanged) {
    const test::ScratchFolder folder;
    const fs::path file = folder.path() / "text.db";
    std::ofstream(file) << std::string(5000, 'x');
    expectRefusal(file, "not a database");
    EXPECT_EQ(fs::file_size(file), 5000U);
    const fs::path empty = folder.path() / "empty.db";
    std::ofstream(empty).close();
    expectRefusal(empty, "it was not created as an account");
    EXPECT_EQ(fs::file_size(empty), 0U);
}

TEST(DatabaseFile, AnotherProgramsDatabaseIsRefused) {
    const test::ScratchFolder folder;
    runBare(folder.path() / "other.db", "create table t (a)");
    expectRefusal(folder.path() / "other.db", "it was not created as an account");
}

TEST(DatabaseFile, CompanionsMustBeWhatTheyAre) {
    const EmbeddedDatabase database;
    const DatabaseFiles files = databaseFiles(database.file());
    EXPECT_EQ(files.system.filename(), fs::path(u8"my 公司;x.zqsystem.db"));
    expectRefusal(files.system, "it was not created as an account");
    fs::remove(files.system);
    expectRefusal(database.file(), "zqsystem");
}

TEST(DatabaseFile, AnotherSchemaVersionIsRefusedWithBothNumbers) {
    const EmbeddedDatabase database;
    runBare(database.file(), "pragma user_version = 99");
    expectRefusal(database.file(), "version 99");
    expectRefusal(database.file(), "version " + std::to_string(schemaVersion));
    expectRefusal(database.file(), "newer program");
}

#ifndef _WIN32 // rights are taken from a copy of the process
/// An account that can be read but not written, in a folder that cannot be written.
class ReadOnlyAccount : public testing::Test {
protected:
    ReadOnlyAccount() {
        database_.open()->Execute("insert into fitemss98 (citemcode) values(N'1')");
        permit(fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    }
    ~ReadOnlyAccount() override { permit(fs::perms::owner_all); }
    void permit(fs::perms files) const {
        const fs::path folder = database_.file().parent_path();
        const bool writable = (files & fs::perms::owner_write) != fs::perms::none;
        fs::permissions(folder, writable ? fs::perms::owner_all
                                         : fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                                               fs::perms::others_exec);
        fs::permissions(database_.file(), files);
        fs::permissions(databaseFiles(database_.file()).system, files);
    }
    [[nodiscard]] std::string readItems() const {
        return test::withoutRights([this] {
            const auto connection = database_.open();
            const int periods = connection->Execute("select * from zqsystem..ua_period")->RecordCount();
            return std::to_string(connection->Execute("select * from fitemss98")->RecordCount()) + " items, " +
                   std::to_string(periods) + " periods";
        });
    }
    [[nodiscard]] int files() const {
        int count = 0;
        for ([[maybe_unused]] const auto& entry : fs::directory_iterator(database_.file().parent_path())) {
            ++count;
        }
        return count;
    }

    EmbeddedDatabase database_;
};

TEST_F(ReadOnlyAccount, CanBeRead) {
    EXPECT_EQ(readItems(), "1 items, 0 periods");
    EXPECT_EQ(files(), 2);
}

TEST_F(ReadOnlyAccount, CanBeReadWhereOnlyTheFolderCannotBeWritten) {
    const fs::perms all = fs::perms::owner_all | fs::perms::others_read | fs::perms::others_write;
    fs::permissions(database_.file(), all);
    fs::permissions(databaseFiles(database_.file()).system, all);
    EXPECT_EQ(readItems(), "1 items, 0 periods");
    EXPECT_EQ(files(), 2);
}

TEST_F(ReadOnlyAccount, CanBeReadWhereTheFolderCanBeWrittenAndGetsNoFiles) {
    fs::permissions(database_.file().parent_path(), fs::perms::all);
    EXPECT_EQ(readItems(), "1 items, 0 periods");
    EXPECT_EQ(files(), 2);
}

TEST_F(ReadOnlyAccount, RefusesATransactionAndNamesTheRemedy) {
    const std::string answer = test::withoutRights([this] {
        database_.open()->BeginTrans();
        return std::string("begun");
    });
    EXPECT_NE(answer.find("can only be read: allow writing"), std::string::npos) << answer;
}

TEST_F(ReadOnlyAccount, SeesWhatAWriterHasInItsLog) {
    permit(fs::perms::owner_all | fs::perms::others_read);
    fs::permissions(database_.file().parent_path(),
                    fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
    const auto writer = database_.open();
    writer->Execute("insert into fitemss98 (citemcode) values(N'2')");
    EXPECT_EQ(readItems(), "2 items, 0 periods");
}

TEST_F(ReadOnlyAccount, NoticesAWriterWhoComesWhileItReadsWithoutLocks) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can write where the reader cannot";
    }
    const std::string answer = test::withoutRights([&] {
        const auto connection = database_.open();
        static_cast<void>(connection->Execute("select * from fitemss98")->RecordCount());
        const uid_t reader = geteuid();
        if (seteuid(0) != 0) { // the process has kept the right to switch back
            return std::string("cannot become the superuser again");
        }
        database_.open()->Execute("insert into fitemss98 (citemcode) values(N'3')");
        static_cast<void>(seteuid(reader));
        return std::to_string(connection->Execute("select * from fitemss98")->RecordCount());
    });
    EXPECT_NE(answer.find("Somebody is writing to"), std::string::npos) << answer;
}
#endif

#ifndef _WIN32 // a link needs rights there
TEST(DatabaseFile, ALinkLeadsToTheFilesBesideItsTarget) {
    const EmbeddedDatabase database;
    const test::ScratchFolder folder;
    const fs::path link = folder.path() / "link.db";
    fs::create_symlink(database.file(), link);
    Connection connection;
    connection.Open(connectionString(link, std::int16_t{2013}));
    connection.Execute("insert into fitemss98 (citemcode) values(N'1')");
    connection.Execute("select inid into tempdb..X from gl_accvouch where 1=0");
    EXPECT_EQ(connection.Execute("select * from zqsystem..ua_period")->RecordCount(), 0);
    EXPECT_EQ(database.open()->Execute("select * from tempdb..X")->RecordCount(), 0) << "one account, one tempdb";
    connection.Close();
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
}
#endif

/// Overwrites part of a file.
void damage(const fs::path& file, std::streamoff at) {
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(at);
    stream << std::string(3000, '\x5A');
}

TEST(DatabaseFile, DamageIsReportedOfTheFileThatHasIt) {
    for (const bool system : {false, true}) {
        const EmbeddedDatabase database;
        const DatabaseFiles files = databaseFiles(database.file());
        damage(system ? files.system : files.account, 100);
        Connection connection;
        const std::string text = errorOf([&] { connection.Open(connectionString(database.file())); }).description();
        EXPECT_NE(text.find((system ? files.system : files.account).filename().string()), std::string::npos) << text;
        EXPECT_EQ(text.find((system ? files.account : files.system).filename().string()), std::string::npos) << text;
    }
}

TEST(DatabaseFile, DamageThatShowsLaterNamesTheFileToo) {
    const EmbeddedDatabase database;
    {
        const auto connection = database.open();
        connection->BeginTrans();
        for (int i = 0; i < 2000; ++i) {
            connection->Execute("insert into fitemss98 (citemcode,citemname) values(N'" + std::to_string(i) + "',N'" +
                                std::string(100, 'x') + "')");
        }
        connection->CommitTrans();
    }
    const auto size = static_cast<std::streamoff>(fs::file_size(database.file()));
    for (std::streamoff at = size / 2; at + 4096 < size; at += 4096) {
        damage(database.file(), at);
    }
    const auto connection = database.open();
    const Error error = errorOf([&] { connection->Execute("select * from fitemss98"); });
    EXPECT_EQ(error.number() & 0xFF, SQLITE_CORRUPT);
    EXPECT_NE(error.description().find(database.file().filename().string() + " is damaged"), std::string::npos)
        << error.description();
    EXPECT_EQ(error.description().find("zqsystem"), std::string::npos) << error.description();
}

TEST(DatabaseFile, AWriteThatTheSystemRefusesNamesWhatToLookAt) {
    FaultyDisk disk;
    const EmbeddedDatabase database;
    const auto connection = database.open();
    connection->BeginTrans();
    connection->Execute("insert into fitemss98 (citemcode) values(N'1')");
    disk.failFrom(1, FaultyDisk::Fault::growsNoMore);
    const Error error = errorOf([&] { connection->CommitTrans(); });
    EXPECT_EQ(error.number(), SQLITE_IOERR_WRITE);
    EXPECT_NE(error.description().find("ulimit"), std::string::npos) << error.description();
    disk.failFrom(1000000, FaultyDisk::Fault::full);
    connection->RollbackTrans();
    EXPECT_EQ(connection->Execute("select * from fitemss98")->RecordCount(), 0);
    connection->Close();
}

TEST(DatabaseFile, RelaxedCommitsWaitForTheDiskOnceAtTheirEnd) {
    FaultyDisk disk;
    const EmbeddedDatabase database;
    const auto connection = database.open();
    int item = 0;
    const auto commit = [&] {
        try {
            connection->BeginTrans();
            connection->Execute("insert into fitemss98 (citemcode) values(N'" + std::to_string(++item) + "')");
            connection->CommitTrans();
        } catch (const Error& error) {
            return error.number();
        }
        return 0;
    };
    const auto syncsFail = [&](bool fail) { disk.failFrom(fail ? 1 : 1000000, FaultyDisk::Fault::syncFails); };
    syncsFail(false);
    EXPECT_EQ(commit(), 0);
    {
        RelaxedCommits relaxed(*connection);
        syncsFail(true);
        EXPECT_EQ(commit(), 0);
        EXPECT_EQ(commit(), 0);
        EXPECT_EQ(errorOf([&] { relaxed.finish(); }).number(), SQLITE_IOERR_FSYNC);
        syncsFail(false);
    }
    EXPECT_EQ(connection->Execute("select * from fitemss98")->RecordCount(), 3);
    syncsFail(true);
    EXPECT_EQ(commit() & 0xFF, SQLITE_IOERR) << "each commit waits again";
    syncsFail(false);
    connection->RollbackTrans();
    connection->Close();
}

#ifndef _WIN32 // an open file cannot be removed or replaced there
class ReplacedAccount : public testing::TestWithParam<bool> {
protected:
    /// Deletes the account's file, or replaces it by another one.
    void replace() const {
        if (GetParam()) {
            const fs::path copy = database_.file().parent_path() / "copy.db";
            fs::copy_file(database_.file(), copy);
            fs::rename(copy, database_.file());
        } else {
            fs::remove(database_.file());
        }
    }
    EmbeddedDatabase database_;
};

TEST_P(ReplacedAccount, IsNoticedWhenATransactionBegins) {
    const auto connection = database_.open();
    replace();
    const Error error = errorOf([&] { connection->BeginTrans(); });
    EXPECT_EQ(error.number(), SQLITE_READONLY_DBMOVED);
    EXPECT_NE(error.description().find("deleted, moved or replaced"), std::string::npos);
    EXPECT_FALSE(connection->inTransaction());
}

TEST_P(ReplacedAccount, IsNoticedWhenATransactionIsCommitted) {
    const auto connection = database_.open();
    connection->BeginTrans();
    connection->Execute("insert into fitemss98 (citemcode) values(N'1')");
    replace();
    EXPECT_EQ(errorOf([&] { connection->CommitTrans(); }).number(), SQLITE_READONLY_DBMOVED);
    connection->RollbackTrans();
    connection->Close();
}

INSTANTIATE_TEST_SUITE_P(DatabaseFile, ReplacedAccount, testing::Bool(),
                         [](const auto& tested) { return tested.param ? "ReplacedFile" : "DeletedFile"; });
#endif

TEST(DatabaseFile, CreationNeverOverwrites) {
    const EmbeddedDatabase database;
    const Error error = errorOf([&] { createDatabase(database.file()); });
    EXPECT_NE(error.description().find("exists already"), std::string::npos);
    EXPECT_EQ(database.open()->Execute("select * from code")->RecordCount(), 0);
    const test::ScratchFolder folder;
    const fs::path file = folder.path() / "new.db";
    std::ofstream(databaseFiles(file).system) << "mine";
    EXPECT_GT(errorOf([&] { createDatabase(file); }).number(), 0);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(fs::exists(databaseFiles(file).system)) << "a file that was there stays";
    EXPECT_NE(errorOf([&] { createDatabase(folder.path() / "no" / "x.db"); }).description().find("no folder"),
              std::string::npos);
}

TEST(DatabaseFile, AFullDiskLeavesTheAccountAsItWas) {
    const EmbeddedDatabase database;
    const std::unique_ptr<Connection> full = database.open(std::int16_t{2013}, ";maxpages=1");
    const std::string insert = "insert into fitemss98 (citemcode,citemname) values(N'";
    full->BeginTrans();
    const Error error = errorOf([&] {
        for (int i = 0; i < 5000; ++i) {
            full->Execute(insert + std::to_string(i) + "',N'" + std::string(100, 'x') + "')");
        }
    });
    EXPECT_EQ(error.number() & 0xFF, SQLITE_FULL);
    EXPECT_EQ(error.description(), "database or disk is full");
    if (full->inTransaction()) {
        full->RollbackTrans();
    }
    EXPECT_EQ(full->Execute("select * from fitemss98")->RecordCount(), 0);
    EXPECT_EQ(database.open()->Execute("select * from fitemss98")->RecordCount(), 0);
}

TEST(ConnectionString, RefusalsNameTheKeywordAndNoValue) {
    for (const auto& [text, wanted] :
         std::vector<std::pair<std::string, std::string>>{{"", "driver"},
                                                          {"driver=sqlite", "database"},
                                                          {"database=x", "driver"},
                                                          {"driver=odbc;database=x", "driver"},
                                                          {"driver=sqlite;database=x;pwd=secret", "pwd"},
                                                          {"driver=sqlite;database=", "database"},
                                                          {"driver=sqlite;database={secret", "database"},
                                                          {"driver=sqlite;database={x}secret", "database"},
                                                          {"driver=sqlite;database=x;year=secret", "year"},
                                                          {"driver=sqlite;database=x;year=0", "year"},
                                                          {"driver=sqlite;database=x;year=2013;YEAR=2014", "year"},
                                                          {"driver=sqlite;database=x;timeout=-1", "timeout"},
                                                          {"driver=sqlite;database=x;maxpages=x", "maxpages"},
                                                          {"driver=sqlite;secret;database=x", "keyword=value"}}) {
        Connection connection;
        const Error error = errorOf([&, t = text] { connection.Open(t); });
        EXPECT_EQ(error.number(), 5) << text;
        EXPECT_NE(error.description().find(wanted), std::string::npos) << error.description();
        EXPECT_EQ(error.description().find("secret"), std::string::npos) << error.description();
    }
}

TEST(ConnectionString, TakesBlanksBracesAndAnyCase) {
    const EmbeddedDatabase database;
    const std::string file = database.file().string();
    Connection connection;
    connection.Open(" DRIVER = SQLite ; Database={" + file + "} ; Year = 2013 ;; timeout=0;");
    EXPECT_EQ(connection.State(), ObjectState::open);
    EXPECT_NE(connectionString(database.file(), std::int16_t{2014}).find("={"), std::string::npos);
    EXPECT_EQ(connectionString("a}b", std::nullopt), "driver=sqlite;database={a}}b}");
}

} // namespace
} // namespace z7::cashflow::sqlite
