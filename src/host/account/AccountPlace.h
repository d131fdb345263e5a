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

/// Where an account's database is: a file of the embedded database, or what a connection string names. The string
/// chooses the adapter: with driver=sqlite the embedded database, with everything else an ODBC driver. It may hold a
/// password and is never shown.
class AccountPlace {
public:
    /// An account's file, which need not exist yet.
    [[nodiscard]] static AccountPlace ofFile(std::filesystem::path file);
    /// What a connection string names. It must not say a year, which comes from the command. serverConnection makes the
    /// connections to any database but the embedded one.
    [[nodiscard]] static AccountPlace behind(std::string connectionString, ConnectionMaker serverConnection);

    /// The account's file; nothing for a server. Error 5 for a string of the embedded database that cannot be read.
    [[nodiscard]] std::optional<std::filesystem::path> file() const;
    /// The string that opens it in an accounting year, or without one.
    [[nodiscard]] std::string connectionString(std::optional<std::int16_t> year) const;
    /// The connection string as it was given; empty for a file.
    [[nodiscard]] std::string givenString() const;
    /// A closed connection of the adapter that it needs.
    [[nodiscard]] std::unique_ptr<Connection> makeConnection() const;

private:
    /// A connection string with the adapter that it chooses.
    struct Named {
        std::string connectionString;
        bool embedded = false;
        ConnectionMaker serverConnection;
    };

    explicit AccountPlace(std::variant<std::filesystem::path, Named> place);

    std::variant<std::filesystem::path, Named> place_;
};

} // namespace z7::cashflow::host
