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

/// What became of a voucher, with the messages that were shown meanwhile.
struct FinishedVoucher {
    workbench::VoucherResult result;
    std::vector<NotedMessage> messages;
};

/// Hands out the vouchers of a run to the threads that work on it, each voucher once and in their order, and gives
/// their results back in that order. The vouchers are known here by their positions in the run. A failure or a stop
/// ends the handing out; what is in hand then is finished. All operations may be called on any thread.
class ResultQueue {
public:
    /// So many workers take vouchers; each of them leaves at its end.
    ResultQueue(std::size_t vouchers, std::size_t workers) : vouchers_(vouchers), working_(workers) {}

    /// For a worker: the next voucher, or nothing if there is no more to do. Waits while the workers are too far ahead
    /// of a voucher that takes long, so that results do not pile up.
    [[nodiscard]] std::optional<std::size_t> next();
    /// For a worker: a voucher is done.
    void finish(std::size_t voucher, FinishedVoucher finished);
    /// For a worker: what ended it, at a voucher or at none. Nothing more is handed out.
    void fail(std::optional<std::size_t> voucher, std::exception_ptr failure);
    /// For a worker: it has ended.
    void leave();

    /// The results that come next in the order of the vouchers. Waits until something has happened, and so may be
    /// empty. A voucher that failed is passed over.
    [[nodiscard]] std::vector<FinishedVoucher> collect();
    /// Whether every worker has ended and every result was collected.
    [[nodiscard]] bool ended();
    /// Ends the handing out.
    void stop();
    /// The failure of the first voucher that failed, else that of a worker which had no voucher in hand; null if there
    /// was none.
    [[nodiscard]] std::exception_ptr failure();
    /// The voucher that the run did not get beyond: the first that failed, else the first that nobody took; nothing if
    /// all are done.
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
    bool news_ = false;                                          ///< something has happened since the last look
    std::map<std::size_t, std::optional<FinishedVoucher>> done_; ///< not collected yet; nothing for one that failed
    std::optional<std::size_t> failedAt_;
    std::exception_ptr failure_;
};

} // namespace z7::cashflow::host
