// Storing a voucher of 10,000 lines from XML in a table, compared with the same inserts prepared once on the bare
// database library.

#include "Account.h"
#include "Measure.h"

#include "adapters/sqlite/database.h"
#include "host/account/accountMaker.h"
#include "host/account/tableFiles.h"
#include "z7cashflow/data/DataProvider.h"

#include <sqlite3.h>

#include <string>

namespace {

using namespace z7::cashflow;

constexpr std::int16_t year = 2024;
constexpr int turns = 7;

std::string document(int lines) {
    std::string text = "<voucher iperiod='1' isignseq='1' ino_id='7' dbill_date='2024-01-15'>";
    for (int line = 1; line <= lines; ++line) {
        text += "<line inid='" + std::to_string(line) + "' cdigest='Paid &amp; booked " + std::to_string(line) +
                "' ccode='1001' md='" + std::to_string(line) +
                ".25' mc='0' md_f='0' mc_f='' nd_s='0' nc_s='0' "
                "cdept_id='02' cperson_id='' coutno_id='SO-1'/>";
    }
    return text + "</voucher>";
}

void step(sqlite3_stmt* statement) {
    bench::require(sqlite3_step(statement) == SQLITE_DONE, "a step of the floor");
    sqlite3_reset(statement);
}

// The same table and values, with each insert in its own transaction as by Update.
double floorOf(sqlite3* handle, const std::string& table, int lines) {
    return bench::seconds([&] {
        sqlite3_stmt* insert = nullptr;
        const std::string sql = "insert into " + table +
                                " (inid,cdigest,ccode,md,mc,md_f,mc_f,nd_s,nc_s,cdept_id,cperson_id,coutno_id,idoc) "
                                "values (?,?,?,?,?,?,?,?,?,?,?,?,?)";
        bench::require(sqlite3_prepare_v2(handle, sql.c_str(), -1, &insert, nullptr) == SQLITE_OK,
                       sqlite3_errmsg(handle));
        for (int line = 1; line <= lines; ++line) {
            const std::string digest = "Paid & booked " + std::to_string(line);
            sqlite3_bind_int(insert, 1, line);
            sqlite3_bind_text(insert, 2, digest.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_text(insert, 3, "1001", -1, SQLITE_STATIC);
            sqlite3_bind_double(insert, 4, line + 0.25);
            for (const int amount : {5, 6, 7, 8, 9, 13}) {
                sqlite3_bind_double(insert, amount, 0.0);
            }
            sqlite3_bind_text(insert, 10, "02", -1, SQLITE_STATIC);
            sqlite3_bind_null(insert, 11);
            sqlite3_bind_text(insert, 12, "SO-1", -1, SQLITE_STATIC);
            step(insert);
        }
        sqlite3_finalize(insert);
    });
}

} // namespace

int main() {
    const bench::ScratchFolder folder;
    const auto file = folder.file("account.db");
    host::makeAccount(file, host::tableFilesOfSample(), {}, host::Language::english, [] { return false; });
    bench::Account account(file, year);
    sqlite3* handle = bench::openBare(file, year);
    sqlite3_exec(handle, "pragma tempdb.synchronous = off", nullptr, nullptr, nullptr);
    for (const int lines : {1'000, 10'000}) {
        const std::string xml = document(lines);
        const auto result = bench::compare(
            turns,
            [&] {
                std::uint8_t period = 0;
                std::int16_t kind = 0;
                std::int32_t number = 0;
                Date date;
                std::string key;
                std::string table;
                const double time = bench::seconds([&] {
                    table =
                        DataProvider().VoucherXmlToDB(account.connection(), xml, period, kind, number, date, key, true);
                });
                const auto sum = account.connection().Execute("select sum(md) as total from " + table);
                bench::require(*sum->Fields().Item("total").get<double>() == lines * (lines + 1.0) / 2 + lines * 0.25,
                               "the sum of the debits");
                account.connection().Execute("drop table " + table);
                return time;
            },
            [&] {
                // An empty voucher creates a table of the same shape.
                std::uint8_t period = 0;
                std::int16_t kind = 0;
                std::int32_t number = 0;
                Date date;
                std::string key;
                const std::string table =
                    DataProvider().VoucherXmlToDB(account.connection(), "<v/>", period, kind, number, date, key, true);
                const std::string bareName = "tempdb." + table.substr(table.find("..") + 2);
                const double time = floorOf(handle, bareName, lines);
                account.connection().Execute("drop table " + table);
                return time;
            });
        std::printf("voucher XML of %d lines: %.1f us/line, bare inserts %.1f us/line, ratio %.2f (aim: at most 1.5)\n",
                    lines, result.own / lines * 1e6, result.floor / lines * 1e6, result.ratio);
    }
    sqlite3_close(handle);
    return 0;
}
