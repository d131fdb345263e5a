#include "host/account/serverAccountMaker.h"

#include "adapters/odbc/AccountTables.h"
#include "adapters/odbc/accountSchema.h"
#include "adapters/odbc/databaseKeyword.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/text/joined.h"
#include "host/text/reasonText.h"
#include "workbench/vouchers/Transaction.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace z7::cashflow::host {

using workbench::Transaction;

namespace {

constexpr const char* masterDatabase = "master"; ///< every login has access to it

bool isServersOwn(const std::string& database) {
    constexpr std::array<std::string_view, 5> names{masterDatabase, "model", "msdb", "tempdb", odbc::systemDatabase};
    return std::find(names.begin(), names.end(), asciiLower(database)) != names.end();
}

/// The server on which an account is being created. Unless keep() is called, the destructor drops the databases
/// that were created for the account.
class Server {
public:
    Server(std::string connectionString, const std::function<std::shared_ptr<Connection>()>& newConnection)
        : connectionString_(std::move(connectionString)), newConnection_(newConnection) {}
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server() {
        for (const std::string& database : made_) {
            ignoringErrors([&] { odbc::dropDatabase(*elsewhere(), database); });
        }
    }

    void keep() noexcept { made_.clear(); }

    /// A session in the account's database, which is created if the connection string names it and it does not
    /// exist.
    [[nodiscard]] std::shared_ptr<Connection> openAccount() {
        try {
            account_ = open(connectionString_);
        } catch (const Error&) {
            if (!makeMissing()) {
                throw;
            }
            account_ = open(connectionString_);
        }
        return account_;
    }

    void make(Connection& connection, const std::string& database) {
        if (odbc::databaseExists(connection, database)) {
            return;
        }
        odbc::makeDatabase(connection, database);
        made_.push_back(database);
    }

private:
    [[nodiscard]] std::shared_ptr<Connection> open(const std::string& connectionString) const {
        auto connection = newConnection_();
        connection->Open(connectionString);
        return connection;
    }

    /// A session in the database master. The account's own session is moved there if possible: a database
    /// cannot be dropped while a session uses it, and a closed session may linger in a pool. Otherwise a new
    /// session is opened.
    [[nodiscard]] std::shared_ptr<Connection> elsewhere() {
        try {
            if (account_ != nullptr) {
                odbc::workIn(*account_, masterDatabase);
                return account_;
            }
        } catch (const Error&) { // the connection was lost
            account_.reset();
        }
        return open(odbc::withDatabase(connectionString_, masterDatabase));
    }

    /// Creates the database that the connection string names; false if it exists, or if the server cannot be
    /// reached.
    bool makeMissing() {
        const auto database = odbc::databaseNamed(connectionString_);
        std::shared_ptr<Connection> connection;
        if (database) {
            ignoringErrors([&] { connection = open(odbc::withDatabase(connectionString_, masterDatabase)); });
        }
        if (connection == nullptr || odbc::databaseExists(*connection, *database)) {
            return false;
        }
        make(*connection, *database);
        return true;
    }

    std::string connectionString_;
    const std::function<std::shared_ptr<Connection>()>& newConnection_;
    std::shared_ptr<Connection> account_;
    std::vector<std::string> made_;
};

void requireFit(Connection& connection, const std::string& database) {
    if (isServersOwn(database)) {
        throw Failure(exit_code::usage, HostText::serverNoDatabase, {database});
    }
    if (!odbc::ignoresLetterCase(connection)) {
        throw Failure(exit_code::usage, HostText::serverLetterCase, {database});
    }
    const std::string taken = joined(odbc::namesThere(connection, odbc::accountNames()), ", ");
    if (!taken.empty()) {
        throw Failure(exit_code::usage, HostText::serverAccountThere, {database, taken});
    }
}

std::shared_ptr<Connection> openAccount(Server& server, Language language) {
    try {
        return server.openAccount();
    } catch (const Error& error) {
        throw Failure(exit_code::database, HostText::notConnected, {reasonText(language, error)}).because({error, {}});
    }
}

} // namespace

ServerAccount makeServerAccount(const std::string& connectionString,
                                const std::function<std::shared_ptr<Connection>()>& newConnection,
                                const std::vector<TableFile>& files, const std::vector<AccountOption>& options,
                                Language language, const std::function<bool()>& stopRequested) {
    Server server(connectionString, newConnection);
    const auto connection = openAccount(server, language);
    try {
        ServerAccount account{odbc::currentDatabase(*connection), {}};
        requireFit(*connection, account.database);
        server.make(*connection, odbc::systemDatabase);
        Transaction transaction(*connection);
        odbc::makeAccountSchema(*connection);
        odbc::AccountTables tables(*connection);
        account.loaded = fillAccount(*connection, tables, files, options, language, stopRequested);
        transaction.end(true);
        server.keep();
        return account;
    } catch (const Error& error) {
        throw Failure(exit_code::database, HostText::databaseFailed,
                      {std::to_string(error.number()), reasonText(language, error)})
            .because({error, {}});
    }
}

} // namespace z7::cashflow::host
