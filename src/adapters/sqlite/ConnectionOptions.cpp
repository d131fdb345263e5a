#include "adapters/sqlite/ConnectionOptions.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <charconv>
#include <set>
#include <string_view>
#include <system_error>

namespace z7::cashflow::sqlite {
namespace {

[[noreturn]] void refuse(const std::string& reason) {
    throw Error(errors::badArgument, "SQLite", "The connection string cannot be used: " + reason + ".");
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

/// Takes the next value off the rest, the semicolon behind it included.
std::string takeValue(std::string_view& rest, const std::string& keyword) {
    while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t')) {
        rest.remove_prefix(1);
    }
    std::string value;
    if (rest.starts_with('{')) {
        std::size_t at = 1;
        while (at < rest.size() && (rest[at] != '}' || (at + 1 < rest.size() && rest[at + 1] == '}'))) {
            value += rest[at];
            at += rest[at] == '}' ? 2 : 1;
        }
        if (at >= rest.size()) {
            refuse("the brace of " + keyword + " is not closed");
        }
        rest.remove_prefix(at + 1);
        const std::size_t end = rest.find(';');
        if (!trimmed(rest.substr(0, end)).empty()) {
            refuse("something follows the closing brace of " + keyword);
        }
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        return value;
    }
    const std::size_t end = rest.find(';');
    value = trimmed(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return value;
}

int numberValue(const std::string& keyword, const std::string& value, int least, int most) {
    int number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc() || end != value.data() + value.size() || number < least || number > most) {
        refuse(keyword + " must be a number from " + std::to_string(least) + " to " + std::to_string(most));
    }
    return number;
}

void take(ConnectionOptions& options, const std::string& keyword, const std::string& value) {
    if (keyword == "driver") {
        if (asciiLower(value) != "sqlite") {
            refuse("driver must be sqlite for the embedded database");
        }
    } else if (keyword == "database") {
        if (value.empty() || value.find('\0') != std::string::npos) {
            refuse("database must name the account's file");
        }
        options.database = pathOf(value);
    } else if (keyword == "year") {
        options.year = static_cast<std::int16_t>(numberValue(keyword, value, 1, 9999));
    } else if (keyword == "timeout") {
        options.timeout = numberValue(keyword, value, 0, 3600000);
    } else if (keyword == "maxpages") {
        options.maxPages = numberValue(keyword, value, 1, 2147483646);
    } else {
        refuse("the keyword \"" + keyword +
               "\" is unknown; the known ones are driver, database, year, timeout and maxpages");
    }
}

} // namespace

ConnectionOptions parseConnectionString(const std::string& text) {
    ConnectionOptions options;
    std::set<std::string> seen;
    std::string_view rest = text;
    while (!trimmed(rest).empty()) {
        if (rest.front() == ';') {
            rest.remove_prefix(1);
            continue;
        }
        const std::size_t equals = rest.find('=');
        if (equals == std::string_view::npos || rest.find(';') < equals) {
            refuse("each part must be keyword=value");
        }
        const std::string keyword = asciiLower(trimmed(rest.substr(0, equals)));
        rest.remove_prefix(equals + 1);
        const std::string value = takeValue(rest, keyword);
        if (!seen.insert(keyword).second) {
            refuse("the keyword \"" + keyword + "\" is given twice");
        }
        take(options, keyword, value);
    }
    for (const char* needed : {"driver", "database"}) {
        if (!seen.contains(needed)) {
            refuse("the keyword \"" + std::string(needed) + "\" is missing");
        }
    }
    return options;
}

std::string connectionValue(const std::string& value) {
    if (value.find_first_of(";{}=") == std::string::npos && trimmed(value).size() == value.size()) {
        return value;
    }
    std::string quoted = "{";
    for (const char c : value) {
        quoted += c;
        if (c == '}') {
            quoted += c;
        }
    }
    return quoted + '}';
}

std::filesystem::path pathOf(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

} // namespace z7::cashflow::sqlite
