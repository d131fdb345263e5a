#include "z7cashflow/statements/LiteralPolicy.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/names.h"

#include <algorithm>
#include <string>

namespace z7::cashflow::statements {

namespace {

constexpr std::string_view digits = "0123456789";

[[noreturn]] void refuse(std::string_view value, Reason reason, const Place& place) {
    raisePlatformError(reason, {std::string(place.name), shortened(value), std::string(place.statement)});
}

std::size_t skipDigits(std::string_view text, std::size_t at) {
    return std::min(text.find_first_not_of(digits, at), text.size());
}

bool hasSignAt(std::string_view text, std::size_t at) {
    return at < text.size() && (text[at] == '+' || text[at] == '-');
}

// Where the digits and the decimal point that begin at a position end; the position itself if there is no digit.
std::size_t skipDecimal(std::string_view text, std::size_t at) {
    const std::size_t point = skipDigits(text, at);
    if (point == text.size() || text[point] != '.') {
        return point;
    }
    const std::size_t end = skipDigits(text, point + 1);
    return end == at + 1 ? at : end; // a point alone
}

bool isOneNumber(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    const std::size_t last = text.find_last_not_of(' ') + 1;
    text = text.substr(0, std::max(first, last)).substr(first);
    const std::size_t begin = hasSignAt(text, 0) ? 1 : 0;
    std::size_t at = skipDecimal(text, begin);
    if (at == begin) {
        return false;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        const std::size_t exponent = at + (hasSignAt(text, at + 1) ? 2 : 1);
        at = skipDigits(text, exponent);
        return at > exponent && at == text.size();
    }
    return at == text.size();
}

} // namespace

void requireText(std::string_view text, const Place& place) {
    if (text.find('\'') != std::string_view::npos) {
        refuse(text, Reason::valueWithQuote, place);
    }
}

void requireNumber(std::string_view text, const Place& place) {
    if (!isOneNumber(text)) {
        refuse(text, Reason::valueNotOneNumber, place);
    }
}

void requireTableName(std::string_view text, const Place& place) {
    if (text.empty() || tableNameLength(text) != text.size()) {
        refuse(text, Reason::valueNotTableName, place);
    }
}

void requireColumnName(std::string_view text, const Place& place) {
    if (text.empty() || nameLength(text) != text.size()) {
        refuse(text, Reason::valueNotColumnName, place);
    }
}

} // namespace z7::cashflow::statements
