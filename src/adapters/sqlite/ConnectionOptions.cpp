#include "adapters/sqlite/ConnectionOptions.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/shared/session/ConnectionText.h"
#include "adapters/sqlite/SqliteReason.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::sqlite {
namespace {

void take(ConnectionOptions& options, const shared::ConnectionText& text, const shared::ConnectionText::Part& part) {
    if (part.keyword == "driver") {
        if (asciiLower(part.value) != "sqlite") {
            text.refuse(SqliteReason::driverNotSqlite);
        }
    } else if (part.keyword == "database") {
        if (part.value.empty()) {
            text.refuse(SqliteReason::databaseEmpty);
        }
        options.database = pathOf(part.value);
    } else if (part.keyword == "year") {
        options.year = static_cast<std::int16_t>(text.number(part, 1, 9999));
    } else if (part.keyword == "timeout") {
        options.timeout = text.number(part, 0, 3600000);
    } else if (part.keyword == "maxpages") {
        options.maxPages = text.number(part, 1, 2147483646);
    } else {
        text.refuse(shared::DatabaseReason::keywordUnknown,
                    {part.keyword, "driver, database, year, timeout, maxpages"});
    }
}

} // namespace

ConnectionOptions parseConnectionString(const std::string& text) {
    const shared::ConnectionText taken(text, "SQLite");
    ConnectionOptions options;
    for (const auto& part : taken.parts()) {
        take(options, taken, part);
    }
    for (const char* needed : {"driver", "database"}) {
        if (taken.find(needed) == nullptr) {
            taken.refuse(shared::DatabaseReason::keywordMissing, {needed});
        }
    }
    return options;
}

std::filesystem::path pathOf(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

} // namespace z7::cashflow::sqlite
