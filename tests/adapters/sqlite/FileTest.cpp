#include "adapters/sqlite/EmbeddedDatabase.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>
#include <unistd.h>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;
using conformance::errorOf;

void expectRefusal(const fs::path& file, const std::string& wanted) {
    Connection connection;
    const Error error = errorOf([&] { connection.Open(connectionString(file)); });
    EXPECT_GT(error.number(), 0);
    EXPECT_NE(error.description().find(wanted), std::string::npos) << error.description();
    EXPECT_EQ(connection.State(), ObjectState::Closed);
}

/// Runs a text on a file without any of the adapter's checks.
void runBare(const fs::path& file, const std::string& sql) {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(file.string().c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
    sqlite3_close(handle);
}

TEST(DatabaseFile, missing_file_is_not_made) {
    const TestFolder folder;
    const fs::path file = folder.path() / "none.db";
    expectRefusal(file, "z7cf init");
    EXPECT_FALSE(fs::exists(file));
}

TEST(DatabaseFile, a_folder_is_no_account) {
    const TestFolder folder;
    expectRefusal(folder.path(), "is a folder");
}

TEST(DatabaseFile, what_is_no_database_is_refused_and_left_alone) {
    const TestFolder folder;
    const fs::path file = folder.path() / "text.db";
    std::ofstream(file) << std::string(5000, 'x');
    expectRefusal(file, "not a database");
    EXPECT_EQ(fs::file_size(file), 5000U);
    const fs::path empty = folder.path() / "empty.db";
    std::ofstream(empty).close();
    expectRefusal(empty, "not one that z7cf init has made");
    EXPECT_EQ(fs::file_size(empty), 0U);
}

TEST(DatabaseFile, another_programs_database_is_refused) {
    const TestFolder folder;
    runBare(folder.path() / "other.db", "create table t (a)");
    expectRefusal(folder.path() / "other.db", "not one that z7cf init has made");
}

TEST(DatabaseFile, companions_must_be_what_they_are) {
    const EmbeddedDatabase database;
    const DatabaseFiles files = databaseFiles(database.file());
    EXPECT_EQ(files.system.filename(), fs::path(u8"my 公司;x.zqsystem.db"));
    expectRefusal(files.system, "not one that z7cf init has made as the account");
    fs::remove(files.temp);
    EXPECT_EQ(database.open()->Execute("select * from code")->RecordCount(), 0);
    EXPECT_TRUE(fs::exists(files.temp)) << "tempdb holds nothing that lasts and is made anew";
    fs::remove(files.system);
    expectRefusal(database.file(), "zqsystem");
}

TEST(DatabaseFile, another_schema_version_is_refused_with_both_numbers) {
    const EmbeddedDatabase database;
    runBare(database.file(), "pragma user_version = 99");
    expectRefusal(database.file(), "version 99");
    expectRefusal(database.file(), "version " + std::to_string(schemaVersion));
    expectRefusal(database.file(), "newer program");
}

TEST(DatabaseFile, a_file_that_can_only_be_read_is_refused) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    const EmbeddedDatabase database;
    fs::permissions(database.file(), fs::perms::owner_read);
    expectRefusal(database.file(), "can only be read");
}

TEST(DatabaseFile, creation_never_overwrites) {
    const EmbeddedDatabase database;
    const Error error = errorOf([&] { createDatabase(database.file()); });
    EXPECT_NE(error.description().find("exists already"), std::string::npos);
    EXPECT_EQ(database.open()->Execute("select * from code")->RecordCount(), 0);
    const TestFolder folder;
    const fs::path file = folder.path() / "new.db";
    std::ofstream(databaseFiles(file).system) << "mine";
    EXPECT_GT(errorOf([&] { createDatabase(file); }).number(), 0);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(fs::exists(databaseFiles(file).system)) << "a file that was there stays";
    EXPECT_NE(errorOf([&] { createDatabase(folder.path() / "no" / "x.db"); }).description().find("no folder"),
              std::string::npos);
}

TEST(DatabaseFile, removal_leaves_nothing) {
    const TestFolder folder;
    const fs::path file = folder.path() / "gone.db";
    createDatabase(file);
    removeDatabase(file);
    EXPECT_TRUE(fs::is_empty(folder.path()));
    removeDatabase(file); // nothing to do
}

TEST(DatabaseFile, a_full_disk_leaves_the_account_as_it_was) {
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
    if (full->InTransaction()) {
        full->RollbackTrans();
    }
    EXPECT_EQ(full->Execute("select * from fitemss98")->RecordCount(), 0);
    EXPECT_EQ(database.open()->Execute("select * from fitemss98")->RecordCount(), 0);
}

TEST(ConnectionString, refusals_name_the_keyword_and_no_value) {
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

TEST(ConnectionString, takes_blanks_braces_and_any_case) {
    const EmbeddedDatabase database;
    const std::string file = database.file().string();
    Connection connection;
    connection.Open(" DRIVER = SQLite ; Database={" + file + "} ; Year = 2013 ;; timeout=0;");
    EXPECT_EQ(connection.State(), ObjectState::Open);
    EXPECT_NE(connectionString(database.file(), std::int16_t{2014}).find("={"), std::string::npos);
    EXPECT_EQ(connectionString("a}b", std::nullopt), "driver=sqlite;database={a}}b}");
}

} // namespace
} // namespace z7::cashflow::sqlite
