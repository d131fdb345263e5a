#include "adapters/odbc/databaseKeyword.h"

#include "adapters/odbc/ConnectionOptions.h"
#include "adapters/odbc/databaseError.h"
#include "adapters/shared/session/ConnectionText.h"

namespace z7::cashflow::odbc {

std::optional<std::string> databaseNamed(const std::string& connectionString) {
    const shared::ConnectionText text(parseConnectionString(connectionString).driverText, errorSource);
    const auto* database = text.find("database");
    return database == nullptr ? std::nullopt : std::optional(database->value);
}

std::string withDatabase(const std::string& connectionString, const std::string& database) {
    const ConnectionOptions options = parseConnectionString(connectionString);
    const shared::ConnectionText text(options.driverText, errorSource);
    std::string driverText;
    for (const auto& part : text.parts()) {
        if (part.keyword != "database") {
            driverText += part.source + ";";
        }
    }
    driverText += "Database=" + shared::connectionValue(database);
    return "driver=odbc;odbc=" + shared::connectionValue(driverText) + ";timeout=" + std::to_string(options.timeout);
}

} // namespace z7::cashflow::odbc
