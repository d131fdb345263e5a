#include "host/account/AccountPlace.h"

#include "adapters/odbc/Connection.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/database.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::host {

namespace {

/// Whether a connection string says driver=sqlite, with blanks and braces where they may be.
bool isEmbedded(const std::string& connectionString) {
    std::string plain;
    for (const char c : asciiLower(connectionString)) {
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n') {
            plain += c;
        }
    }
    for (const char* keyword : {"driver=sqlite", "driver={sqlite}"}) {
        const std::string text = keyword;
        const std::size_t at = plain.find(text);
        const bool begins = at == 0 || (at != std::string::npos && plain[at - 1] == ';');
        if (begins && (at + text.size() == plain.size() || plain[at + text.size()] == ';')) {
            return true;
        }
    }
    return false;
}

} // namespace

AccountPlace AccountPlace::ofFile(std::filesystem::path file) {
    AccountPlace place;
    place.file_ = std::move(file);
    return place;
}

AccountPlace AccountPlace::behind(std::string connectionString) {
    AccountPlace place;
    place.embedded_ = isEmbedded(connectionString);
    place.connectionString_ = std::move(connectionString);
    return place;
}

std::optional<std::filesystem::path> AccountPlace::file() const {
    if (!embedded_) {
        return std::nullopt;
    }
    return connectionString_.empty() ? file_ : sqlite::parseConnectionString(connectionString_).database;
}

std::string AccountPlace::connectionString(std::optional<std::int16_t> year) const {
    if (connectionString_.empty()) {
        return sqlite::connectionString(file_, year);
    }
    const std::string separator = connectionString_.ends_with(';') ? "" : ";";
    return year ? connectionString_ + separator + "year=" + std::to_string(*year) : connectionString_;
}

std::shared_ptr<Connection> AccountPlace::makeConnection() const {
    if (embedded_) {
        return std::make_shared<sqlite::Connection>();
    }
    return std::make_shared<odbc::Connection>();
}

} // namespace z7::cashflow::host
