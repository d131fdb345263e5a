// Stores rows in a database of its own, which is a few tables in memory: the rows of one voucher, of which one line
// belongs to two cash-flow items.

#include "DemoLogin.h"
#include "LedgerSession.h"
#include "adapters/shared/session/PooledConnection.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/Error.h"

#include <iostream>

using namespace z7::cashflow;

namespace {

/// The connection does everything but open a session.
class LedgerConnection final : public shared::PooledConnection {
public:
    explicit LedgerConnection(const std::shared_ptr<Ledger>& ledger)
        : PooledConnection(std::make_shared<shared::SessionPool>([ledger](const std::string&, int number) {
                               return std::make_shared<LedgerSession>(number, ledger);
                           }),
                           std::make_shared<shared::Observers>()) {}
};

} // namespace

int main() try {
    const auto ledger = std::make_shared<Ledger>();
    ledger->lines = {{1, "1002", true, 1130, 0}, {2, "6001", false, 0, 1000}, {3, "2221", false, 0, 130}};
    LedgerConnection connection(ledger);
    connection.Open("ledger");

    VoucherProvider provider;
    provider.gl().objLogin(std::make_shared<DemoLogin>("2024", "ledger"));

    const Date date = Date::fromCivil(2024, 3, 12);
    auto rows = provider.CreateCashFlowCollection();
    rows->UpdateCol(3, 1, 5, date);
    const auto add = [&rows](std::int16_t line, const char* account, const char* item, double credit) {
        const auto row = rows->CreateCFObject();
        row->SetValue("inid", line);
        row->SetValue("ccode", account);
        row->SetValue("cCashItem", item);
        row->SetValue("md", 0.0);
        row->SetValue("mc", credit);
        rows->Add(row);
    };
    add(2, "6001", "0101", 700);
    add(3, "2221", "0101", 130);

    for (const double rest : {200.0, 300.0}) { // the first is 100 too little
        add(2, "6001", "0103", rest);
        connection.BeginTrans();
        try {
            provider.gl().SaveCashFlowColEx(connection, "gl_accvouch", 3, 1, 5, date, &rows);
            connection.CommitTrans();
        } catch (const Error& error) {
            connection.RollbackTrans();
            std::cout << "Not stored: " << error.number() << " " << error.description() << '\n';
            rows->Remove(rows->Count());
        }
    }
    for (const Ledger::Row& row : ledger->rows) {
        std::cout << "line " << row.at("inid") << ", account " << row.at("ccode") << ": " << row.at("mc")
                  << " credit for item " << row.at("cCashItem") << '\n';
    }
    return 0;
} catch (const Error& error) {
    std::cerr << error.source() << " " << error.number() << ": " << error.description() << '\n';
    return 1;
}
