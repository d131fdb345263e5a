#pragma once

#include "host/work/NotedMessages.h"
#include "workbench/vouchers/VoucherResult.h"

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace z7::cashflow::host {

/// The result of a voucher, with the messages shown meanwhile.
struct FinishedVoucher {
    workbench::VoucherResult result;
    std::vector<NotedMessage> messages;
};

/// Distributes the vouchers of a run to its worker threads, each voucher once and in order, and returns their
/// results in that order. Vouchers are identified by their positions in the run. After a failure or a stop no more
/// vouchers are distributed; current ones are completed. All operations are thread-safe.
class ResultQueue {
public:
    /// Each of the workers calls leave when it ends.
    ResultQueue(std::size_t vouchers, std::size_t workers) : vouchers_(vouchers), working_(workers) {}

    /// For a worker: the next voucher, or empty if there are no more. Waits if the workers are too far ahead of
    /// a voucher that takes long, so that results do not accumulate.
    [[nodiscard]] std::optional<std::size_t> next();
    /// For a worker: a voucher is done.
    void finish(std::size_t voucher, FinishedVoucher finished);
    /// For a worker: the exception that ended it, and its voucher if there is one. No more vouchers are
    /// distributed.
    void fail(std::optional<std::size_t> voucher, std::exception_ptr failure);
    /// For a worker: it has ended.
    void leave();

    /// The next results in the order of the vouchers. Waits until something has happened, and may therefore be
    /// empty. A failed voucher is skipped.
    [[nodiscard]] std::vector<FinishedVoucher> collect();
    /// Whether every worker has ended and every result was collected.
    [[nodiscard]] bool ended();
    /// Stops the distribution.
    void stop();
    /// The failure of the first voucher that failed, otherwise of a worker without a voucher; null if there is
    /// none.
    [[nodiscard]] std::exception_ptr failure();
    /// The voucher beyond which the run did not get: the first that failed, otherwise the first that was not
    /// distributed; empty if all are done.
    [[nodiscard]] std::optional<std::size_t> stoppedAt();

private:
    static constexpr std::size_t furthestAhead = 256;

    std::mutex mutex_;
    std::condition_variable forWorkers_;
    std::condition_variable forCollector_;
    std::size_t vouchers_;
    std::size_t working_;
    std::size_t handedOut_ = 0;
    std::size_t collected_ = 0;
    bool stopped_ = false;
    bool news_ = false;                                          ///< something has happened since the last collect
    std::map<std::size_t, std::optional<FinishedVoucher>> done_; ///< not collected yet; no value for a failed one
    std::optional<std::size_t> failedAt_;
    std::exception_ptr failure_;
};

} // namespace z7::cashflow::host
