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

/// Saves the vouchers of a run, one after another or in several parallel sessions, and passes on the results in the
/// order of the vouchers in either case.
class AllotRun {
public:
    /// The maximum number of parallel sessions.
    static constexpr std::size_t mostJobs = 64;

    /// How a run saves. All of it outlives the run.
    struct Plan {
        const AccountPlace& place;
        const GlobalOptions& options;
        const GenerationOptions& generation;
        bool keep = true; ///< if false, every voucher is rolled back
    };
    /// Takes a voucher's result once the disk has the voucher, on the thread that calls save.
    using Take = std::function<void(const workbench::VoucherResult&)>;

    /// The session is the command's own; its thread collects the results and shows messages.
    AllotRun(const Plan& plan, Session& session, workbench::RunLog& log, StopSignals& signals)
        : plan_(plan), session_(session), log_(log), signals_(signals) {}

    /// Saves vouchers until all are done or a stop is requested. With several jobs, each has a session on its
    /// own thread, all of them belong to one run of the log, and a voucher that is locked by another job is
    /// tried once more. An exception in one job ends all: the current vouchers are completed and their results
    /// passed on, then it is rethrown. Errors of the database, or a failure to open a session.
    void save(const std::vector<workbench::VoucherHead>& vouchers, std::size_t jobs, const Take& take);

    /// After an error: the position of the voucher beyond which the run did not get.
    [[nodiscard]] std::size_t stoppedAt() const noexcept { return stoppedAt_; }

    /// After an error: the number of vouchers that were committed last, but that the disk did not confirm. Their
    /// results were not passed on.
    [[nodiscard]] std::size_t unconfirmed() const noexcept { return unconfirmed_; }

private:
    void saveAlone(const std::vector<workbench::VoucherHead>& vouchers, const Take& take);
    void saveSideBySide(const std::vector<workbench::VoucherHead>& vouchers, std::size_t jobs, const Take& take);

    const Plan& plan_;
    Session& session_;
    workbench::RunLog& log_;
    StopSignals& signals_;
    std::size_t stoppedAt_ = 0;
    std::size_t unconfirmed_ = 0;
};

} // namespace z7::cashflow::host
