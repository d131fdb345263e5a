#include "host/work/ResultQueue.h"

#include <utility>

namespace z7::cashflow::host {

std::optional<std::size_t> ResultQueue::next() {
    std::unique_lock lock(mutex_);
    forWorkers_.wait(lock, [this] { return stopped_ || handedOut_ < collected_ + furthestAhead; });
    if (stopped_ || handedOut_ >= vouchers_) {
        return std::nullopt;
    }
    return handedOut_++;
}

void ResultQueue::finish(std::size_t voucher, FinishedVoucher finished) {
    const std::lock_guard lock(mutex_);
    done_.emplace(voucher, std::move(finished));
    news_ = true;
    forCollector_.notify_one();
}

void ResultQueue::fail(std::optional<std::size_t> voucher, std::exception_ptr failure) {
    const std::lock_guard lock(mutex_);
    if (failure_ == nullptr || (voucher && (!failedAt_ || *voucher < *failedAt_))) {
        failure_ = std::move(failure);
        failedAt_ = voucher;
    }
    if (voucher) {
        done_.emplace(*voucher, std::nullopt);
    }
    stopped_ = true;
    news_ = true;
    forCollector_.notify_one();
    forWorkers_.notify_all();
}

void ResultQueue::leave() {
    const std::lock_guard lock(mutex_);
    --working_;
    news_ = true;
    forCollector_.notify_one();
}

std::vector<FinishedVoucher> ResultQueue::collect() {
    std::unique_lock lock(mutex_);
    forCollector_.wait(lock, [this] { return news_ || working_ == 0; });
    news_ = false;
    std::vector<FinishedVoucher> ready;
    for (auto first = done_.begin(); first != done_.end() && first->first == collected_; first = done_.erase(first)) {
        if (first->second) {
            ready.push_back(std::move(*first->second));
        }
        ++collected_;
    }
    forWorkers_.notify_all();
    return ready;
}

bool ResultQueue::ended() {
    const std::lock_guard lock(mutex_);
    return working_ == 0 && done_.empty();
}

void ResultQueue::stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    forWorkers_.notify_all();
}

std::exception_ptr ResultQueue::failure() {
    const std::lock_guard lock(mutex_);
    return failure_;
}

std::optional<std::size_t> ResultQueue::stoppedAt() {
    const std::lock_guard lock(mutex_);
    if (failedAt_) {
        return failedAt_;
    }
    return handedOut_ < vouchers_ ? std::optional(handedOut_) : std::nullopt;
}

} // namespace z7::cashflow::host
