#include "host/cli/connectOption.h"

#include "adapters/shared/session/ConnectionText.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "host/cli/Failure.h"
#include "host/cli/environment.h"
#include "host/cli/exitCode.h"
#include "host/cli/readText.h"
#include "z7cashflow/support/Error.h"

#include <algorithm>
#include <string_view>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestString = 65536;
constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string fileText(const std::string& file) {
    TextRead read = readText(sqlite::pathOf(file), longestString);
    if (read.outcome != TextRead::Outcome::whole) {
        throw Failure(exit_code::usage, HostText::connectFileMissing, {file});
    }
    if (read.text.starts_with("\xFF\xFE") || read.text.starts_with("\xFE\xFF") ||
        read.text.find('\0') != std::string::npos) {
        throw Failure(exit_code::usage, HostText::connectFileNoText, {file});
    }
    return std::move(read.text);
}

/// Joins lines into one connection string. A line holds one or more keywords with their values; remark lines are
/// left out.
std::string joinedLines(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    text.remove_prefix(text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
    std::string joined;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == '#') {
            continue;
        }
        joined += joined.empty() || joined.back() == ';' ? "" : ";";
        joined += line;
    }
    return joined;
}

} // namespace

bool holdsSecret(std::string_view text) {
    if (text.find('=') == std::string_view::npos) {
        return false;
    }
    try {
        const shared::ConnectionText given(text, "");
        return std::any_of(given.parts().begin(), given.parts().end(), [](const auto& part) {
            return !part.value.empty() && (shared::namesSecret(part.keyword) || holdsSecret(part.value));
        });
    } catch (const Error&) { // cannot be parsed; to be safe, search its text for words that name a secret
        return shared::namesSecret(text);
    }
}

std::string connectionStringOf(const std::string& option, bool onCommandLine) {
    const bool isFile = option.starts_with('@');
    std::string text = isFile ? joinedLines(fileText(option.substr(1))) : std::string(trimmed(option));
    if (text.empty()) {
        throw isFile ? Failure(exit_code::usage, HostText::connectFileEmpty, {option.substr(1)})
                     : Failure(exit_code::usage, HostText::connectEmpty);
    }
    if (onCommandLine && !isFile && holdsSecret(text)) {
        throw Failure(exit_code::usage, HostText::connectSecret);
    }
    return text;
}

std::string fileOpenToOthers(const std::string& option) {
    if (!option.starts_with('@')) {
        return {};
    }
    const std::string file = option.substr(1);
    return isOpenToOthers(sqlite::pathOf(file)) ? file : std::string();
}

} // namespace z7::cashflow::host
