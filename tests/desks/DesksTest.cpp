// Several desks work on one database at the same time, each in its own process.

#include "desks/Desk.h"
#include "desks/Office.h"
#include "doubles/ChildProcess.h"
#include "workbench/vouchers/Voucher.h"
#include "workbench/vouchers/databaseFailure.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace z7::cashflow::desks {
namespace {

// The exit codes of a desk's process.
enum DeskResult : int { allDone = 0, gaveUp = 42 };

constexpr std::size_t desks = 3;
// The mark of each desk.
const std::array<std::string, desks> markOf{"first desk", "second desk", "third desk"};
const std::array<std::string, desks> itemOf{"0101", "0102", "0103"};
const std::vector<int> allDeskDone(desks, allDone);

class DesksTest : public testing::TestWithParam<OfficeKind> {
protected:
    void SetUp() override {
        office_ = GetParam().make();
        if (office_ == nullptr) {
            GTEST_SKIP() << GetParam().missing;
        }
    }

    // Runs each desk in its own process and waits for all of them. Returns their exit codes.
    static std::vector<int> runDesks(const std::vector<std::function<int()>>& work) {
        std::vector<test::ChildProcess> processes;
        for (const auto& desk : work) {
            processes.emplace_back(desk);
        }
        std::vector<int> results;
        for (test::ChildProcess& process : processes) {
            results.push_back(process.wait());
        }
        return results;
    }

    // Each desk saves, in its own process, the vouchers for which it is in charge.
    [[nodiscard]] std::vector<int>
    saveAtOnce(const std::vector<workbench::VoucherHead>& vouchers,
               const std::function<bool(std::size_t desk, std::size_t voucher)>& isItsOwn) {
        std::vector<std::function<int()>> work;
        for (std::size_t number = 0; number < desks; ++number) {
            work.emplace_back([this, &vouchers, &isItsOwn, number]() -> int {
                Desk desk(*office_);
                for (std::size_t at = 0; at < vouchers.size(); ++at) {
                    if (isItsOwn(number, at)) {
                        desk.save(vouchers[at], markOf[number], itemOf[number]);
                    }
                }
                return allDone;
            });
        }
        return runDesks(work);
    }

    [[nodiscard]] std::vector<workbench::VoucherHead> vouchers() const { return Desk(*office_).vouchers(); }

    std::unique_ptr<Office> office_;
};

TEST_P(DesksTest, LoseNothingIfTheySaveDifferentVouchers) {
    const auto all = vouchers();
    const auto isItsOwn = [](std::size_t desk, std::size_t voucher) { return voucher % desks == desk; };
    EXPECT_EQ(saveAtOnce(all, isItsOwn), allDeskDone);

    Desk alone(*office_);
    const auto together = alone.stored();
    auto lines = alone.marksOfLines();
    auto rows = alone.marksOfRows();
    std::size_t accepted = 0;
    // A single desk that saves all of them once more gets the same result.
    for (std::size_t at = 0; at < all.size(); ++at) {
        const std::string name = nameOf(all[at].key);
        const bool isAccepted = alone.save(all[at], "alone", "0111");
        accepted += isAccepted ? 1 : 0;
        EXPECT_EQ(lines[name], std::vector<std::string>{isAccepted ? markOf[at % desks] : ""}) << name;
        if (isAccepted && rows.contains(name)) {
            EXPECT_EQ(rows[name], std::vector<std::string>{markOf[at % desks] + "/" + itemOf[at % desks]}) << name;
        }
    }
    EXPECT_EQ(alone.stored(), together);
    EXPECT_GT(together.size(), 150U);
    EXPECT_GT(accepted, 250U);
}

TEST_P(DesksTest, LeaveNoHalfAndNoDoubleVoucherIfTheySaveTheSame) {
    const auto everyFifth = [](std::size_t, std::size_t voucher) { return voucher % 5 == 0; };
    const auto all = vouchers();
    EXPECT_EQ(saveAtOnce(all, everyFifth), allDeskDone);

    Desk alone(*office_);
    const auto together = alone.stored();
    auto lines = alone.marksOfLines();
    auto rows = alone.marksOfRows();
    std::size_t edited = 0;
    for (std::size_t at = 0; at < all.size(); at += 5) {
        const std::string name = nameOf(all[at].key);
        if (!alone.save(all[at], "alone", "0111")) {
            continue;
        }
        // Lines and rows must be from the same desk, whichever was the last.
        ASSERT_EQ(lines[name].size(), 1U) << name;
        const auto last = std::find(markOf.begin(), markOf.end(), lines[name].front());
        ASSERT_NE(last, markOf.end()) << name << lines[name].front();
        if (rows.contains(name)) {
            EXPECT_EQ(rows[name],
                      std::vector<std::string>{*last + "/" + itemOf[static_cast<std::size_t>(last - markOf.begin())]})
                << name;
            ++edited;
        }
    }
    EXPECT_GT(edited, 30U);
    EXPECT_EQ(alone.stored(), together) << "as many rows with the same sums as one desk alone stores";
}

TEST_P(DesksTest, StoreNoRowTwiceIfTheyAllocateTheSameVouchersAsTheProgramDoes) {
    const auto all = vouchers();
    std::vector<std::function<int()>> work(desks, [this, &all]() -> int {
        Desk desk(*office_);
        for (const workbench::VoucherHead& voucher : all) {
            desk.allot(voucher.key);
        }
        return allDone;
    });
    EXPECT_EQ(runDesks(work), allDeskDone);

    Desk alone(*office_);
    const auto together = alone.stored();
    std::size_t accepted = 0;
    for (const workbench::VoucherHead& voucher : all) {
        accepted += alone.allot(voucher.key) ? 1 : 0;
    }
    EXPECT_EQ(accepted, 294U) << "a voucher with doubled rows would be refused from now on";
    EXPECT_EQ(alone.stored(), together);
}

TEST_P(DesksTest, EndInAClearErrorIfAnotherHoldsTheVoucher) {
    Z7_NEEDS(office_->tellsLockTimeout());
    const auto all = vouchers();
    Desk holder(*office_);
    holder.connection().BeginTrans();
    holder.edit(all.front(), "holder", "0101");
    const auto impatient = [&]() -> int {
        const auto connection = office_->makeConnection();
        connection->Open(office_->connectionString(10));
        try {
            connection->BeginTrans();
            workbench::lockVoucher(*connection, all.front().key);
        } catch (const Error& error) {
            if (workbench::isHeldElsewhere(error)) {
                return gaveUp;
            }
            throw;
        }
        return allDone;
    };
    EXPECT_EQ(runDesks({impatient}), std::vector<int>{gaveUp});
    holder.connection().RollbackTrans();
    EXPECT_TRUE(holder.save(all.front(), "holder", "0101"));
    EXPECT_EQ(holder.marksOfLines()[nameOf(all.front().key)], std::vector<std::string>{"holder"});
}

TEST_P(DesksTest, SeeOnSeparateSessionsOnlyWhatIsCommitted) {
    Desk desk(*office_, office_->connectionString(500));
    const std::string statement = "select citemname from fitemss98 where citemcode=N'NEW'";
    desk.connection().BeginTrans();
    desk.connection().Execute("insert into fitemss98 (citemcode,citemname) values (N'NEW',N'new item')");
    const auto own = [&] {
        const auto records = desk.connection().createRecordset();
        try {
            records->Open(statement, desk.connection().ConnectionString(), CursorType::forwardOnly, LockType::readOnly);
        } catch (const Error& error) {
            EXPECT_EQ(error.sqlState(), "HYT00") << error.what(); // a server that locks makes it wait in vain
            return false;
        }
        return !records->atEnd();
    };
    EXPECT_FALSE(desk.connection().Execute(statement)->atEnd());
    EXPECT_FALSE(own());
    desk.connection().CommitTrans();
    EXPECT_TRUE(own());
}

INSTANTIATE_TEST_SUITE_P(Offices, DesksTest, testing::ValuesIn(offices()), officeName);

} // namespace
} // namespace z7::cashflow::desks
