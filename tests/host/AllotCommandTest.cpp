// What allot reports as stored is on the disk.

#include "CommandLine.h"
#include "EnvironmentGuard.h"
#include "adapters/sqlite/FaultyDisk.h"
#include "doubles/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace z7::cashflow::host {
namespace {

using sqlite::FaultyDisk;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

class AllotCommandTest : public testing::TestWithParam<const char*> {
protected:
    AllotCommandTest() {
        fs::create_directory(before_);
        EXPECT_EQ(runLine("z7cf init " + (before_ / "company.db").string() + " --sample --quiet").exitCode, 0);
    }

    /// Allots a month on a new copy of the account, where written data does not reach the disk from a call on.
    RunResult allot(int failingCall) {
        fs::remove_all(now_);
        fs::copy(before_, now_);
        disk_.failFrom(failingCall, FaultyDisk::Fault::syncFails);
        RunResult result =
            runLine("z7cf allot " + (now_ / "company.db").string() + " --year 2024 --period 7" + GetParam());
        calls_ = FaultyDisk::calls();
        disk_.failFrom(never, FaultyDisk::Fault::syncFails);
        return result;
    }

    static constexpr int never = 1000000;
    int calls_ = 0; ///< calls of the disk in the last run

private:
    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    test::ScratchFolder scratch_;
    fs::path before_ = scratch_.path() / "before";
    fs::path now_ = scratch_.path() / "now";
    FaultyDisk disk_;
};

TEST_P(AllotCommandTest, ReportsNothingAsStoredThatTheDiskDidNotTake) {
    constexpr const char* stored = "2024/7/1/1\",\"sign\":\"收\",\"outcome\":\"stored\"";
    const bool json = std::string(GetParam()) == " --json";
    const RunResult whole = allot(never);
    EXPECT_EQ(whole.exitCode, 1) << whole.err;
    EXPECT_THAT(whole.out, HasSubstr(json ? stored : "Rows: "));
    const int calls = calls_;
    int unconfirmed = 0;
    for (int failing = 1; failing <= calls; failing += 7) {
        const RunResult failed = allot(failing);
        if (failed.exitCode != 3) { // nothing was left to wait for
            EXPECT_EQ(failed.exitCode, 1) << failing;
            continue;
        }
        EXPECT_THAT(failed.out, Not(HasSubstr(json ? stored : "Rows: "))) << failing;
        EXPECT_THAT(failed.err, Not(HasSubstr("Logged as run"))) << failing;
        unconfirmed += failed.err.find("The disk did not confirm the last vouchers (") != std::string::npos ? 1 : 0;
    }
    EXPECT_GT(unconfirmed, 0) << "no run failed at its last wait";
}

INSTANTIATE_TEST_SUITE_P(Forms, AllotCommandTest, testing::Values("", " --json"),
                         [](const auto& form) { return std::string(form.index == 0 ? "Table" : "Json"); });

} // namespace
} // namespace z7::cashflow::host
