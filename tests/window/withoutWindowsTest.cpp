// A program that was built without windows, whatever this build has.

#include "RunProgram.h"
#include "doubles/ScratchFolder.h"
#include "host/cli/exitCode.h"

#include <gtest/gtest.h>

namespace z7::cashflow::host {
namespace {

TEST(WithoutWindows, EditSaysWhatIsMissingAndSavesNothing) {
    const test::ScratchFolder scratch;
    const std::string file = (scratch.path() / "company.db").string();
    ASSERT_EQ(runProgram({"init", file, "--sample", "--quiet"}).exitCode, exit_code::done);
    for (const auto& arguments :
         {std::vector<std::string>{"2024/3/1/1"}, {"--outside", "sales_voucher", "AR-2024-0301"}}) {
        std::vector<std::string> line{"edit", file, "--lang", "en"};
        line.insert(line.end(), arguments.begin(), arguments.end());
        const RunResult run = runProgram(line);
        EXPECT_EQ(run.exitCode, exit_code::usage);
        EXPECT_NE(run.err.find("built without windows"), std::string::npos) << run.err;
        EXPECT_EQ(run.out, "");
    }
    EXPECT_NE(runProgram({"rows", file, "2024/3/1/1", "--json"}).out.find("\"rows\":[]"), std::string::npos);
}

} // namespace
} // namespace z7::cashflow::host
