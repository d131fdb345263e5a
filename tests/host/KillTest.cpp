// A program that is killed at any moment leaves rows and log consistent: each voucher has the rows of the start or
// those of the log, and what is logged can be undone.

#include "CommandLine.h"
#include "EnvironmentGuard.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/FaultyDisk.h"
#include "adapters/sqlite/database.h"
#include "doubles/ChildProcess.h"
#include "doubles/ScratchFolder.h"
#include "workbench/changes/RunLog.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <csignal>
#include <map>
#include <set>

namespace z7::cashflow::host {
namespace {

namespace fs = std::filesystem;
using sqlite::FaultyDisk;
using workbench::RowImage;
using workbench::sameRows;
using workbench::VoucherKey;

/// The rows of each voucher.
using Rows = std::map<std::string, std::vector<RowImage>>;

std::vector<RowImage> rowsOf(const Rows& rows, const std::string& voucher) {
    const auto found = rows.find(voucher);
    return found == rows.end() ? std::vector<RowImage>() : found->second;
}

std::set<std::string> vouchersOf(const Rows& rows, const Rows& others) {
    std::set<std::string> names;
    for (const Rows* each : {&rows, &others}) {
        for (const auto& [voucher, ignored] : *each) {
            names.insert(voucher);
        }
    }
    return names;
}

/// The sample company with seven vouchers in July, so that a run can be killed at each of its disk calls.
class KillTest : public testing::Test {
protected:
    KillTest() {
        fs::create_directory(before_);
        EXPECT_EQ(runLine("z7cf init " + at(before_) + " --sample --quiet").exitCode, 0);
        open(before_)->Execute("delete from gl_accvouch where iperiod=7 and not (isignseq in (1,2) and ino_id<=3) and "
                               "not (isignseq=2 and ino_id=12)");
        start_ = rowsIn(before_);
    }

    static std::string at(const fs::path& folder) { return (folder / "company.db").string(); }
    static std::unique_ptr<sqlite::Connection> open(const fs::path& folder) {
        auto connection = std::make_unique<sqlite::Connection>();
        connection->Open(sqlite::connectionString(at(folder), 2024));
        return connection;
    }
    static Rows rowsIn(const fs::path& folder) {
        Rows rows;
        for (const RowImage& row :
             workbench::readRowImages(*open(folder), "select " + workbench::rowColumnList() + " from gl_cashtable")) {
            const VoucherKey key{toInt16(row["iYear"]), toByte(row["iPeriod"]), toInt16(row["iSignSeq"]),
                                 toInt32(row["iNo_id"])};
            rows[workbench::voucherKeyText(key)].push_back(row);
        }
        return rows;
    }

    /// Kills a command at each of its disk calls in turn, each time on a new copy of the account, and checks
    /// what it leaves. The command is written without the account's file, for which it has a place {}. Returns
    /// how often it was killed.
    int killEverywhere(const std::string& command) {
        FaultyDisk disk;
        const Rows rows = rowsIn(before_);
        const std::size_t runs = runsIn(before_).size();
        const std::string line = std::string(command).replace(command.find("{}"), 2, at(killed_));
        for (int call = 1; call < 5000; ++call) {
            fs::remove_all(killed_);
            fs::copy(before_, killed_);
            const int end = test::inProcess([&] {
                disk.failFrom(call, FaultyDisk::Fault::killed);
                _exit(runLine(line).exitCode);
            });
            if (end != -SIGKILL) {
                EXPECT_LE(end, 1) << command;
                EXPECT_GE(end, 0) << command;
                expectConsistent(rows, runs + 1);
                return call - 1;
            }
            SCOPED_TRACE(command + " killed at call " + std::to_string(call));
            const std::size_t runsNow = runsIn(killed_).size();
            EXPECT_LE(runsNow, runs + 1);
            expectConsistent(rows, runsNow);
            if (HasFailure()) {
                return call;
            }
        }
        ADD_FAILURE() << "it never comes to its end";
        return 0;
    }

    test::ScratchFolder scratch_;
    fs::path before_ = scratch_.path() / "before"; ///< contains the account as the commands find it
    fs::path killed_ = scratch_.path() / "killed";
    Rows start_; ///< the rows before the first run

private:
    static std::vector<workbench::LoggedRun> runsIn(const fs::path& folder) {
        return workbench::readRuns(*open(folder));
    }

    /// Each voucher has the rows that the newest run logged, if the killed command made that run and it changed the
    /// voucher, otherwise the rows from before. Undoing all runs restores the start.
    void expectConsistent(const Rows& before, std::size_t runs) const {
        const Rows now = rowsIn(killed_);
        const auto all = runsIn(killed_);
        ASSERT_EQ(all.size(), runs);
        const bool noted = all.size() > runsIn(before_).size();
        Rows left = before;
        if (noted) {
            const auto connection = open(killed_);
            for (const VoucherKey& key : workbench::vouchersOfRun(*connection, all.front().number)) {
                const auto logged = workbench::readLogged(*connection, all.front().number, key);
                const std::string voucher = workbench::voucherKeyText(key);
                EXPECT_TRUE(sameRows(logged.before, rowsOf(before, voucher), true)) << voucher;
                left[voucher] = logged.after;
            }
        }
        for (const std::string& voucher : vouchersOf(left, now)) {
            EXPECT_TRUE(sameRows(rowsOf(left, voucher), rowsOf(now, voucher), true)) << voucher;
        }
        for (const auto& run : all) {
            const RunResult undone = runLine("z7cf undo " + at(killed_) + " " + std::to_string(run.number));
            EXPECT_EQ(undone.exitCode, 0) << undone.out << undone.err;
        }
        const Rows restored = rowsIn(killed_);
        for (const std::string& voucher : vouchersOf(start_, restored)) {
            EXPECT_TRUE(sameRows(rowsOf(start_, voucher), rowsOf(restored, voucher), true)) << voucher;
        }
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
};

TEST_F(KillTest, AnAllocationIsConsistentWhereverItIsKilled) {
    EXPECT_GT(killEverywhere("z7cf allot {} --year 2024 --period 7"), 50);
}

TEST_F(KillTest, ChangesOfStoredRowsAreConsistentWhereverTheyAreKilled) {
    ASSERT_EQ(runLine("z7cf allot " + at(before_) + " --year 2024 --period 7").exitCode, 1);
    const std::string sheet = scratch_
                                  .write("sheet.csv", "voucher,line,item\n"
                                                      "2024/7/2/1,1,0114\n"
                                                      "2024/7/2/2,1,0114\n"
                                                      "2024/7/2/12,1,0114\n")
                                  .string();
    EXPECT_GT(killEverywhere("z7cf assign {} --from " + sheet), 20);
    EXPECT_GT(killEverywhere("z7cf reassign {} --year 2024 --from 0101 --to 0103 --period 7"), 20);
    EXPECT_GT(killEverywhere("z7cf undo {} 1"), 20);
}

} // namespace
} // namespace z7::cashflow::host
