#include "adapters/odbc/OdbcDatabase.h"

#include "adapters/odbc/SqliteDialect.h"
#include "adapters/odbc/nativeCalls.h"
#include "adapters/sqlite/database.h"

#include <sql.h>
#include <sqlext.h>

#include <cstdlib>
#include <fstream>
#include <random>
#include <utility>

namespace z7::cashflow::odbc {

namespace fs = std::filesystem;

namespace {

std::string randomName() {
    std::random_device random;
    return "z7cf_" + std::to_string(random()) + std::to_string(random());
}

/// Runs a script whose batches end in lines that consist of "go".
void runScript(Connection& connection, const fs::path& file) {
    std::ifstream script(file);
    if (!script) {
        throw Error(0, "test", file.string() + " cannot be read");
    }
    std::string batch;
    for (std::string line; std::getline(script, line);) {
        if (line == "go") {
            connection.Execute(batch);
            batch.clear();
        } else {
            batch += line + '\n';
        }
    }
}

} // namespace

std::unique_ptr<Connection> makeDriverConnection() {
    return std::make_unique<Connection>([] { return std::make_unique<SqliteDialect>(); });
}

DriverDatabase::DriverDatabase() {
    // SQLite's driver has only narrow calls, and unixODBC truncates a wide connection string to bytes before it
    // passes it to them.
    const bool wide = ParameterText::cType() == SQL_C_WCHAR;
    file_ = folder_.path() / (wide ? fs::path("company x.db") : fs::path(u8"公司 x.db"));
    sqlite::createDatabase(file_);
}

std::unique_ptr<cashflow::Connection> DriverDatabase::makeConnection() const { return makeDriverConnection(); }

std::string DriverDatabase::connectionString(std::optional<std::int16_t> year, int timeout) const {
    // The driver has its own keyword for the lock timeout, with the same name as the adapter's.
    const std::string milliseconds = std::to_string(timeout);
    return "driver=odbc;odbc={Driver=SQLite3;Database=" + file_.string() + ";LoadExt=" + Z7_SESSION_FUNCTIONS +
           ";Timeout=" + milliseconds + "};timeout=" + milliseconds + (year ? ";year=" + std::to_string(*year) : "");
}

std::unique_ptr<Connection> DriverDatabase::open() const {
    auto connection = makeDriverConnection();
    connection->Open(connectionString(std::int16_t{2013}, 0));
    return connection;
}

std::optional<std::string> ServerDatabase::server() {
    const char* text = std::getenv("Z7CF_TEST_SQLSERVER");
    return text == nullptr || *text == '\0' ? std::nullopt : std::optional<std::string>(text);
}

ServerDatabase::ServerDatabase() : name_(randomName()) {
    const fs::path scripts(Z7_SERVER_SCHEMA);
    Connection connection;
    connection.Open(*server() + ";timeout=60000");
    if (connection.Execute("select name from sys.databases where name='zqsystem'")->atEnd()) {
        connection.Execute("create database zqsystem");
        Connection system;
        system.Open(*server() + ";Database=zqsystem");
        runScript(system, scripts / "system_tables.sql");
    }
    connection.Execute("create database " + name_);
    const auto account = open();
    runScript(*account, scripts / "account_tables.sql");
    runScript(*account, scripts / "account_views.sql");
}

ServerDatabase::~ServerDatabase() {
    try {
        Connection connection;
        connection.Open(*server());
        connection.Execute("delete from zqsystem..ua_period where cacc_id=N'" + accountId() + "'");
        connection.Execute("drop database " + name_);
    } catch (const Error& error) {
        ADD_FAILURE() << name_ << " could not be dropped: " << error.description();
    }
}

std::unique_ptr<cashflow::Connection> ServerDatabase::makeConnection() const { return std::make_unique<Connection>(); }

std::string ServerDatabase::connectionString(std::optional<std::int16_t> year, int timeout) const {
    return *server() + ";Database=" + name_ + ";timeout=" + std::to_string(timeout) +
           (year ? ";year=" + std::to_string(*year) : "");
}

std::unique_ptr<Connection> ServerDatabase::open() const {
    auto connection = std::make_unique<Connection>();
    connection->Open(connectionString(std::int16_t{2013}, 5000));
    return connection;
}

conformance::Capability ServerDatabase::selectInto() const {
    const std::string table = "tempdb.." + name_;
    try {
        const auto connection = open();
        connection->Execute("select isignseq into " + table + " from dsign");
        connection->Execute("drop table " + table);
    } catch (const Error& error) {
        return {false,
                "this server does not let the login make and drop a table of tempdb from a database of its own: " +
                    error.description()};
    }
    return {};
}

conformance::Capability ServerDatabase::waitsForLock() const {
    const auto one = open();
    Connection other;
    other.Open(connectionString(std::nullopt, 1));
    one->BeginTrans();
    one->Execute("insert into dsign (isignseq) values(99)");
    try {
        other.Execute("update dsign set csign=N'x'");
    } catch (const Error&) {
        return {};
    }
    return {false, "this server keeps versions of rows: a change neither sees nor waits for what is not committed"};
}

conformance::Capability ServerDatabase::tellsLockTimeout() const {
    const auto one = open();
    Connection other;
    other.Open(connectionString(std::nullopt, 1));
    one->Execute("insert into dsign (isignseq) values(98)");
    one->BeginTrans();
    one->Execute("update dsign set csign=N'y' where isignseq=98");
    try {
        other.Execute("update dsign set csign=N'x' where isignseq=98");
    } catch (const Error& error) {
        return {error.sqlState() == "HYT00", "this server answers a wait for a lock that is over with the state " +
                                                 error.sqlState() + ": " + error.description()};
    }
    return {false, "this server lets two sessions change one record at a time"};
}

conformance::Capability ServerDatabase::tellsErrorNumbers() const {
    for (const auto& [statement, expected] : {std::pair<const char*, int>{"select * from z7_nosuch", 208},
                                              {"delete", 102},
                                              {"update gl_accvouch set md=N'12a'", 235}}) {
        const int number = conformance::errorOf([this, text = statement] { open()->Execute(text); }).number();
        if (number != expected) {
            return {false, "this server has the number " + std::to_string(number) + " for \"" + statement + "\", not " +
                               std::to_string(expected)};
        }
    }
    return {};
}

conformance::Capability ServerDatabase::tellsLeftOverQuoteFirst() const {
    const Error error = conformance::errorOf([this] { open()->Execute("select * from code where ccode=N'a'b'"); });
    return {error.number() == 105, "this server tells what stands behind the text first: " + error.description()};
}

conformance::Capability ServerDatabase::leavesExpressionsUnnamed() const {
    const std::string name = open()->Execute("select count(*) from dsign")->Fields().Name(0);
    return {name.empty(), "this server names an expression by its function: " + name};
}

conformance::Capability ServerDatabase::keepsTransactionAfterBadSyntax() const {
    const auto connection = open();
    connection->BeginTrans();
    static_cast<void>(conformance::errorOf([&] { connection->Execute("delete"); }));
    try {
        connection->CommitTrans();
    } catch (const Error&) {
        return {false, "this server rolls a transaction back when a batch cannot be parsed"};
    }
    return {};
}

} // namespace z7::cashflow::odbc

namespace z7::cashflow::conformance {

std::vector<Adapter> databasesUnderTest() {
    std::vector<Adapter> adapters{{"odbc_sqlite", [] { return std::make_unique<odbc::DriverDatabase>(); }}};
    if (odbc::ServerDatabase::server()) {
        adapters.push_back({"odbc_server", [] { return std::make_unique<odbc::ServerDatabase>(); }});
    }
    return adapters;
}

} // namespace z7::cashflow::conformance
