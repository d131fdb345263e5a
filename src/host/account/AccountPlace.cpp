#include "host/account/AccountPlace.h"

#include "adapters/shared/session/ConnectionText.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/database.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <utility>

namespace z7::cashflow::host {

namespace {

/// Whether a connection string says driver=sqlite. False for one that cannot be parsed: the ODBC adapter then
/// refuses it with the reason.
bool isEmbedded(const std::string& connectionString) {
    bool embedded = false;
    ignoringErrors([&] {
        const shared::ConnectionText text(connectionString, "");
        const shared::ConnectionText::Part* driver = text.find("driver");
        embedded = driver != nullptr && asciiLower(driver->value) == "sqlite";
    });
    return embedded;
}

} // namespace

AccountPlace::AccountPlace(std::variant<std::filesystem::path, Named> place) : place_(std::move(place)) {}

AccountPlace AccountPlace::ofFile(std::filesystem::path file) { return AccountPlace(std::move(file)); }

AccountPlace AccountPlace::ofConnectionString(std::string connectionString, ConnectionMaker serverConnection) {
    const bool embedded = isEmbedded(connectionString);
    return AccountPlace(Named{std::move(connectionString), embedded, std::move(serverConnection)});
}

std::optional<std::filesystem::path> AccountPlace::file() const {
    if (const auto* file = std::get_if<std::filesystem::path>(&place_)) {
        return *file;
    }
    const auto& named = std::get<Named>(place_);
    return named.embedded ? std::optional(sqlite::parseConnectionString(named.connectionString).database)
                          : std::nullopt;
}

std::string AccountPlace::connectionString(std::optional<std::int16_t> year) const {
    if (const auto* file = std::get_if<std::filesystem::path>(&place_)) {
        return sqlite::connectionString(*file, year);
    }
    const std::string& given = std::get<Named>(place_).connectionString;
    const std::string separator = given.ends_with(';') ? "" : ";";
    return year ? given + separator + "year=" + std::to_string(*year) : given;
}

std::string AccountPlace::givenString() const {
    const auto* named = std::get_if<Named>(&place_);
    return named == nullptr ? std::string() : named->connectionString;
}

std::unique_ptr<Connection> AccountPlace::makeConnection() const {
    const auto* named = std::get_if<Named>(&place_);
    if (named != nullptr && !named->embedded) {
        return named->serverConnection();
    }
    return std::make_unique<sqlite::Connection>();
}

} // namespace z7::cashflow::host
