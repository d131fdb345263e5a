// The cash-flow statement of a year of many vouchers with its proof, compared with one bare query on the database
// library that groups the same lines and rows: by voucher, as the proof needs them, and by account or item only.
//
// bench_statement              100,000 vouchers, copied from the sample company bench_statement VOUCHERS

#include "Account.h"
#include "Measure.h"

#include "host/account/accountMaker.h"
#include "host/account/tableFiles.h"
#include "workbench/statement/CashFlowStatement.h"
#include "workbench/vouchers/Allotment.h"
#include "workbench/vouchers/voucherList.h"
#include "z7cashflow/data/DataProvider.h"

#include <sqlite3.h>
#include <sys/resource.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace z7::cashflow;

constexpr int turns = 7;
constexpr std::int16_t year = 2024;

void allotSample(const std::filesystem::path& file) {
    bench::Account account(file, year);
    DataProvider data;
    workbench::Allotment allotment(account.connection(), data, account.gl(), true);
    const auto vouchers = workbench::listVouchers(account.connection(), year, std::nullopt);
    (void)allotment.allotAll(
        vouchers, [] { return false; }, [](const workbench::VoucherResult&) {});
}

double voucherCount(const std::filesystem::path& file) {
    return bench::number(file, "select count(*) from (select distinct iperiod,isignseq,ino_id from gl_accvouch)");
}

// More copies of every voucher with its rows, with new numbers, until there are that many.
void layDown(const std::filesystem::path& file, double vouchers) {
    const auto copies = static_cast<int>(std::ceil(vouchers / voucherCount(file)));
    for (const std::string table : {"gl_accvouch", "gl_cashtable"}) {
        std::string statements = "begin;create temp table copies as select * from " + table + ";";
        for (int copy = 1; copy < copies; ++copy) {
            statements += "update copies set ino_id=ino_id+1000;insert into " + table + " select * from copies;";
        }
        bench::runBare(file, statements + "commit");
    }
}

// The lines and rows of the year, grouped by columns of both.
std::string grouped(const std::string& columns) {
    return "select " + columns +
           ",sum(md),sum(mc),count(*) from (select ccode as code,iperiod as period,isignseq as kind,ino_id as number,md,"
           "mc from gl_accvouch where iyear=2024 union all select cCashItem,iPeriod,iSignSeq,iNo_id,md,mc from "
           "gl_cashtable where iYear=2024) group by " +
           columns;
}

// Fetches every record of a query and returns their number.
int stepAll(sqlite3* session, const std::string& query) {
    sqlite3_stmt* statement = nullptr;
    bench::require(sqlite3_prepare_v2(session, query.c_str(), -1, &statement, nullptr) == SQLITE_OK, "a bare query");
    int records = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        ++records;
    }
    sqlite3_finalize(statement);
    return records;
}

double mebibytesAtMost() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void measure(const std::filesystem::path& file) {
    const double cash = bench::number(
        file, "select total(v.md)-total(v.mc) from gl_accvouch v join code c on c.iyear=2024 and c.ccode=v.ccode "
              "where v.iyear=2024 and c.bend=1 and c.bclose=0 and c.bCashItem=1");
    const auto vouchers = voucherCount(file);
    const auto lines = bench::number(file, "select count(*) from gl_accvouch where iyear=2024");
    const auto rows = bench::number(file, "select count(*) from gl_cashtable where iYear=2024");
    bench::Account account(file, year);
    workbench::StatementRequest request;
    request.year = year;
    const double before = mebibytesAtMost();
    const auto drawn = workbench::drawUpStatement(account.connection(), request);
    const double growth = mebibytesAtMost() - before;
    bench::require(std::fabs(drawn.cash.flow.net().value() - cash) < 0.01, "the statement has the cash of the ledger");
    std::printf("statement of %.0f vouchers (%.0f lines, %.0f rows, %zu vouchers named): the most memory in use rose "
                "from %.0f MiB by %.1f MiB\n",
                vouchers, lines, rows, drawn.gaps.size(), before, growth);
    sqlite3* const session = bench::openBare(file, year);
    for (const char* const columns : {"code,period,kind,number", "code"}) {
        const std::string bare = grouped(columns);
        const auto result = bench::compare(
            turns,
            [&] { return bench::seconds([&] { (void)workbench::drawUpStatement(account.connection(), request); }); },
            [&] { return bench::seconds([&] { bench::require(stepAll(session, bare) > 0, "there are groups"); }); });
        std::printf("  %.3f s, bare group by %s %.3f s, ratio %.2f (aim: at most 3)\n", result.own, columns,
                    result.floor, result.ratio);
    }
    sqlite3_close(session);
}

} // namespace

int main(int argc, char** argv) {
    const bench::ScratchFolder folder;
    const auto file = folder.file("year.db");
    host::makeAccount(file, host::tableFilesOfSample(), {}, host::Language::english, [] { return false; });
    allotSample(file);
    layDown(file, argc > 1 ? std::atof(argv[1]) : 100000);
    measure(file);
    return 0;
}
