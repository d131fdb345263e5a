// Allocating a journal, compared with the same statements, already rewritten, replayed in the same transactions on the
// bare database library, each prepared and executed separately.
//
//   bench_allot                  ten copies of the sample company
//   bench_allot FOLDER YEAR      a folder of table files

#include "Account.h"
#include "Measure.h"

#include "host/account/accountMaker.h"
#include "host/account/tableFiles.h"
#include "workbench/vouchers/Allotment.h"
#include "workbench/vouchers/voucherList.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/support/conversions.h"

#include <optional>
#include <string>

namespace {

using namespace z7::cashflow;

constexpr int turns = 7;

// Nine more copies of every voucher, with new numbers.
void layDownTenTimes(const std::filesystem::path& file) {
    for (const std::string table : {"gl_accvouch", "gl_cashtable"}) {
        for (int copy = 1; copy < 10; ++copy) {
            bench::runBare(file, "create temp table copies as select * from " + table + " where ino_id < 1000;" +
                                     "update copies set ino_id = ino_id + " + std::to_string(copy * 1000) + ";" +
                                     "insert into " + table + " select * from copies");
        }
    }
}

struct Totals {
    std::size_t vouchers = 0;
    std::size_t stored = 0;
    std::int64_t rows = 0;
};

Totals allotAll(bench::Account& account, const std::vector<workbench::VoucherHead>& vouchers) {
    Totals totals;
    DataProvider data;
    workbench::Allotment allotment(account.connection(), data, account.gl(), true);
    totals.vouchers = allotment.allotAll(
        vouchers, [] { return false; },
        [&](const workbench::VoucherResult& result) {
            totals.stored += result.outcome == workbench::Outcome::stored ? 1 : 0;
            totals.rows += result.rows;
        });
    return totals;
}

} // namespace

int main(int argc, char** argv) {
    const bench::ScratchFolder folder;
    const auto pristine = folder.file("pristine.db");
    const auto work = folder.file("work.db");
    const bool sample = argc < 3;
    const auto year = sample ? std::int16_t{2024} : toInt16(std::string(argv[2]));
    host::makeAccount(pristine, sample ? host::tableFilesOfSample() : host::tableFilesOfFolder(argv[1]), {},
                      host::Language::english, [] { return false; });
    if (sample) {
        layDownTenTimes(pristine);
    }

    // Once with a recorder, for the statements of the floor.
    std::vector<bench::RecordedStatement> statements;
    std::vector<workbench::VoucherHead> vouchers;
    Totals expected;
    double storedSum = 0.0;
    const std::string sumQuery = "select total(md) - total(mc) from gl_cashtable";
    const std::string countQuery = "select count(*) from gl_cashtable";
    bench::copyAccount(pristine, work);
    {
        bench::Account account(work, year);
        vouchers = workbench::listVouchers(account.connection(), year, std::nullopt);
        account.connection().onRewrittenStatement([&](int session, const std::string& text) {
            statements.push_back({session, text});
        });
        expected = allotAll(account, vouchers);
    }
    storedSum = bench::number(work, sumQuery);
    const double storedRows = bench::number(work, countQuery);
    bench::require(expected.vouchers == vouchers.size() && expected.stored > 0, "every voucher is accounted for");

    const auto result = bench::compare(
        turns,
        [&] {
            bench::copyAccount(pristine, work);
            bench::Account account(work, year);
            Totals totals;
            const double time = bench::seconds([&] { totals = allotAll(account, vouchers); });
            bench::require(totals.rows == expected.rows && totals.stored == expected.stored,
                           "the same vouchers are stored");
            return time;
        },
        [&] {
            bench::copyAccount(pristine, work);
            double time = 0.0;
            {
                bench::BareReplay replay(work, year, statements);
                time = bench::seconds([&] { replay.run(); });
            }
            bench::require(bench::number(work, sumQuery) == storedSum && bench::number(work, countQuery) == storedRows,
                           "the replay stores the same rows");
            return time;
        });
    std::printf("allot %zu vouchers, %lld rows stored, %zu statements: %.3f s (%.1f us/statement), bare replay %.3f s, "
                "ratio %.2f (aim: at most 1.2)\n",
                vouchers.size(), static_cast<long long>(expected.rows), statements.size(), result.own,
                result.own / static_cast<double>(statements.size()) * 1e6, result.floor, result.ratio);
    return 0;
}
