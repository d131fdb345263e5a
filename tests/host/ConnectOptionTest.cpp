#include "host/cli/connectOption.h"

#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "doubles/ScratchFolder.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::host {
namespace {

using testing::HasSubstr;
using testing::Not;

class ConnectOptionTest : public testing::Test {
protected:
    [[nodiscard]] std::string stringOf(const std::string& text) const {
        return connectionStringOf("@" + scratch.write("office.txt", text).string(), true);
    }

    [[nodiscard]] std::string refusalOf(const std::string& text) const {
        try {
            static_cast<void>(stringOf(text));
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.exitCode(), exit_code::usage);
            return failure.message(Language::english);
        }
        return "(no failure)";
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    test::ScratchFolder scratch;
};

TEST_F(ConnectOptionTest, PassesOverAByteOrderMarkAndRemarks) {
    EXPECT_EQ(stringOf("\xEF\xBB\xBF"
                       "DSN=office;UID=z7\n"),
              "DSN=office;UID=z7");
    EXPECT_EQ(stringOf("# the office's server\n\n  # another remark\nDSN=office;PWD=a#b\n"), "DSN=office;PWD=a#b");
}

TEST_F(ConnectOptionTest, JoinsLines) {
    EXPECT_EQ(stringOf("Driver={FreeTDS};\r\n  Server=ledger\r\nPort=1433;\r\n"),
              "Driver={FreeTDS};Server=ledger;Port=1433;");
}

TEST_F(ConnectOptionTest, NamesAFileThatHoldsNoString) {
    const std::string file = (scratch.path() / "office.txt").string();
    EXPECT_EQ(refusalOf("\n# nothing but a remark\n"), "The file " + file + " contains no connection string");
    EXPECT_THAT(refusalOf(std::string("\xFF\xFE"
                                      "D\0",
                                      4)),
                HasSubstr("it looks like UTF-16, so save it as UTF-8"));
    EXPECT_THAT(refusalOf(std::string(70000, 'x')), HasSubstr("cannot be read"));
}

TEST_F(ConnectOptionTest, NamesAnEmptyOption) {
    for (const auto& arguments :
         {std::vector<std::string>{"rows", "--connect", "", "2024/1/1/1"}, {"rows", "--connect=", "2024/1/1/1"}}) {
        const RunResult run = runProgram(arguments);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.err, "z7cf: the value of option --connect is empty\n");
    }
}

TEST_F(ConnectOptionTest, WarnsOfASecretThatOthersCanRead) {
    namespace fs = std::filesystem;
    const fs::path file = scratch.write("office.txt", "Driver={No such driver};UID=u;PWD=hush");
    const auto said = [&file](fs::perms rights, const std::vector<std::string>& more = {}) {
        fs::permissions(file, rights);
        std::vector<std::string> arguments{"rows", "2024/6/2/10", "--connect", "@" + file.string()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runProgram(arguments).err;
    };
    const fs::perms own = fs::perms::owner_read | fs::perms::owner_write;
    const std::string warning = "z7cf: Warning: the file " + file.string() + " contains a password";
    EXPECT_THAT(said(own | fs::perms::others_read), HasSubstr(warning));
    EXPECT_THAT(said(own | fs::perms::others_write), HasSubstr(warning));
    EXPECT_THAT(said(own | fs::perms::others_read), Not(HasSubstr("hush")));
    EXPECT_THAT(said(own | fs::perms::group_read), Not(HasSubstr("Warning")));
    EXPECT_THAT(said(own | fs::perms::others_read, {"--quiet"}), Not(HasSubstr("Warning")));
    scratch.write("office.txt", "Driver={No such driver};Trusted_Connection=yes");
    EXPECT_THAT(said(own | fs::perms::others_read), Not(HasSubstr("Warning"))) << "there is no secret in it";
}

} // namespace
} // namespace z7::cashflow::host
