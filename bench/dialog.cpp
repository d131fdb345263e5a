// Opening the dialog for vouchers of 10 and 1,000 rows, compared with its statements replayed on the bare database
// library on the same number of sessions, which each side opens itself; and the time for the keys of an edit with
// both numbers of rows.

#include "Account.h"
#include "Measure.h"

#include "dialog/RecordingForm.h"
#include "host/account/accountMaker.h"
#include "host/account/tableFiles.h"
#include "z7cashflow/dialog/clsMain.h"
#include "z7cashflow/model/modPublic.h"

#include <map>
#include <string>

namespace {

using namespace z7::cashflow;

constexpr std::int16_t year = 2024;
constexpr int turns = 7;
const Date date = Date::fromCivil(year, 1, 15);
using Form = test::RecordingForm;

// One line on a cash account, and as many others as there are rows, each with a template for its account and side.
void makeVoucher(const std::filesystem::path& file, int number, int rows) {
    bench::runBare(
        file, "insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,csign,cdigest,ccode,md,mc,md_f,"
              "mc_f,nd_s,nc_s) with recursive n(k) as (select 1 union all select k + 1 from n where k <= " +
                  std::to_string(rows) + ") select " + std::to_string(year) + ",1,1," + std::to_string(number) +
                  ",k,'2024-01-15','收','x',case k when 1 then 'B1' else 'B2' end,case k when 1 then " +
                  std::to_string(rows) + " else 0 end,case k when 1 then 0 else 1 end,0,0,0,0 from n");
}

void storeRows(bench::Account& account, int number) {
    auto& connection = account.connection();
    auto rows = account.gl().CreateCashFlowColFromDB(connection, "gl_accvouch", 1, 1, number, date);
    connection.BeginTrans();
    account.gl().SaveCashFlowColEx(connection, "gl_accvouch", 1, 1, number, date, &rows);
    connection.CommitTrans();
}

/// Provides the dialog's sessions, and records their statements while there is a list for them.
class Sessions final : public ConnectionFactory {
public:
    [[nodiscard]] std::unique_ptr<Connection> create(const std::string& /*connectionString*/) override {
        constexpr int sessionsOfOne = 1000;
        auto made = std::make_unique<sqlite::Connection>();
        const int first = sessionsOfOne * made_++;
        made->onRewrittenStatement([this, first](int session, const std::string& text) {
            if (list != nullptr) {
                list->push_back({first + session, text});
            }
        });
        return made;
    }
    std::vector<bench::RecordedStatement>* list = nullptr;

private:
    int made_ = 0;
};

/// Opens the dialog for a voucher. Returns the seconds until it waits for the user; then acts as the user.
double open(int number, const std::shared_ptr<test::RecordingDialogFactory>& factory,
            const std::function<void(Form&)>& user) {
    clsMain entry;
    entry.Login(modPublic::GetLogin());
    const auto start = std::chrono::steady_clock::now();
    double taken = 0.0;
    factory->user = [&](Form& form) {
        taken = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        user(form);
        form.press("cmdCancel");
    };
    entry.ShowCashFlow("gl_accvouch", 1, 1, number, date, true, nullptr, &year);
    bench::require(taken > 0.0, "the dialog of voucher " + std::to_string(number));
    return taken;
}

/// Median microseconds of each edit of a user in the middle of the rows.
std::map<std::string, double> edits(Form& form) {
    constexpr int repeats = 41;
    auto& grid = form.cells;
    const std::int32_t row = grid.Rows() / 2;
    std::map<std::string, std::function<void()>> actions{
        {"an amount", [&] { bench::require(grid.type(row, 3, "1.00"), "an amount"); }},
        {"an item", [&] { bench::require(grid.type(row, 4, grid.TextMatrix(row, 4)), "an item"); }},
        {"an account", [&] { bench::require(grid.type(row, 1, "B2"), "an account"); }},
        {"another line",
         [&] { bench::require(grid.type(row, 3, "1.00") && grid.goToLine(row + 1) && grid.goToLine(row), "a line"); }}};
    std::map<std::string, double> medians;
    bench::require(grid.goToLine(row), "a line in the middle");
    for (const auto& [name, action] : actions) {
        std::vector<double> taken;
        for (int i = 0; i < repeats; ++i) {
            taken.push_back(bench::seconds(action) * 1e6);
        }
        medians[name] = bench::median(taken);
    }
    return medians;
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
    const std::map<int, int> rowsOfVoucher{{9001, 10}, {9002, 1'000}};
    bench::Account account(file, year);
    const auto factory = std::make_shared<test::RecordingDialogFactory>();
    const auto sessions = std::make_shared<Sessions>();
    modPublic::context().dialogFactory = factory;
    modPublic::context().connectionFactory = sessions;
    std::map<int, std::map<std::string, double>> edited;
    for (const auto& voucher : rowsOfVoucher) {
        const int number = voucher.first;
        const int rows = voucher.second;
        makeVoucher(file, number, rows);
        storeRows(account, number);
        open(number, factory, [](Form&) {}); // stores the column widths
        std::vector<bench::RecordedStatement> statements;
        sessions->list = &statements;
        open(number, factory, [&](Form& form) {
            sessions->list = nullptr;
            bench::require(form.cells.Rows() == rows + 1, "a line for each row");
        });
        const bench::Compared compared = bench::compare(
            turns, [&] { return open(number, factory, [](Form&) {}); },
            [&] { return bench::seconds([&] { bench::BareReplay(file, year, statements).run(); }); });
        std::printf("%5d rows: opened in %.2f ms by %zu statements, which alone take %.2f ms: %.2f times (aim: at most "
                    "1.5)\n",
                    rows, compared.own * 1e3, statements.size(), compared.floor * 1e3, compared.ratio);
        open(number, factory, [&](Form& form) { edited[rows] = edits(form); });
    }
    for (const auto& [name, few] : edited[10]) {
        const double many = edited[1'000][name];
        std::printf("%-12s: %.0f us in 10 rows, %.0f us in 1,000: %.2f times\n", name.c_str(), few, many, many / few);
    }
    return 0;
}
