#include "host/commands/AllotRun.h"

#include "adapters/sqlite/RelaxedCommits.h"
#include "host/work/NotedMessages.h"
#include "host/work/RememberedAnswers.h"
#include "host/work/ResultQueue.h"
#include "workbench/changes/Assignment.h"
#include "workbench/vouchers/Allotment.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/Error.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace z7::cashflow::host {

using workbench::Allotment;
using workbench::Assignment;
using workbench::Finding;
using workbench::RunLog;
using workbench::VoucherHead;
using workbench::VoucherKey;
using workbench::VoucherResult;

namespace {

/// Saves vouchers in one session.
class Saver {
public:
    /// Without relaxed, each commit on the embedded file waits for the disk.
    Saver(const AllotRun::Plan& plan, Session& session, RunLog& log, bool relaxed)
        : generation_(plan.generation),
          allotment_(session.connection(), session.data(), session.provider().gl(), plan.keep, &log),
          assignment_(session.connection(), session.data(), session.provider().gl(), allotment_),
          remembered_(session.connection()) {
        if (relaxed && plan.keep) {
            embedded_ = dynamic_cast<sqlite::Connection*>(&session.connection());
        }
        relax();
    }

    [[nodiscard]] VoucherResult save(const VoucherKey& key) { return generation_.save(allotment_, assignment_, key); }

    /// Whether what was saved may not be on the disk yet.
    [[nodiscard]] bool waits() const noexcept { return relaxed_.has_value(); }

    /// Waits until everything is on the disk, and makes every later commit wait too unless more is to be saved. Raises
    /// an error of the database if the disk fails.
    void confirm(bool more) {
        if (relaxed_) {
            relaxed_->finish();
            if (more) {
                relax();
            }
        }
    }

private:
    void relax() {
        relaxed_.reset();
        if (embedded_ != nullptr) {
            relaxed_.emplace(*embedded_);
        }
    }

    const GenerationOptions& generation_;
    Allotment allotment_;
    Assignment assignment_;
    RememberedAnswers remembered_;
    sqlite::Connection* embedded_ = nullptr; ///< if its commits need not wait one by one
    std::optional<sqlite::RelaxedCommits> relaxed_;
};

bool isHeldElsewhere(const VoucherResult& result) {
    return result.refusal &&
           std::any_of(result.refusal->findings.begin(), result.refusal->findings.end(),
                       [](const Finding& finding) { return finding.kind == Finding::Kind::heldElsewhere; });
}

/// The threads of a run; the destructor joins them.
class Crew {
public:
    explicit Crew(ResultQueue& queue) : queue_(queue) {}
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;
    ~Crew() {
        queue_.stop();
        for (std::thread& thread : threads_) {
            thread.join();
        }
    }

    template <class Work> void add(Work&& work) { threads_.emplace_back(std::forward<Work>(work)); }

private:
    ResultQueue& queue_;
    std::vector<std::thread> threads_;
};

/// What the sessions of a run share.
struct Desk {
    const AllotRun::Plan& plan;
    const std::vector<VoucherHead>& vouchers;
    std::int16_t year;
    std::optional<std::int32_t> run; ///< number in the log; empty if nothing is logged
    ResultQueue queue;
    /// Locked while a voucher is saved if a transaction locks the whole database, as on the embedded file: the
    /// sessions then wait here in turn, and not for at most the lock timeout.
    std::optional<std::mutex> turn;
};

VoucherResult saveInTurn(Desk& desk, Saver& saver, const VoucherKey& key) {
    const auto turn = desk.turn ? std::unique_lock(*desk.turn) : std::unique_lock<std::mutex>();
    VoucherResult result = saver.save(key);
    return isHeldElsewhere(result) ? saver.save(key) : result;
}

/// The work of one thread of a run. Its exception is rethrown on the thread that collects the results.
void work(Desk& desk) noexcept {
    std::optional<std::size_t> voucher;
    try {
        const auto messages = std::make_shared<NotedMessages>();
        Session session(desk.plan.place, desk.year, desk.plan.options, messages);
        RunLog log(session.connection(), desk.run);
        Saver saver(desk.plan, session, log, false);
        static_cast<void>(messages->take()); // the command's own session has already shown the messages of opening
        while ((voucher = desk.queue.next())) {
            VoucherResult result = saveInTurn(desk, saver, desk.vouchers.at(*voucher).key);
            desk.queue.finish(*voucher, {std::move(result), messages->take()});
        }
    } catch (...) {
        desk.queue.fail(voucher, std::current_exception());
    }
    desk.queue.leave();
}

} // namespace

void AllotRun::save(const std::vector<VoucherHead>& vouchers, std::size_t jobs, const Take& take) {
    if (jobs > 1 && vouchers.size() > 1) {
        saveSideBySide(vouchers, std::min(jobs, vouchers.size()), take);
    } else {
        saveAlone(vouchers, take);
    }
}

void AllotRun::saveAlone(const std::vector<VoucherHead>& vouchers, const Take& take) {
    // On the embedded file many vouchers wait for the disk together, and what was saved is reported once it is there.
    constexpr std::size_t mostWaiting = 500;
    Saver saver(plan_, session_, log_, true);
    std::vector<VoucherResult> waiting;
    const auto confirm = [&](bool more) {
        unconfirmed_ = waiting.size();
        saver.confirm(more);
        unconfirmed_ = 0;
        for (const VoucherResult& result : std::exchange(waiting, {})) {
            take(result);
        }
    };
    try {
        Allotment::saveAll(
            vouchers, [&](const VoucherKey& key) { return saver.save(key); }, [this] { return signals_.requested(); },
            [&](const VoucherResult& result) {
                ++stoppedAt_;
                waiting.push_back(result);
                if (!saver.waits() || waiting.size() == mostWaiting) {
                    confirm(true);
                }
            });
    } catch (const Error&) { // of the database; what was committed before it may still reach the disk
        if (!waiting.empty() && unconfirmed_ == 0) {
            ignoringErrors([&] { confirm(false); });
        }
        throw;
    }
    confirm(false);
}

void AllotRun::saveSideBySide(const std::vector<VoucherHead>& vouchers, std::size_t jobs, const Take& take) {
    const bool noted = plan_.keep && log_.available();
    Desk desk{plan_,
              vouchers,
              session_.year(),
              noted ? std::optional(log_.reserve()) : std::nullopt,
              ResultQueue(vouchers.size(), jobs),
              {}};
    if (plan_.place.file()) {
        desk.turn.emplace();
    }
    bool changed = false;
    {
        Crew crew(desk.queue);
        for (std::size_t job = 0; job < jobs; ++job) {
            crew.add([&desk] { work(desk); });
        }
        while (!desk.queue.ended()) {
            for (const FinishedVoucher& finished : desk.queue.collect()) {
                for (const NotedMessage& message : finished.messages) {
                    static_cast<void>(modPublic::ShowMessage(message.prompt, message.buttons, message.title, "", 0));
                }
                changed = changed || finished.result.changed();
                take(finished.result);
            }
            if (signals_.requested()) {
                desk.queue.stop();
            }
        }
    }
    if (noted) {
        log_.settle(changed);
    }
    stoppedAt_ = desk.queue.stoppedAt().value_or(vouchers.size());
    if (const std::exception_ptr failure = desk.queue.failure(); failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

} // namespace z7::cashflow::host
