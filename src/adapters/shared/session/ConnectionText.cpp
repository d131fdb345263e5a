#include "adapters/shared/session/ConnectionText.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

namespace z7::cashflow::shared {
namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::size_t longestText = 8000; // drivers use a 16-bit length

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

ConnectionText::ConnectionText(std::string_view text, const char* errorSource) : errorSource_(errorSource) {
    if (text.find('\0') != std::string_view::npos) {
        refuse(DatabaseReason::stringWithZeroByte);
    }
    if (text.size() > longestText) {
        refuse(DatabaseReason::stringTooLong, {std::to_string(longestText)});
    }
    std::string_view rest = text;
    while (!trimmed(rest).empty()) {
        rest.remove_prefix(rest.find_first_not_of(blanks));
        if (rest.front() == ';') {
            rest.remove_prefix(1);
            continue;
        }
        const std::size_t equals = rest.find('=');
        if (equals == std::string_view::npos || rest.find(';') < equals) {
            refuse(DatabaseReason::partWithoutValue);
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
        if (find(part.keyword) != nullptr) {
            refuse(DatabaseReason::keywordTwice, {part.keyword});
        }
        parts_.push_back(std::move(part));
    }
}

/// Removes the value at the front of the rest with the semicolon after it, and returns it.
std::string ConnectionText::takeValue(std::string_view& rest, const std::string& keyword) const {
    std::string value;
    const std::size_t first = rest.find_first_not_of(blanks);
    const bool braced = first != std::string_view::npos && rest[first] == '{';
    if (braced) {
        rest.remove_prefix(first);
        std::size_t at = 1;
        while (at < rest.size() && (rest[at] != '}' || (at + 1 < rest.size() && rest[at + 1] == '}'))) {
            value += rest[at];
            at += rest[at] == '}' ? 2 : 1;
        }
        if (at >= rest.size()) {
            refuse(DatabaseReason::braceNotClosed, {keyword});
        }
        rest.remove_prefix(at + 1);
    }
    const std::size_t end = rest.find(';');
    const std::string_view before = trimmed(rest.substr(0, end));
    if (!braced) {
        value = before;
    } else if (!before.empty()) {
        refuse(DatabaseReason::textAfterBrace, {keyword});
    }
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return value;
}

const ConnectionText::Part* ConnectionText::find(std::string_view keyword) const noexcept {
    const auto found =
        std::find_if(parts_.begin(), parts_.end(), [keyword](const Part& part) { return part.keyword == keyword; });
    return found == parts_.end() ? nullptr : &*found;
}

int ConnectionText::number(const Part& part, int least, int most) const {
    int number = 0;
    const char* const end = part.value.data() + part.value.size();
    const auto [stop, error] = std::from_chars(part.value.data(), end, number);
    if (error != std::errc() || stop != end || number < least || number > most) {
        refuse(DatabaseReason::keywordNotNumber, {part.keyword, std::to_string(least), std::to_string(most)});
    }
    return number;
}

void ConnectionText::refuse(ReasonId reason, std::vector<std::string> arguments) const {
    throw Error(errorSource_, {DatabaseReason::connectionStringBad, {}, {{reason, std::move(arguments)}}});
}

bool namesSecret(std::string_view keyword) {
    constexpr std::array<std::string_view, 6> words = {"pwd", "pass", "token", "secret", "key", "credential"};
    const std::string lower = asciiLower(keyword);
    return std::any_of(words.begin(), words.end(),
                       [&lower](std::string_view word) { return lower.find(word) != std::string::npos; });
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

} // namespace z7::cashflow::shared
