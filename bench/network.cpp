// Allocating a year where each request to the database takes 2 ms, as over a network of 1 ms each way: with one session
// that sends every query, as a run did before, with one that remembers the answers that belong to the account, and with
// several parallel ones.
//
//   bench_network                  the sample company
//   bench_network FOLDER YEAR      a folder of table files
//
// The database is the embedded one, and every request waits in this process: opening a session, a statement, the
// beginning and the end of a transaction. Each session has a copy of the account, since the sessions of the embedded
// file would wait for each other's transactions. So this measures what the program requests and when, and not how a
// server handles several sessions at once.

#include "Account.h"
#include "Measure.h"

#include "adapters/sqlite/Session.h"
#include "adapters/sqlite/database.h"
#include "host/account/accountMaker.h"
#include "host/account/tableFiles.h"
#include "host/cli/application.h"
#include "host/work/Session.h"
#include "host/work/runNote.h"
#include "workbench/vouchers/Allotment.h"
#include "workbench/vouchers/voucherList.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <thread>

namespace {

using namespace z7::cashflow;

constexpr auto roundTrip = std::chrono::milliseconds(2);
std::atomic<int> requests = 0;

void request() {
    ++requests;
    std::this_thread::sleep_for(roundTrip);
}

// A session of the embedded database with a network delay.
class DistantSession final : public shared::Session {
public:
    explicit DistantSession(std::shared_ptr<sqlite::Session> session) : session_(std::move(session)) { request(); }

    shared::Result run(const std::string& text, bool updatable) override {
        request();
        return session_->run(text, updatable);
    }
    void begin() override {
        request();
        session_->begin();
    }
    void commit() override {
        request();
        session_->commit();
    }
    void rollback() override {
        request();
        session_->rollback();
    }
    void close() noexcept override { session_->close(); }
    [[nodiscard]] int number() const noexcept override { return session_->number(); }
    [[nodiscard]] bool inTransaction() const noexcept override { return session_->inTransaction(); }
    [[nodiscard]] bool isIdle() const noexcept override { return session_->isIdle(); }

private:
    std::shared_ptr<sqlite::Session> session_;
};

class DistantConnection final : public shared::PooledConnection {
public:
    explicit DistantConnection(const std::string& connectionString)
        : PooledConnection(std::make_shared<shared::SessionPool>([connectionString](const std::string&, int number) {
                               return std::make_shared<DistantSession>(std::make_shared<sqlite::Session>(
                                   sqlite::parseConnectionString(connectionString), number,
                                   std::make_shared<const sqlite::Observers>()));
                           }),
                           std::make_shared<shared::Observers>()) {}
};

// Copies of the account, one for each connection.
class Copies {
public:
    Copies(const bench::ScratchFolder& folder, std::filesystem::path pristine, std::int16_t year)
        : folder_(folder), pristine_(std::move(pristine)), year_(year) {}

    [[nodiscard]] std::unique_ptr<Connection> connect() {
        const std::filesystem::path file = folder_.file("copy" + std::to_string(made_++) + ".db");
        bench::copyAccount(pristine_, file);
        return std::make_unique<DistantConnection>(sqlite::connectionString(file, year_));
    }
    // The rows stored in all copies since they were created.
    [[nodiscard]] double rowsStored() const {
        const std::string count = "select count(*) from gl_cashtable";
        double rows = 0.0;
        for (int i = 0; i < made_; ++i) {
            rows += bench::number(folder_.file("copy" + std::to_string(i) + ".db"), count) -
                    bench::number(pristine_, count);
        }
        return rows;
    }

private:
    const bench::ScratchFolder& folder_;
    std::filesystem::path pristine_;
    std::int16_t year_;
    std::atomic<int> made_ = 0;
};

struct Run {
    double seconds = 0.0;
    int requests = 0;
    double rows = 0.0;
};

Run measured(const std::filesystem::path& pristine, std::int16_t year, const std::function<void(Copies&)>& action) {
    const bench::ScratchFolder folder;
    Copies copies(folder, pristine, year);
    requests = 0;
    Run run;
    run.seconds = bench::seconds([&] { action(copies); });
    run.requests = requests;
    run.rows = copies.rowsStored();
    return run;
}

// As a run worked before: one session, and every query is sent.
void allotAskingAgain(Copies& copies, std::int16_t year) {
    std::istringstream in;
    std::ostringstream out;
    host::GlobalOptions options;
    options.serverConnection = [&copies] { return copies.connect(); };
    host::Session session(host::AccountPlace::ofConnectionString("server", options.serverConnection), year, options,
                          host::Console{in, out, out});
    workbench::RunLog log(session.connection(), host::runNote(options, "allot"));
    workbench::Allotment allotment(session.connection(), session.data(), session.provider().gl(), true, &log);
    const auto vouchers = workbench::listVouchers(session.connection(), year, std::nullopt);
    (void)allotment.allotAll(
        vouchers, [] { return false; }, [](const workbench::VoucherResult&) {});
}

void allotBy(Copies& copies, std::int16_t year, int jobs) {
    std::istringstream in;
    std::ostringstream out;
    (void)host::runApplication({"allot", "--connect", "Driver=distant", "--year", std::to_string(year), "--quiet",
                                "--jobs", std::to_string(jobs)},
                               host::Console{in, out, out}, [&copies] { return copies.connect(); }, {});
}

} // namespace

int main(int argc, char** argv) {
    const bench::ScratchFolder folder;
    const auto pristine = folder.file("pristine.db");
    const bool sample = argc < 3;
    const std::int16_t year = sample ? std::int16_t{2024} : static_cast<std::int16_t>(std::atoi(argv[2]));
    host::makeAccount(pristine, sample ? host::tableFilesOfSample() : host::tableFilesOfFolder(argv[1]), {},
                      host::Language::english, [] { return false; });
    const double vouchers =
        bench::number(pristine, "select count(*) from (select distinct iperiod,isignseq,ino_id from gl_accvouch where "
                                "iyear=" +
                                    std::to_string(year) + ")");
    const Run before = measured(pristine, year, [year](Copies& copies) { allotAskingAgain(copies, year); });
    std::printf("%.0f vouchers, every question sent: %.2f s, %d requests, %.0f rows\n", vouchers, before.seconds,
                before.requests, before.rows);
    for (const int jobs : {1, 4, 8}) {
        const Run run = measured(pristine, year, [year, jobs](Copies& copies) { allotBy(copies, year, jobs); });
        bench::require(run.rows == before.rows, "the same number of rows is stored");
        std::printf("--jobs %d: %.2f s, %d requests, %.2f of the time before\n", jobs, run.seconds, run.requests,
                    run.seconds / before.seconds);
    }
    return 0;
}
