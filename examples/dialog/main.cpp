// Shows the rows of one voucher in the dialog and stores them when the user closes it with OK.
//   dialog FILE DATE PERIOD KIND NUMBER        such as: dialog company.db 2024-03-04 3 1 1

#include "DemoLogin.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "adapters/wx/WindowSystem.h"
#include "z7cashflow/dialog/clsMain.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <iostream>
#include <string>
#include <vector>

using namespace z7::cashflow;

namespace {

/// The dialog opens connections of its own, all of one kind here.
class EmbeddedConnections final : public ConnectionFactory {
public:
    std::unique_ptr<Connection> create(const std::string&) override { return std::make_unique<sqlite::Connection>(); }
};

} // namespace

int main(int count, char** words) try {
    const std::vector<std::string> arguments(words, words + count);
    if (arguments.size() != 6) {
        std::cerr << "usage: dialog FILE DATE PERIOD KIND NUMBER\n";
        return 2;
    }
    const auto date = toDate(Variant(arguments[2]));
    const auto year = static_cast<std::int16_t>(toCivil(date).year);
    const auto period = toByte(Variant(arguments[3]));
    const auto kind = toInt16(Variant(arguments[4]));
    const auto number = toInt32(Variant(arguments[5]));

    const auto windows = wx::WindowSystem::start(nullptr);
    if (!windows) {
        std::cerr << "There is no screen to show a window on.\n";
        return 2;
    }
    modPublic::Context& context = modPublic::context();
    context.dialogFactory = windows->dialogFactory();
    context.createMessageBox = [box = windows->messageBox()] { return box; };
    context.connectionFactory = std::make_shared<EmbeddedConnections>();

    const std::string account = sqlite::connectionString(arguments[1], year);
    const auto login = std::make_shared<DemoLogin>(std::to_string(year), account);
    clsMain dialog;
    dialog.Login(login);
    dialog.ShowCashFlow("gl_accvouch", period, kind, number, date);

    auto rows = dialog.CashFlowCol();
    if (!rows || !rows->Changed()) {
        std::cout << "Nothing has changed.\n";
        return 0;
    }
    sqlite::Connection connection;
    connection.Open(account);
    connection.BeginTrans();
    try {
        VoucherProvider provider;
        provider.gl().SaveCashFlowColEx(connection, "gl_accvouch", period, kind, number, date, &rows);
        connection.CommitTrans();
    } catch (...) {
        connection.RollbackTrans();
        throw;
    }
    std::cout << "Stored: " << rows->Count() << " rows\n";
    return 0;
} catch (const Error& error) {
    std::cerr << error.source() << " " << error.number() << ": " << error.description() << '\n';
    return 1;
}
