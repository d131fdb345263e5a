#include "adapters/terminal/TerminalMessageBox.h"
#include "host/terminal/ProgressBar.h"
#include "host/terminal/StopSignals.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

namespace z7::cashflow {
namespace {

using terminal::MessageBoxOptions;
using terminal::TerminalMessageBox;

constexpr std::int32_t ok = 1;
constexpr std::int32_t yes = 6;
constexpr std::int32_t no = 7;

struct Box {
    explicit Box(MessageBoxOptions options, const std::string& answers = {})
        : input(answers), box(input, errors, options) {}
    std::istringstream input;
    std::ostringstream errors;
    TerminalMessageBox box;
};

TEST(TerminalMessageBox, WritesANoticeWithItsTitle) {
    Box test({});
    EXPECT_EQ(test.box.Show("GL--bCashCode", 16, "GetAccinfo Error!", "", 0), ok);
    EXPECT_EQ(test.box.Show("plain", 0, "", "", 0), ok);
    EXPECT_EQ(test.errors.str(), "GetAccinfo Error!: GL--bCashCode\nplain\n");
}

TEST(TerminalMessageBox, CountsWhatComesAgain) {
    Box test({});
    for (int i = 0; i < 1000; ++i) {
        static_cast<void>(test.box.Show("GL--bXJLL", 16, "GetAccinfo Error!", "", 0));
    }
    static_cast<void>(test.box.Show("once", 64, "", "", 0));
    EXPECT_EQ(test.errors.str(), "GetAccinfo Error!: GL--bXJLL\nonce\n");
    test.errors.str("");
    test.box.reportRepeats();
    EXPECT_EQ(test.errors.str(), "GetAccinfo Error!: GL--bXJLL (1000 times)\n");
    test.errors.str("");
    test.box.reportRepeats();
    EXPECT_EQ(test.errors.str(), "") << "the counts are forgotten";
}

TEST(TerminalMessageBox, RemembersABoundedNumberOfNotices) {
    Box test({});
    for (int i = 0; i < 250; ++i) {
        static_cast<void>(test.box.Show("notice " + std::to_string(i), 64, "", "", 0));
    }
    test.errors.str("");
    test.box.locale("2052");
    test.box.reportRepeats();
    EXPECT_EQ(test.errors.str(), "另有其他消息 50\n");
}

TEST(TerminalMessageBox, AsksAndTakesTheAnswer) {
    for (const auto& [answers, expected] : std::vector<std::pair<std::string, std::int32_t>>{
             {"y\n", yes}, {"NO\n", no}, {"是\n", yes}, {"否\n", no}, {"\n", no}, {"", no}, {"what\nyes\n", yes}}) {
        Box test({true, false}, answers);
        EXPECT_EQ(test.box.Show("Replace it?", 292, "Cash flow", "", 0), expected) << answers;
        EXPECT_EQ(test.errors.str().rfind("Cash flow: Replace it? [y/N] ", 0), 0U) << test.errors.str();
    }
}

TEST(TerminalMessageBox, WithoutATerminalTakesTheDefaultButton) {
    Box second({}, "y\n");
    EXPECT_EQ(second.box.Show("Replace it?", 260, "", "", 0), no);
    EXPECT_EQ(second.errors.str(), "Replace it? [y/N] no\n");
    Box first({}, "n\n");
    first.box.locale("2052");
    EXPECT_EQ(first.box.Show("是否覆盖？", 36, "", "", 0), yes);
    EXPECT_EQ(first.errors.str(), "是否覆盖？ [是/否，默认是] 是\n");
}

TEST(TerminalMessageBox, QuietAnswersWithoutAWord) {
    Box test({true, true}, "y\n");
    EXPECT_EQ(test.box.Show("Replace it?", 292, "", "", 0), no);
    EXPECT_EQ(test.box.Show("notice", 64, "", "", 0), ok);
    EXPECT_EQ(test.box.Show("notice", 64, "", "", 0), ok);
    test.box.reportRepeats();
    EXPECT_EQ(test.errors.str(), "");
}

TEST(TerminalMessageBox, KeepsControlCharactersFromTheTerminal) {
    Box test({});
    static_cast<void>(test.box.Show("a\x1b[2Jb", 0, "t\n", "", 0));
    EXPECT_EQ(test.errors.str(), "t : a\xEF\xBF\xBD[2Jb\n");
}

TEST(ProgressBar, DrawsOnlyWhenThePercentageChangesAndGoesAway) {
    std::ostringstream stream;
    {
        host::ProgressBar bar(stream, "Allotting", 1000, true);
        bar.update(0);
        const std::string first = stream.str();
        EXPECT_EQ(first, "\r\x1b[KAllotting [..............................] 0/1000 0%");
        bar.update(9);
        EXPECT_EQ(stream.str(), first);
        bar.update(500);
        EXPECT_EQ(stream.str(), first + "\r\x1b[KAllotting [###############...............] 500/1000 50%");
        stream.str("");
    }
    EXPECT_EQ(stream.str(), "\r\x1b[K");
}

TEST(ProgressBar, FitsNarrowTerminals) {
    const auto drawn = [](std::size_t columns) {
        std::ostringstream stream;
        host::ProgressBar bar(stream, "正在分配", 1000, true, columns);
        bar.update(500);
        return stream.str().substr(4);
    };
    EXPECT_EQ(drawn(40), "正在分配 [######.......] 500/1000 50%");
    EXPECT_EQ(drawn(32), "正在分配 [##...] 500/1000 50%");
    EXPECT_EQ(drawn(31), "500/1000 50%");
    EXPECT_EQ(drawn(1), "500/1000 50%");
}

TEST(ProgressBar, DrawsNothingWhereItIsNotShown) {
    std::ostringstream stream;
    {
        host::ProgressBar hidden(stream, "x", 10, false);
        hidden.update(5);
        host::ProgressBar empty(stream, "x", 0, true);
        empty.update(0);
        host::ProgressBar unused(stream, "x", 10, true);
    }
    EXPECT_EQ(stream.str(), "");
}

TEST(StopSignals, HoldsASignalBackAndReportsIt) {
    for (const int number : {SIGINT, SIGTERM}) {
        host::StopSignals signals;
        EXPECT_FALSE(signals.requested());
        EXPECT_EQ(signals.received(), 0);
        ASSERT_EQ(raise(number), 0);
        EXPECT_TRUE(signals.requested());
        EXPECT_EQ(signals.received(), number);
        EXPECT_TRUE(signals.requested()) << "the wish to stop stays";
        ASSERT_EQ(raise(number == SIGINT ? SIGTERM : SIGINT), 0);
        EXPECT_TRUE(signals.requested());
        EXPECT_EQ(signals.received(), number) << "the first signal counts";
    }
}

TEST(StopSignals, ConsumesALastSignalAndRestoresTheFormerMask) {
    {
        host::StopSignals signals;
        ASSERT_EQ(raise(SIGTERM), 0);
    }
    sigset_t blocked;
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, nullptr, &blocked), 0);
    EXPECT_EQ(sigismember(&blocked, SIGINT), 0);
    EXPECT_EQ(sigismember(&blocked, SIGTERM), 0);
}

} // namespace
} // namespace z7::cashflow
