#include "adapters/odbc/ConnectionOptions.h"

#include "adapters/odbc/OdbcReason.h"
#include "adapters/odbc/databaseError.h"
#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/shared/session/ConnectionText.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace z7::cashflow::odbc {
namespace {

using shared::ConnectionText;
using Part = ConnectionText::Part;

/// Stores a keyword of this adapter; false if it belongs to the driver.
bool takeOwn(ConnectionOptions& options, const ConnectionText& text, const Part& part) {
    if (part.keyword == "year") {
        options.year = static_cast<std::int16_t>(text.number(part, 1, 9999));
    } else if (part.keyword == "timeout") {
        options.timeout = text.number(part, 0, 3600000);
    } else {
        return false;
    }
    return true;
}

void add(ConnectionOptions& options, const std::string& source) {
    options.driverText += (options.driverText.empty() ? "" : ";") + source;
}

/// By default FreeTDS uses the character set of its configuration.
void completeFreeTds(ConnectionOptions& options, const ConnectionText& text) {
    const std::string driver = asciiLower(options.driver);
    if (driver.find("freetds") == std::string::npos && driver.find("tdsodbc") == std::string::npos) {
        return;
    }
    if (const Part* charset = text.find("clientcharset")) {
        if (asciiLower(charset->value) != "utf-8") {
            text.refuse(OdbcReason::charsetNotUtf8);
        }
    } else {
        add(options, "ClientCharset=UTF-8");
    }
}

void takeDriverPart(ConnectionOptions& options, const Part& part) {
    if (part.keyword == "driver") {
        options.driver = part.value;
    }
    if (shared::namesSecret(part.keyword) && !part.value.empty()) {
        options.secrets.push_back(part.value);
        const std::size_t value = part.source.find_first_not_of(" \t\r\n", part.source.find('=') + 1);
        if (part.source.substr(value) != part.value) {
            options.secrets.push_back(part.source.substr(value)); // as written inside its braces
        }
    }
    add(options, part.source);
}

/// The destination of the connection for messages: "server=s, port=1433, database=d".
std::string targetOf(const ConnectionText& text) {
    std::string target;
    for (const char* keyword : {"dsn", "filedsn", "server", "servername", "address", "addr", "port", "database"}) {
        if (const Part* part = text.find(keyword); part != nullptr && !part->value.empty()) {
            target.append(target.empty() ? "" : ", ").append(keyword).append("=").append(part->value);
        }
    }
    return target;
}

/// Checks and completes the text for the driver.
void complete(ConnectionOptions& options, const ConnectionText& text) {
    if (text.find("driver") == nullptr && text.find("dsn") == nullptr && text.find("filedsn") == nullptr) {
        text.refuse(OdbcReason::driverNotNamed);
    }
    if (asciiLower(options.driver) == "sqlite") {
        text.refuse(OdbcReason::driverEmbedded);
    }
    completeFreeTds(options, text);
    options.target = targetOf(text);
    // The longest first, so that a secret that is part of another one leaves nothing of it.
    std::sort(options.secrets.begin(), options.secrets.end(),
              [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
}

} // namespace

ConnectionOptions parseConnectionString(const std::string& text) {
    const ConnectionText given(text, errorSource);
    ConnectionOptions options;
    const Part* driver = given.find("driver");
    if (driver != nullptr && asciiLower(driver->value) == "odbc") {
        const Part* odbc = given.find("odbc");
        if (odbc == nullptr) {
            given.refuse(OdbcReason::odbcPartMissing);
        }
        for (const Part& part : given.parts()) {
            if (&part != driver && &part != odbc && !takeOwn(options, given, part)) {
                given.refuse(shared::DatabaseReason::keywordUnknown, {part.keyword, "driver, odbc, year, timeout"});
            }
        }
        const ConnectionText inner(odbc->value, errorSource);
        for (const Part& part : inner.parts()) {
            takeDriverPart(options, part);
        }
        complete(options, inner);
    } else {
        for (const Part& part : given.parts()) {
            if (!takeOwn(options, given, part)) {
                takeDriverPart(options, part);
            }
        }
        complete(options, given);
    }
    return options;
}

std::string withoutSecrets(std::string text, const std::vector<std::string>& secrets) {
    for (const std::string& secret : secrets) {
        constexpr std::string_view mask = "***";
        std::size_t at = 0;
        while ((at = text.find(secret, at)) != std::string::npos) {
            text.replace(at, secret.size(), mask);
            at += mask.size();
        }
    }
    return text;
}

} // namespace z7::cashflow::odbc
