#pragma once

#include "adapters/conformance/DatabaseUnderTest.h"
#include "adapters/odbc/Connection.h"
#include "doubles/ScratchFolder.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace z7::cashflow::odbc {

/// A closed connection to the embedded database through SQLite's ODBC driver, with rewritten statements.
[[nodiscard]] std::unique_ptr<Connection> makeDriverConnection();

/// An account of the embedded database used through SQLite's ODBC driver, with rewritten statements.
class DriverDatabase final : public conformance::DatabaseUnderTest {
public:
    DriverDatabase();

    [[nodiscard]] std::unique_ptr<cashflow::Connection> makeConnection() const override;
    [[nodiscard]] std::string connectionString(std::optional<std::int16_t> year, int timeout) const override;
    [[nodiscard]] std::unique_ptr<Connection> open() const;

private:
    test::ScratchFolder folder_;
    std::filesystem::path file_;
};

/// A database on a server that speaks Transact-SQL, created with the schema's scripts and dropped at the end. The
/// server is given by the environment variable Z7CF_TEST_SQLSERVER: a connection string without a database, whose
/// login may create databases.
class ServerDatabase final : public conformance::DatabaseUnderTest {
public:
    ServerDatabase();
    ServerDatabase(const ServerDatabase&) = delete;
    ServerDatabase& operator=(const ServerDatabase&) = delete;
    ~ServerDatabase() override;

    /// The connection string of the environment; empty if it is not set.
    [[nodiscard]] static std::optional<std::string> server();

    [[nodiscard]] std::unique_ptr<cashflow::Connection> makeConnection() const override;
    [[nodiscard]] std::string connectionString(std::optional<std::int16_t> year, int timeout) const override;
    [[nodiscard]] std::unique_ptr<Connection> open() const;

    [[nodiscard]] std::string accountId() const override { return name_.substr(0, 20); }

    // The differences between servers are determined by trying.
    [[nodiscard]] conformance::Capability selectInto() const override;
    [[nodiscard]] conformance::Capability waitsForLock() const override;
    [[nodiscard]] conformance::Capability tellsLockTimeout() const override;
    [[nodiscard]] conformance::Capability tellsErrorNumbers() const override;
    [[nodiscard]] conformance::Capability tellsLeftOverQuoteFirst() const override;
    [[nodiscard]] conformance::Capability leavesExpressionsUnnamed() const override;
    [[nodiscard]] conformance::Capability keepsTransactionAfterBadSyntax() const override;

private:
    std::string name_;
};

} // namespace z7::cashflow::odbc
