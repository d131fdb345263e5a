#pragma once

#include "host/cli/GlobalOptions.h"
#include "z7cashflow/ports/Connection.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace z7::cashflow::host {

/// Where an account's database is: a file of the embedded database, or a connection string. The string chooses the
/// adapter: the embedded database for driver=sqlite, otherwise ODBC. It may hold a password and is never shown.
class AccountPlace {
public:
    /// An account file, which need not exist yet.
    [[nodiscard]] static AccountPlace ofFile(std::filesystem::path file);
    /// The database that a connection string names. The string must not contain a year, which comes from the
    /// command. serverConnection creates the connections to any database but the embedded one.
    [[nodiscard]] static AccountPlace ofConnectionString(std::string connectionString,
                                                         ConnectionMaker serverConnection);

    /// The account's file; empty for a server. Error 5 for a string of the embedded database that cannot be
    /// parsed.
    [[nodiscard]] std::optional<std::filesystem::path> file() const;
    /// The connection string for an accounting year, or for no year.
    [[nodiscard]] std::string connectionString(std::optional<std::int16_t> year) const;
    /// The connection string as given; empty for a file.
    [[nodiscard]] std::string givenString() const;
    /// A closed connection of the adapter for this place.
    [[nodiscard]] std::unique_ptr<Connection> makeConnection() const;

private:
    /// A connection string and the adapter that it chooses.
    struct Named {
        std::string connectionString;
        bool embedded = false;
        ConnectionMaker serverConnection;
    };

    explicit AccountPlace(std::variant<std::filesystem::path, Named> place);

    std::variant<std::filesystem::path, Named> place_;
};

} // namespace z7::cashflow::host
