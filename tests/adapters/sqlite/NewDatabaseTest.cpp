#include "adapters/sqlite/NewDatabase.h"

#include "adapters/sqlite/EmbeddedDatabase.h"
#include "adapters/sqlite/FaultyDisk.h"
#include "doubles/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <set>
#include <string>

#ifndef _WIN32
#include "doubles/ChildProcess.h"

#include <unistd.h>
#endif

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;
using Fault = FaultyDisk::Fault;
#ifndef _WIN32
using test::inProcess;
#endif

class NewDatabaseTest : public testing::Test {
protected:
    [[nodiscard]] std::set<std::string> names() const {
        std::set<std::string> found;
        for (const auto& entry : fs::directory_iterator(folder_.path())) {
            found.insert(entry.path().filename().string());
        }
        return found;
    }
    /// Whether the account exists and can be read and written.
    [[nodiscard]] bool isWhole() const {
        Connection connection;
        connection.Open(connectionString(file_, std::int16_t{2013}));
        connection.Execute("insert into fitemss98 (citemcode) values(N'1')");
        return connection.Execute("select * from fitemss98")->RecordCount() == 1 &&
               connection.Execute("select * from zqsystem..ua_period")->RecordCount() == 0;
    }
    test::ScratchFolder folder_;
    fs::path file_ = folder_.path() / "company.db";
    std::set<std::string> bothFiles_{"company.db", "company.zqsystem.db"};
};

TEST_F(NewDatabaseTest, AppearsOnlyWhenItIsPublished) {
    ASSERT_EQ(NewDatabase::takenName(file_), std::nullopt);
    {
        NewDatabase database(file_);
        EXPECT_FALSE(fs::exists(file_));
        EXPECT_EQ(database.publish(), std::nullopt);
    }
    EXPECT_EQ(names(), bothFiles_);
    EXPECT_TRUE(isWhole());
}

TEST_F(NewDatabaseTest, LeavesNothingWhenItIsNotPublished) {
    { const NewDatabase database(file_); }
    EXPECT_EQ(names(), std::set<std::string>{});
}

TEST_F(NewDatabaseTest, OfTwoForOnePlaceTheLaterOneYields) {
    NewDatabase earlier(file_);
    NewDatabase later(file_);
    EXPECT_EQ(earlier.publish(), std::nullopt);
    EXPECT_EQ(later.publish(), databaseFiles(file_).system);
    EXPECT_TRUE(isWhole());
}

TEST_F(NewDatabaseTest, OfTwoThatMeetInTheMiddleExactlyOneIsThere) {
    for (int step = 1; step <= 3;
         ++step) { // the other run publishes before the first, the second and the third step of this one
        const fs::path place = folder_.path() / (std::to_string(step) + ".db");
        NewDatabase one(place);
        NewDatabase other(place);
        std::optional<std::optional<fs::path>> taken;
        int at = 0;
        const auto oneTaken = one.publish([&] {
            if (++at == step) {
                taken = other.publish();
            }
        });
        ASSERT_TRUE(taken.has_value());
        EXPECT_NE(oneTaken.has_value(), taken->has_value()) << step;
        Connection connection;
        connection.Open(connectionString(place));
    }
}

TEST_F(NewDatabaseTest, AFileThatTookTheAccountsNameMeanwhileStaysAsItIs) {
    NewDatabase database(file_);
    int step = 0;
    EXPECT_EQ(database.publish([&] {
        if (++step == 2) {
            std::ofstream(file_) << "mine";
        }
    }),
              file_);
    EXPECT_EQ(fs::file_size(file_), 4U);
    EXPECT_FALSE(fs::exists(databaseFiles(file_).system)) << "the one without the other is of no use";
}

#ifndef _WIN32 // the runs that are killed are copies of the test
TEST_F(NewDatabaseTest, ARerunRecoversFromAKillAtEachStepOfPublishing) {
    for (int killedAt = 1; killedAt <= 3; ++killedAt) {
        const int code = inProcess([&] {
            NewDatabase database(file_);
            int step = 0;
            static_cast<void>(database.publish([&] {
                if (++step == killedAt) {
                    _exit(9);
                }
            }));
        });
        ASSERT_EQ(code, 9);
        EXPECT_EQ(fs::exists(databaseFiles(file_).system), killedAt > 1);
        EXPECT_EQ(fs::exists(file_), killedAt > 2);
        if (killedAt == 3) { // it is complete, and only its hidden folder is left
            EXPECT_EQ(NewDatabase::takenName(file_), file_);
            EXPECT_EQ(names(), bothFiles_);
            EXPECT_TRUE(isWhole());
        } else {
            EXPECT_EQ(NewDatabase::takenName(file_), std::nullopt);
            EXPECT_EQ(names(), std::set<std::string>{});
        }
    }
}

TEST_F(NewDatabaseTest, ACompanionThatAKilledRunDidNotMakeStays) {
    const DatabaseFiles files = databaseFiles(file_);
    ASSERT_EQ(inProcess([&] {
                  NewDatabase database(file_);
                  int step = 0;
                  static_cast<void>(database.publish([&] {
                      if (++step == 2) {
                          _exit(9);
                      }
                  }));
              }),
              9);
    fs::remove(files.system);
    std::ofstream(files.system) << "mine";
    EXPECT_EQ(NewDatabase::takenName(file_), files.system);
    EXPECT_EQ(names(), std::set<std::string>{"company.zqsystem.db"});
    EXPECT_EQ(fs::file_size(files.system), 4U);
}

TEST_F(NewDatabaseTest, TheFolderOfARunThatGoesOnIsLeftAlone) {
    const test::Signal ready;
    const test::Signal go;
    test::ChildProcess other([&] {
        NewDatabase database(file_);
        ready.send();
        go.wait();
        return database.publish() ? 2 : 0;
    });
    ready.wait();
    EXPECT_EQ(NewDatabase::takenName(file_), std::nullopt); // removes what ended runs have left
    go.send();
    EXPECT_EQ(other.wait(), 0);
    EXPECT_TRUE(isWhole());
}
#endif

class DiskFault : public NewDatabaseTest, public testing::WithParamInterface<Fault> {};

TEST_P(DiskFault, AtEachCallLeavesNothingOrAWholeAccount) {
    FaultyDisk disk;
    int refused = 0;
    bool done = false;
    for (int call = 1; !done; ++call) {
        disk.failFrom(call, GetParam());
        bool created = false;
        try {
            createDatabase(file_);
            created = true;
        } catch (const Error& error) {
            ++refused;
            EXPECT_NE(error.number(), 0) << call;
        }
        done = FaultyDisk::calls() < call;
        disk.failFrom(1000000, Fault::full);
        if (created) {
            EXPECT_EQ(names(), bothFiles_) << call;
            EXPECT_TRUE(isWhole()) << call;
            folder_.clear();
        }
        ASSERT_EQ(names(), std::set<std::string>{}) << call;
    }
    EXPECT_GT(refused, 0);
}

INSTANTIATE_TEST_SUITE_P(NewDatabase, DiskFault, testing::Values(Fault::full, Fault::syncFails, Fault::growsNoMore),
                         testing::PrintToStringParamName());

#ifndef _WIN32
TEST_F(NewDatabaseTest, ARerunRecoversFromAKillAtEachCall) {
    FaultyDisk disk;
    bool done = false;
    for (int call = 1; !done; ++call) {
        const int code = inProcess([&] {
            disk.failFrom(call, Fault::killed);
            createDatabase(file_);
        });
        done = code == 0;
        ASSERT_TRUE(done || code == -SIGKILL) << code;
        if (!fs::exists(file_)) {
            createDatabase(file_);
        }
        EXPECT_TRUE(isWhole()) << call;
        static_cast<void>(
            NewDatabase::takenName(file_)); // a run that was killed after everything was done has left its folder
        EXPECT_EQ(names(), bothFiles_) << call;
        folder_.clear();
    }
}
#endif

} // namespace
} // namespace z7::cashflow::sqlite
