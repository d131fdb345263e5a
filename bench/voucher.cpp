// Generating, checking and saving the rows of one voucher of 10, 100, 1,000 and 10,000 lines: the time per line must
// not grow with the voucher.

#include "Account.h"
#include "Measure.h"

#include "host/account/accountMaker.h"
#include "host/account/tableFiles.h"

#include <map>
#include <string>

namespace {

using namespace z7::cashflow;

constexpr std::int16_t year = 2024;
constexpr int turns = 5;
const Date date = Date::fromCivil(year, 1, 15);

// One line on a cash account and the others on the opposite side, each with a template for its account and side.
void makeVoucher(const std::filesystem::path& file, int number, int lines) {
    bench::runBare(
        file, "insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,csign,cdigest,ccode,md,mc,md_f,"
              "mc_f,nd_s,nc_s) with recursive n(k) as (select 1 union all select k + 1 from n where k < " +
                  std::to_string(lines) + ") select " + std::to_string(year) + ",1,1," + std::to_string(number) +
                  ",k,'2024-01-15','收','x',case k when 1 then 'B1' else 'B2' end,case k when 1 then " +
                  std::to_string(lines - 1) + " else 0 end,case k when 1 then 0 else 1 end,0,0,0,0 from n");
}

struct Stages {
    double generate = 0.0;
    double check = 0.0;
    double save = 0.0;
};

Stages runOnce(bench::Account& account, int number, int lines) {
    Stages stages;
    std::shared_ptr<CashFlowCollection> rows;
    auto& connection = account.connection();
    stages.generate = bench::seconds(
        [&] { rows = account.gl().CreateCashFlowColFromDB(connection, "gl_accvouch", 1, 1, number, date); });
    bench::require(rows->Count() == lines - 1, "a row for each line against the cash account");
    stages.check = bench::seconds([&] {
        std::string reason;
        bench::require(account.gl().CheckCFColFromDB(connection, "gl_accvouch", 1, 1, number, rows, &reason), reason);
    });
    stages.save = bench::seconds([&] {
        connection.BeginTrans();
        account.gl().SaveCashFlowColEx(connection, "gl_accvouch", 1, 1, number, date, &rows);
        connection.CommitTrans();
    });
    return stages;
}

} // namespace

int main() {
    const bench::ScratchFolder folder;
    const auto file = folder.file("account.db");
    host::makeAccount(file, host::tableFilesOfSample(), {{"bCashCode", "False"}}, host::Language::english,
                      [] { return false; });
    bench::runBare(
        file, "insert into code (iyear,ccode,ccode_name,bCashItem,bend,bclose) values (2024,'B1','bank',1,1,0),"
              "(2024,'B2','sales',0,1,0);"
              "insert into GL_CashItemDataSource (iyear,bDataStyle,cDataSource,bdir,cItemCode) select 2024,0,'B2',0,"
              "min(citemcode) from fitemss98");
    const std::map<int, int> linesOfVoucher{{9001, 10}, {9002, 100}, {9003, 1'000}, {9004, 10'000}};
    for (const auto& [number, lines] : linesOfVoucher) {
        makeVoucher(file, number, lines);
    }
    bench::Account account(file, year);
    std::map<int, double> perLine;
    for (const auto& [number, lines] : linesOfVoucher) {
        std::vector<double> generate;
        std::vector<double> check;
        std::vector<double> save;
        const int repeats = lines < 1'000 ? 20 : 1;
        for (int turn = 0; turn < turns * repeats; ++turn) {
            const Stages stages = runOnce(account, number, lines);
            generate.push_back(stages.generate / lines * 1e6);
            check.push_back(stages.check / lines * 1e6);
            save.push_back(stages.save / lines * 1e6);
        }
        perLine[lines] = bench::median(generate) + bench::median(check) + bench::median(save);
        std::printf("%6d lines: generate %.1f, check %.1f, save %.1f us/line, together %.1f\n", lines,
                    bench::median(generate), bench::median(check), bench::median(save), perLine[lines]);
    }
    bench::require(bench::number(file, "select count(*) from gl_cashtable where ino_id = 9004") == 9'999,
                   "the stored rows");
    std::printf("cost a line at 10,000 lines against 100: %.2f (aim: at most 1.2)\n", perLine[10'000] / perLine[100]);
    return 0;
}
