#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/terminal/printable.h"
#include "host/cli/nearMatch.h"
#include "host/cli/readText.h"
#include "host/terminal/foldedText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace z7::cashflow::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// Command lines that are refused before anything is opened.
class UsageTextTest : public testing::Test {
protected:
    /// The one line that is written for a command line.
    static std::string said(const std::vector<std::string>& arguments) {
        const RunResult run = runProgram(arguments);
        EXPECT_EQ(run.exitCode, 2) << run.err;
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        return run.err.substr(0, run.err.find('\n'));
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
};

TEST_F(UsageTextTest, WithJsonTheFailureIsAlsoARecord) {
    for (const std::vector<std::string>& words : {std::vector<std::string>{"vouchers", "x.db", "--json"},
                                                  {"--json", "vouchers", "x.db"},
                                                  {"vouchers", "--json=true", "x.db"}}) {
        const RunResult run = runProgram(words);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_THAT(run.out, testing::StartsWith("{\"form\":1,\"error\":{\"code\":\"")) << run.err;
        EXPECT_THAT(run.out, HasSubstr("\"exitCode\":2"));
        EXPECT_EQ(run.lines().size(), 1U);
    }
    EXPECT_EQ(runProgram({"vouchers", "x.db", "--json"}).out,
              "{\"form\":1,\"error\":{\"code\":\"argument-missing\",\"text\":\"--year is missing; see --help\","
              "\"exitCode\":2,\"arguments\":[\"--year\"]}}\n");
}

TEST_F(UsageTextTest, NamesWhatIsMissing) {
    EXPECT_EQ(said({"vouchers", "x.db"}), "z7cf: --year is missing; see --help");
    EXPECT_EQ(said({"--lang", "zh-CN", "vouchers", "x.db"}), "z7cf: 缺少 --year；用 --help 查看用法");
    EXPECT_EQ(said({"vouchers", "x.db", "--year"}), "z7cf: option --year needs a value; see --help");
}

TEST_F(UsageTextTest, NamesAnUnknownOptionWithTheOneThatWasMeant) {
    EXPECT_EQ(said({"vouchers", "--yaer", "2024", "x.db"}), "z7cf: unknown option --yaer; did you mean --year?");
    EXPECT_EQ(said({"vouchers", "--yaer=2024", "x.db"}), "z7cf: unknown option --yaer; did you mean --year?");
    EXPECT_EQ(said({"vouchers", "x.db", "--year", "2024", "--nosuch", "more"}),
              "z7cf: unknown option --nosuch; see --help");
    EXPECT_EQ(said({"--lang", "zh-CN", "vouchers", "x.db", "--yaer", "2024"}),
              "z7cf: 没有选项 --yaer；是否想用 --year？");
}

TEST_F(UsageTextTest, NamesAnUnknownCommandWithTheOneThatWasMeant) {
    EXPECT_EQ(said({"allto", "x.db"}), "z7cf: unknown command \"allto\"; did you mean allot?");
    EXPECT_EQ(said({"frobnicate"}), "z7cf: unknown command \"frobnicate\"; --help lists the commands");
    EXPECT_EQ(said({"help", "allto"}), "z7cf: unknown command \"allto\"; did you mean allot?");
    EXPECT_EQ(said({"--lang", "zh-CN", "allto"}), "z7cf: 没有命令“allto”；是否想用 allot？");
}

TEST_F(UsageTextTest, NamesWhatIsTooMuch) {
    EXPECT_EQ(said({"vouchers", "x.db", "y.db", "--year", "2024"}), "z7cf: too many arguments: y.db; see --help");
    EXPECT_EQ(said({"vouchers", "x.db", "--year", "2024", "--year", "2023"}),
              "z7cf: option --year is given more than once");
    EXPECT_EQ(said({"vouchers", "x.db", "--year", "2024", "--lang", "en", "--lang", "en"}),
              "z7cf: option --lang is given more than once");
    EXPECT_EQ(said({"init", "x.db", "--sample", "--from", "d"}), "z7cf: --sample and --from cannot be used together");
    EXPECT_EQ(said({"--lang", "zh-CN", "init", "x.db", "--sample", "--from", "d"}),
              "z7cf: --sample 和 --from 不能同时使用");
}

TEST_F(UsageTextTest, QuotesANumberAsItWasTyped) {
    EXPECT_EQ(said({"vouchers", "x.db", "--year", "99999999999999999999"}),
              "z7cf: The accounting year must be 1 to 9999, not 99999999999999999999");
    EXPECT_EQ(said({"vouchers", "x.db", "--year", "soon"}), "z7cf: The accounting year must be 1 to 9999, not soon");
    EXPECT_EQ(said({"vouchers", "x.db", "--year", "2024x"}), "z7cf: The accounting year must be 1 to 9999, not 2024x");
    EXPECT_EQ(said({"voucher-xml", "x.db", "v.xml", "--year", "soon"}),
              "z7cf: option --year takes a whole number, not \"soon\"");
}

TEST_F(UsageTextTest, NamesTheChoices) {
    EXPECT_EQ(said({"statement", "x.db", "--year", "2024", "--by", "week"}),
              "z7cf: option --by takes one of month/quarter/year, not \"week\"");
    EXPECT_EQ(said({"--lang", "zh-CN", "statement", "x.db", "--year", "2024", "--by", "week"}),
              "z7cf: 选项 --by 应为 month/quarter/year 之一，而不是“week”");
}

TEST_F(UsageTextTest, HelpIsACommandToo) {
    const RunResult all = runProgram({"help"});
    EXPECT_EQ(all.exitCode, 0);
    EXPECT_EQ(all.out, runProgram({"--help"}).out);
    EXPECT_EQ(runProgram({"help", "allot"}).out, runProgram({"allot", "--help"}).out);
    EXPECT_EQ(runProgram({"help", "--lang", "zh-CN"}).out, runProgram({"--help", "--lang", "zh-CN"}).out);
    EXPECT_EQ(runProgram({"--lang", "zh-CN", "help", "rows"}).out,
              runProgram({"rows", "--help", "--lang", "zh-CN"}).out);
}

TEST_F(UsageTextTest, HelpIsAlignedAndNotWiderThanEightyColumns) {
    for (const char* language : {"en", "zh-CN"}) {
        for (const char* command : {"", "init", "vouchers", "outside", "voucher-xml"}) {
            std::vector<std::string> arguments{"--lang", language, "--help"};
            if (*command != '\0') {
                arguments.insert(arguments.begin(), command);
            }
            for (const std::string& line : runProgram(arguments).lines()) {
                EXPECT_TRUE(terminal::displayWidth(line) <= 80 || line.starts_with("  z7cf ")) << line;
            }
        }
    }
    const RunResult chinese = runProgram({"--lang", "zh-CN", "vouchers", "--help"});
    EXPECT_THAT(chinese.out, HasSubstr("\n  --year 整数             会计年度（必需）\n"));
    EXPECT_THAT(chinese.out, HasSubstr("\n  --json                  输出 JSON，供程序读取\n"));
    EXPECT_THAT(chinese.out, HasSubstr("\n选项：\n"));
    EXPECT_THAT(chinese.out, Not(HasSubstr("TEXT")));
    EXPECT_THAT(chinese.out, Not(HasSubstr(":\n")));
}

TEST(NearMatch, ForgivesOneSlipAndTwoInLongerWords) {
    const std::vector<std::string> words{"init", "rows", "allot", "vouchers"};
    EXPECT_EQ(nearMatch("allto", words), "allot") << "swapped";
    EXPECT_EQ(nearMatch("alot", words), "allot") << "a letter missing";
    EXPECT_EQ(nearMatch("rowss", words), "rows") << "a letter too many";
    EXPECT_EQ(nearMatch("inat", words), "init") << "another letter";
    EXPECT_EQ(nearMatch("vuochrs", words), "vouchers");
    EXPECT_EQ(nearMatch("raqz", words), "") << "two slips in a short word";
    EXPECT_EQ(nearMatch("statement", words), "");
    EXPECT_EQ(nearMatch("", words), "");
    EXPECT_EQ(nearMatch(std::string(100000, 'a'), words), "");
}

TEST(FoldedText, BreaksAtBlanksAndBesideWideCharacters) {
    EXPECT_THAT(foldedText("one two three", 8), ElementsAre("one two", "three"));
    EXPECT_THAT(foldedText("one", 80), ElementsAre("one"));
    EXPECT_THAT(foldedText("", 80), ElementsAre(""));
    EXPECT_THAT(foldedText("incomprehensible word", 5), ElementsAre("incomprehensible", "word"));
    EXPECT_THAT(foldedText("会计年度会计", 8), ElementsAre("会计年度", "会计"));
    EXPECT_THAT(foldedText("会计年度，会计", 8), ElementsAre("会计年", "度，会计")) << "no line begins with a comma";
    const std::string family = "\U0001F468\u200D\U0001F467"; // two emoji joined to one
    EXPECT_THAT(foldedText(family + family, 3), ElementsAre(family, family));
    EXPECT_THAT(foldedText("用 abc 文件", 6), ElementsAre("用 abc", "文件"));
}

TEST(ReadText, ReadsNoMoreThanAskedFor) {
    std::istringstream whole("12345");
    const TextRead read = readText(whole, 5);
    EXPECT_EQ(read.outcome, TextRead::Outcome::whole);
    EXPECT_EQ(read.text, "12345");
    std::istringstream longer("123456");
    EXPECT_EQ(readText(longer, 5).outcome, TextRead::Outcome::tooLong);
    EXPECT_EQ(readText(std::filesystem::path("/dev/zero"), 100000).outcome, TextRead::Outcome::tooLong);
    EXPECT_EQ(readText(std::filesystem::path("/nonexistent"), 5).outcome, TextRead::Outcome::unreadable);
    EXPECT_EQ(readText(std::filesystem::path("/"), 5).outcome, TextRead::Outcome::unreadable);
}

} // namespace
} // namespace z7::cashflow::host
