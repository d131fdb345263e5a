#include "host/work/RememberedAnswers.h"

#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/sqlite/Connection.h"
#include "doubles/ScratchFolder.h"
#include "host/report/rowsByLine.h"
#include "host/work/Session.h"
#include "host/work/rowsView.h"
#include "workbench/vouchers/Allotment.h"
#include "workbench/vouchers/voucherList.h"
#include "z7cashflow/statements/accountAnswers.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace z7::cashflow::host {
namespace {

using workbench::Allotment;
using workbench::VoucherHead;
using workbench::VoucherResult;

/// What a run came to, and the statements that were sent in it.
struct Run {
    std::vector<std::string> results; ///< a text for each voucher with everything that was stored
    std::vector<std::string> sent;

    [[nodiscard]] std::size_t count(bool accountAnswers) const {
        return static_cast<std::size_t>(std::count_if(sent.begin(), sent.end(), [&](const std::string& text) {
            return statements::isAccountAnswer(text) == accountAnswers;
        }));
    }
    [[nodiscard]] std::size_t distinctAnswers() const {
        std::set<std::string> texts;
        std::copy_if(sent.begin(), sent.end(), std::inserter(texts, texts.end()), statements::isAccountAnswer);
        return texts.size();
    }
};

std::string textOf(const Variant& value) { return value.isNull() ? "(null)" : toText(value); }

std::string textOf(const VoucherResult& result) {
    std::string text = workbench::voucherKeyText(result.key) + " " + std::to_string(static_cast<int>(result.outcome)) +
                       " " + std::to_string(result.rows);
    if (result.refusal) {
        text += " " + std::to_string(result.refusal->error.number()) + " " + result.refusal->error.description();
    }
    for (const workbench::RowChange& change : result.changes) {
        text += "\n" + std::to_string(static_cast<int>(change.kind));
        for (std::size_t i = 1; change.after && i < workbench::rowColumns.size(); ++i) {
            text += "|" + textOf(change.after->at(i));
        }
    }
    return text;
}

/// A session on an account whose statements are counted.
class Desk {
public:
    Desk(const std::filesystem::path& file, std::int16_t year)
        : session_(AccountPlace::ofFile(file), year, {}, Console{in_, out_, err_}) {
        connection().onStatement([this](int, const std::string& text) { sent.push_back(text); });
    }

    [[nodiscard]] sqlite::Connection& connection() { return dynamic_cast<sqlite::Connection&>(session_.connection()); }
    [[nodiscard]] Session& session() { return session_; }

    /// Allots every voucher of the year and keeps nothing of it.
    Run tryYear(bool remembering) {
        const auto vouchers = workbench::listVouchers(connection(), session_.year(), std::nullopt);
        std::optional<RememberedAnswers> remembered;
        if (remembering) {
            remembered.emplace(connection());
        }
        sent.clear();
        Allotment allotment(connection(), session_.data(), session_.provider().gl(), false);
        Run run;
        (void)allotment.allotAll(
            vouchers, [] { return false; },
            [&](const VoucherResult& result) { run.results.push_back(textOf(result)); });
        run.sent = sent;
        return run;
    }

    std::vector<std::string> sent;

private:
    std::istringstream in_;
    std::ostringstream out_;
    std::ostringstream err_;
    Session session_;
};

class RememberedAnswersTest : public testing::Test {
protected:
    RememberedAnswersTest() { EXPECT_EQ(runProgram({"init", file_.string(), "--sample", "--quiet"}).exitCode, 0); }

    [[nodiscard]] static std::string option(Desk& desk) {
        return desk.session().data().GetAccInfo(desk.connection(), "GL", "bXJLL");
    }
    static void setOption(Connection& connection, const char* value) {
        (void)connection.Execute(std::string("update accinformation set cvalue=N'") + value +
                                 "' where csysid=N'GL' and cname=N'bXJLL'");
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    test::ScratchFolder folder_;
    std::filesystem::path file_ = folder_.path() / "sample.db";
};

void expectSameWithFewerStatements(Desk& desk) {
    const Run without = desk.tryYear(false);
    const Run with = desk.tryYear(true);
    EXPECT_EQ(with.results, without.results);
    EXPECT_EQ(with.count(false), without.count(false)) << "what belongs to vouchers is asked as before";
    EXPECT_EQ(with.count(true), without.distinctAnswers()) << "what belongs to the account once";
    EXPECT_GT(without.count(true), 5 * with.count(true)) << "most questions come again";
}

TEST_F(RememberedAnswersTest, GiveTheSameRowsForFewerStatements) {
    Desk desk(file_, 2024);
    expectSameWithFewerStatements(desk);
}

TEST(RememberedAnswersOfTheHouseholdJournal, GiveTheSameRowsForFewerStatements) {
    const std::filesystem::path data = std::filesystem::path(Z7_SOURCE_DIR) / "../shared/data/household";
    if (!std::filesystem::exists(data)) {
        GTEST_SKIP() << "the household journal is not there";
    }
    const EnvironmentGuard language("LC_ALL", "C");
    const EnvironmentGuard home("HOME", "/nonexistent");
    const test::ScratchFolder folder;
    const std::filesystem::path file = folder.path() / "house.db";
    ASSERT_EQ(runProgram({"init", file.string(), "--from", data.string(), "--quiet"}).exitCode, 0);
    for (const std::int16_t year : {std::int16_t{2013}, std::int16_t{2014}}) {
        Desk desk(file, year);
        expectSameWithFewerStatements(desk);
    }
}

TEST_F(RememberedAnswersTest, AreThoseOfTheSessionAndOfTheSessionsThatTheLibraryOpens) {
    Desk desk(file_, 2024);
    const RememberedAnswers remembered(desk.connection());
    DataProvider& data = desk.session().data();
    const std::string before = option(desk) + data.GetCFItemName(desk.connection(), "01");
    desk.sent.clear();
    EXPECT_EQ(option(desk) + data.GetCFItemName(desk.connection(), "01"), before);
    EXPECT_EQ(desk.sent, std::vector<std::string>{});
}

TEST_F(RememberedAnswersTest, EndWithTheRun) {
    Desk desk(file_, 2024);
    {
        const RememberedAnswers remembered(desk.connection());
        (void)option(desk);
    }
    desk.sent.clear();
    (void)option(desk);
    EXPECT_EQ(desk.sent.size(), 1U);
    const RememberedAnswers another(desk.connection());
    (void)option(desk);
    EXPECT_EQ(desk.sent.size(), 2U) << "another run begins with nothing";
}

TEST_F(RememberedAnswersTest, EndWhenTheRunChangesTheirTable) {
    Desk desk(file_, 2024);
    setOption(desk.connection(), "true");
    const RememberedAnswers remembered(desk.connection());
    EXPECT_EQ(option(desk), "true");
    desk.connection().BeginTrans();
    setOption(desk.connection(), "false");
    EXPECT_EQ(option(desk), "false");
    desk.connection().RollbackTrans();
    EXPECT_EQ(option(desk), "true");
}

TEST_F(RememberedAnswersTest, EndWhenTheRunWritesRecordsOfTheirTable) {
    Desk desk(file_, 2024);
    setOption(desk.connection(), "true");
    const RememberedAnswers remembered(desk.connection());
    EXPECT_EQ(option(desk), "true");
    const auto records = desk.connection().createRecordset();
    records->Open("select * from accinformation where csysid=N'GL' and cname=N'bXJLL'",
                  desk.connection().ConnectionString(), CursorType::dynamic, LockType::pessimistic);
    records->Fields().Item("cvalue", Variant("false"));
    records->Update();
    EXPECT_EQ(option(desk), "false");
}

TEST_F(RememberedAnswersTest, DoNotShowWhatOthersChangeMeanwhile) {
    Desk desk(file_, 2024);
    sqlite::Connection other;
    other.Open(desk.connection().ConnectionString());
    std::string before;
    {
        const RememberedAnswers remembered(desk.connection());
        before = option(desk);
        setOption(other, "changed");
        EXPECT_EQ(option(desk), before);
    }
    EXPECT_EQ(option(desk), "changed");
}

TEST_F(RememberedAnswersTest, LeaveTheOriginsOfItemsAsTheyAre) {
    Desk desk(file_, 2024);
    const auto vouchers = workbench::listVouchers(desk.connection(), 2024, std::nullopt);
    const auto origins = [&] {
        std::vector<std::string> texts;
        for (const VoucherHead& head : vouchers) {
            const workbench::Voucher voucher = desk.session().judge().read(head.key);
            if (desk.session().judge().unworkable(voucher)) {
                continue;
            }
            const ItemSourceNotes notes;
            const auto rows = desk.session().judge().generatedRows(voucher);
            for (const auto& row : rows ? rowsByLine(*rows) : std::vector<std::shared_ptr<CashFlow>>{}) {
                const ItemSource& source = notes.sources().at(row.get());
                texts.push_back(std::to_string(static_cast<int>(source.kind)) + source.account + source.user +
                                (source.start ? dateText(*source.start) : ""));
            }
        }
        return texts;
    };
    const auto before = origins();
    const RememberedAnswers remembered(desk.connection());
    EXPECT_EQ(origins(), before);
    EXPECT_EQ(origins(), before) << "asked a second time";
    EXPECT_FALSE(before.empty());
}

} // namespace
} // namespace z7::cashflow::host
