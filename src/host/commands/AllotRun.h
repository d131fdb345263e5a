#pragma once

#include "host/account/AccountPlace.h"
#include "host/cli/GlobalOptions.h"
#include "host/commands/GenerationOptions.h"
#include "host/terminal/StopSignals.h"
#include "host/work/Session.h"
#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/VoucherResult.h"
#include "workbench/vouchers/voucherList.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace z7::cashflow::host {

/// Saves the vouchers of a run, one after the other or on several sessions side by side, and hands out the results in
/// the order of the vouchers either way.
class AllotRun {
public:
    /// The most sessions that work side by side.
    static constexpr std::size_t mostJobs = 64;

    /// How a run saves. Everything outlives the run.
    struct Plan {
        const AccountPlace& place;
        const GlobalOptions& options;
        const GenerationOptions& generation;
        bool keep = true; ///< else every voucher is rolled back
    };
    /// Takes a voucher's result, on the thread that calls save.
    using Take = std::function<void(const workbench::VoucherResult&)>;

    /// The session is the command's own; its thread is the one that takes results and shows messages.
    AllotRun(const Plan& plan, Session& session, workbench::RunLog& log, StopSignals& signals)
        : plan_(plan), session_(session), log_(log), signals_(signals) {}

    /// Saves vouchers until all are done or a stop is requested. With several jobs each has a session on a thread of
    /// its own, all of them work in one run of the log, and a voucher that one of them keeps from another is tried
    /// again once. What ends one ends all: the vouchers in hand are finished and handed out, then the error comes out.
    /// Errors of the database, and a failure to open a session.
    void save(const std::vector<workbench::VoucherHead>& vouchers, std::size_t jobs, const Take& take);

    /// After an error: the voucher, by its position, that the run did not get beyond.
    [[nodiscard]] std::size_t stoppedAt() const noexcept { return stoppedAt_; }

private:
    void saveAlone(const std::vector<workbench::VoucherHead>& vouchers, const Take& take);
    void saveSideBySide(const std::vector<workbench::VoucherHead>& vouchers, std::size_t jobs, const Take& take);

    const Plan& plan_;
    Session& session_;
    workbench::RunLog& log_;
    StopSignals& signals_;
    std::size_t stoppedAt_ = 0;
};

} // namespace z7::cashflow::host
