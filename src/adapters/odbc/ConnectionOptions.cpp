#include "adapters/odbc/ConnectionOptions.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>

namespace z7::cashflow::odbc {
namespace {

constexpr std::size_t longestText = 8000; // ODBC counts it in 16 bits

/// One "keyword=value" of a connection string.
struct Part {
    std::string keyword; ///< in lower case
    std::string value;   ///< without its braces
    std::string source;  ///< as written
};

[[noreturn]] void refuse(const std::string& reason) {
    throw Error(errors::badArgument, "ODBC", "The connection string cannot be used: " + reason + ".");
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

/// The value at the front of the rest, which is taken off with the semicolon behind it.
std::string takeValue(std::string_view& rest, const std::string& keyword) {
    std::string value;
    const std::size_t first = rest.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos || rest[first] != '{') {
        const std::size_t end = rest.find(';');
        value = trimmed(rest.substr(0, end));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        return value;
    }
    rest.remove_prefix(first);
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

std::vector<Part> partsOf(std::string_view rest) {
    std::vector<Part> parts;
    while (!trimmed(rest).empty()) {
        if (rest.front() == ';') {
            rest.remove_prefix(1);
            continue;
        }
        const std::size_t equals = rest.find('=');
        if (equals == std::string_view::npos || rest.find(';') < equals) {
            refuse("each part must be keyword=value");
        }
        Part part;
        part.keyword = asciiLower(trimmed(rest.substr(0, equals)));
        const std::string_view whole = rest;
        rest.remove_prefix(equals + 1);
        part.value = takeValue(rest, part.keyword);
        part.source = whole.substr(0, whole.size() - rest.size());
        if (part.source.ends_with(';')) {
            part.source.pop_back();
        }
        const auto same = [&part](const Part& other) { return other.keyword == part.keyword; };
        if (std::any_of(parts.begin(), parts.end(), same)) {
            refuse("the keyword \"" + part.keyword + "\" is given twice");
        }
        parts.push_back(std::move(part));
    }
    return parts;
}

int numberValue(const Part& part, int least, int most) {
    int number = 0;
    const char* end = part.value.data() + part.value.size();
    const auto [stop, error] = std::from_chars(part.value.data(), end, number);
    if (error != std::errc() || stop != end || number < least || number > most) {
        refuse(part.keyword + " must be a number from " + std::to_string(least) + " to " + std::to_string(most));
    }
    return number;
}

/// Takes a keyword of this adapter; false if it is none.
bool takeOwn(ConnectionOptions& options, const Part& part) {
    if (part.keyword == "year") {
        options.year = static_cast<std::int16_t>(numberValue(part, 1, 9999));
    } else if (part.keyword == "timeout") {
        options.timeout = numberValue(part, 0, 3600000);
    } else if (part.keyword == "dialect") {
        const std::string name = asciiLower(part.value);
        if (name != "tsql" && name != "sqlite") {
            refuse("dialect must be tsql or sqlite");
        }
        options.dialect = name == "sqlite" ? DialectKind::sqlite : DialectKind::tsql;
    } else {
        return false;
    }
    return true;
}

bool isSecret(const std::string& keyword) {
    for (const std::string_view word : {"pwd", "pass", "token", "secret", "key", "credential"}) {
        if (keyword.find(word) != std::string::npos) {
            return true;
        }
    }
    return false;
}

const Part* find(const std::vector<Part>& parts, std::string_view keyword) {
    const auto found =
        std::find_if(parts.begin(), parts.end(), [keyword](const Part& part) { return part.keyword == keyword; });
    return found == parts.end() ? nullptr : &*found;
}

void add(ConnectionOptions& options, const std::string& source) {
    options.driverText += (options.driverText.empty() ? "" : ";") + source;
}

/// FreeTDS gives texts in the character set of its configuration unless it is told otherwise here.
void completeFreeTds(ConnectionOptions& options, const std::vector<Part>& parts) {
    const std::string driver = asciiLower(options.driver);
    if (driver.find("freetds") == std::string::npos && driver.find("tdsodbc") == std::string::npos) {
        return;
    }
    if (const Part* charset = find(parts, "clientcharset")) {
        if (asciiLower(charset->value) != "utf-8") {
            refuse("ClientCharset must be UTF-8");
        }
    } else {
        add(options, "ClientCharset=UTF-8");
    }
}

void takeDriverPart(ConnectionOptions& options, const Part& part) {
    if (part.keyword == "driver") {
        options.driver = part.value;
    }
    if (isSecret(part.keyword) && !part.value.empty()) {
        options.secrets.push_back(part.value);
        const std::size_t value = part.source.find_first_not_of(" \t\r\n", part.source.find('=') + 1);
        if (part.source.substr(value) != part.value) {
            options.secrets.push_back(part.source.substr(value)); // as it stands in its braces
        }
    }
    add(options, part.source);
}

} // namespace

ConnectionOptions parseConnectionString(const std::string& text) {
    if (text.find('\0') != std::string::npos) {
        refuse("it holds a zero byte");
    }
    if (text.size() > longestText) {
        refuse("it has more than " + std::to_string(longestText) + " bytes");
    }
    ConnectionOptions options;
    std::vector<Part> parts = partsOf(text);
    const Part* driver = find(parts, "driver");
    if (driver != nullptr && asciiLower(driver->value) == "odbc") {
        const Part* odbc = find(parts, "odbc");
        if (odbc == nullptr) {
            refuse("driver=odbc needs odbc={...} with the text for the ODBC driver");
        }
        for (const Part& part : parts) {
            if (&part != driver && &part != odbc && !takeOwn(options, part)) {
                refuse("the keyword \"" + part.keyword +
                       "\" is unknown; beside odbc={...} the known ones are year, timeout and dialect");
            }
        }
        const std::string inner = odbc->value; // the parts themselves are read anew
        parts = partsOf(inner);
        for (const Part& part : parts) {
            takeDriverPart(options, part);
        }
    } else {
        for (const Part& part : parts) {
            if (!takeOwn(options, part)) {
                takeDriverPart(options, part);
            }
        }
    }
    if (find(parts, "driver") == nullptr && find(parts, "dsn") == nullptr && find(parts, "filedsn") == nullptr) {
        refuse("it names neither a driver (Driver={...}) nor a data source (DSN=...)");
    }
    if (asciiLower(options.driver) == "sqlite" && options.dialect != DialectKind::sqlite) {
        refuse("driver=sqlite names the embedded database, which is no matter of ODBC");
    }
    completeFreeTds(options, parts);
    if (options.dialect == DialectKind::sqlite) {
        add(options, "Timeout=" + std::to_string(options.timeout));
    }
    // The longest first, so that a secret that is part of another one leaves nothing of it behind.
    std::sort(options.secrets.begin(), options.secrets.end(),
              [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
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

} // namespace z7::cashflow::odbc
