// Allocates one voucher of an account's file: finds or generates its rows, checks and stores them.
//   host FILE DATE PERIOD KIND NUMBER        such as: host company.db 2024-03-04 3 1 1

#include "DemoLogin.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <iostream>
#include <string>
#include <vector>

using namespace z7::cashflow;

int main(int count, char** words) try {
    const std::vector<std::string> arguments(words, words + count);
    if (arguments.size() != 6) {
        std::cerr << "usage: host FILE DATE PERIOD KIND NUMBER\n";
        return 2;
    }
    const auto date = toDate(Variant(arguments[2]));
    const auto year = static_cast<std::int16_t>(toCivil(date).year);
    const auto period = toByte(Variant(arguments[3]));
    const auto kind = toInt16(Variant(arguments[4]));
    const auto number = toInt32(Variant(arguments[5]));

    const std::string account = sqlite::connectionString(arguments[1], year);
    sqlite::Connection connection;
    connection.Open(account);

    VoucherProvider provider;
    provider.gl().objLogin(std::make_shared<DemoLogin>(std::to_string(year), account));

    // The library works in the host's transaction and never ends it.
    connection.BeginTrans();
    try {
        std::shared_ptr<CashFlowCollection> rows; // empty: the library finds or generates them
        provider.gl().SaveCashFlowColEx(connection, "gl_accvouch", period, kind, number, date, &rows);
        connection.CommitTrans();
        if (!rows || rows->Count() == 0) {
            std::cout << "The voucher needs no rows; none are stored for it.\n";
            return 0;
        }
        for (const auto& row : *rows) {
            std::cout << toTextOrEmpty(row->Item("ccode")) << "  " << toTextOrEmpty(row->Item("cCashItem")) << "  "
                      << toTextOrEmpty(row->Item("md")) << "  " << toTextOrEmpty(row->Item("mc")) << '\n';
        }
        return 0;
    } catch (const Error& error) {
        connection.RollbackTrans(); // nothing of the voucher has changed
        std::cerr << "Not stored: " << error.number() << " " << error.description() << '\n';
        return 1;
    }
} catch (const Error& error) {
    std::cerr << error.source() << " " << error.number() << ": " << error.description() << '\n';
    return 3;
}
