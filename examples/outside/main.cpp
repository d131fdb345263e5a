// The rows of a voucher of another subsystem: the voucher as XML in, its stored rows as XML out.
//   outside FILE YEAR VOUCHER.xml

#include "DemoLogin.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

using namespace z7::cashflow;

int main(int count, char** words) try {
    const std::vector<std::string> arguments(words, words + count);
    if (arguments.size() != 4) {
        std::cerr << "usage: outside FILE YEAR VOUCHER.xml\n";
        return 2;
    }
    std::ifstream file(arguments[3], std::ios::binary);
    const std::string voucher{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        std::cerr << "cannot read " << arguments[3] << '\n';
        return 2;
    }
    const std::string account = sqlite::connectionString(arguments[1], toInt16(Variant(arguments[2])));
    sqlite::Connection connection;
    connection.Open(account);

    VoucherProvider provider;
    provider.out().objLogin(std::make_shared<DemoLogin>(arguments[2], account));
    std::cout << provider.out().GetCashFlowColFromXml(connection, voucher) << '\n';
    return 0;
} catch (const Error& error) {
    std::cerr << error.source() << " " << error.number() << ": " << error.description() << '\n';
    return 1;
}
