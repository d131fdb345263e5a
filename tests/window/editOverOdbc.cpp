// z7cf with the embedded database's ODBC driver in place of a server's: window_server ARGUMENTS...

#include "adapters/odbc/Connection.h"
#include "adapters/odbc/SqliteDialect.h"
#include "host/cli/application.h"

#include <iostream>
#include <memory>

int main(int argc, char** argv) {
    using namespace z7::cashflow;
    const host::ConnectionMaker driver = [] {
        return std::make_unique<odbc::Connection>([] { return std::make_unique<odbc::SqliteDialect>(); });
    };
    return host::runApplication({argv + 1, argv + argc}, host::Console{std::cin, std::cout, std::cerr}, driver, {});
}
