#include "host/work/ResultQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace z7::cashflow::host {
namespace {

FinishedVoucher finished(int number) {
    FinishedVoucher done;
    done.result.key = {2024, 1, 2, number};
    return done;
}

std::vector<int> numbers(const std::vector<FinishedVoucher>& vouchers) {
    std::vector<int> list;
    list.reserve(vouchers.size());
    for (const FinishedVoucher& voucher : vouchers) {
        list.push_back(voucher.result.key.number);
    }
    return list;
}

std::exception_ptr failure(const char* text) { return std::make_exception_ptr(std::runtime_error(text)); }

std::string textOf(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

TEST(ResultQueue, HandsOutEachVoucherOnceAndCollectsInTheirOrder) {
    ResultQueue queue(3, 2);
    EXPECT_EQ(queue.next(), 0U);
    EXPECT_EQ(queue.next(), 1U);
    queue.finish(1, finished(1));
    EXPECT_EQ(numbers(queue.collect()), std::vector<int>{}) << "the first is not done";
    queue.finish(0, finished(0));
    EXPECT_EQ(numbers(queue.collect()), (std::vector<int>{0, 1}));
    EXPECT_EQ(queue.next(), 2U);
    EXPECT_EQ(queue.next(), std::nullopt);
    queue.finish(2, finished(2));
    queue.leave();
    queue.leave();
    EXPECT_FALSE(queue.ended()) << "a result is left to collect";
    EXPECT_EQ(numbers(queue.collect()), std::vector<int>{2});
    EXPECT_TRUE(queue.ended());
    EXPECT_EQ(queue.failure(), nullptr);
    EXPECT_EQ(queue.stoppedAt(), std::nullopt);
}

TEST(ResultQueue, StopsHandingOutAndFinishesWhatIsInHand) {
    ResultQueue queue(3, 1);
    EXPECT_EQ(queue.next(), 0U);
    queue.stop();
    EXPECT_EQ(queue.next(), std::nullopt);
    queue.finish(0, finished(0));
    queue.leave();
    EXPECT_EQ(numbers(queue.collect()), std::vector<int>{0});
    EXPECT_TRUE(queue.ended());
    EXPECT_EQ(queue.stoppedAt(), 1U);
}

TEST(ResultQueue, PassesOverVouchersThatFailedAndTellsTheFirst) {
    ResultQueue queue(9, 3);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(queue.next(), i);
    }
    queue.fail(std::nullopt, failure("a session"));
    queue.fail(3, failure("the fourth"));
    queue.fail(1, failure("the second"));
    queue.finish(2, finished(2));
    queue.finish(0, finished(0));
    EXPECT_EQ(queue.next(), std::nullopt);
    EXPECT_EQ(numbers(queue.collect()), (std::vector<int>{0, 2}));
    EXPECT_EQ(textOf(queue.failure()), "the second");
    EXPECT_EQ(queue.stoppedAt(), 1U);
}

TEST(ResultQueue, TellsTheFailureOfASessionWhereNoVoucherFailed) {
    ResultQueue queue(9, 1);
    queue.fail(std::nullopt, failure("a session"));
    queue.leave();
    EXPECT_TRUE(queue.ended());
    EXPECT_EQ(textOf(queue.failure()), "a session");
    EXPECT_EQ(queue.stoppedAt(), 0U);
}

TEST(ResultQueue, LetsNobodyRunFarAheadOfAVoucherThatTakesLong) {
    constexpr std::size_t vouchers = 1000;
    ResultQueue queue(vouchers, 1);
    ASSERT_EQ(queue.next(), 0U); // takes long
    std::atomic<std::size_t> last = 0;
    std::thread worker([&] {
        while (const auto voucher = queue.next()) {
            last = *voucher;
            queue.finish(*voucher, finished(static_cast<int>(*voucher)));
        }
        queue.leave();
    });
    while (last < 255) {
        EXPECT_EQ(queue.collect().size(), 0U);
    }
    queue.finish(0, finished(0));
    std::size_t collected = queue.collect().size();
    EXPECT_LE(collected, 256U) << "so many are kept at most";
    while (!queue.ended()) {
        collected += queue.collect().size();
    }
    worker.join();
    EXPECT_EQ(collected, vouchers);
}

} // namespace
} // namespace z7::cashflow::host
