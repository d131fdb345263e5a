#include "host/cli/connectOption.h"

#include "adapters/shared/session/ConnectionText.h"
#include "host/cli/ExitCode.h"
#include "host/cli/Failure.h"
#include "z7cashflow/support/Error.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestString = 65536;

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::string fileText(const std::string& file) {
    std::error_code ignored;
    std::ifstream stream;
    if (!std::filesystem::is_directory(file, ignored)) {
        stream.open(file, std::ios::binary);
    }
    std::string text(longestString + 1, '\0');
    if (stream.is_open()) {
        stream.read(text.data(), static_cast<std::streamsize>(text.size()));
        text.resize(static_cast<std::size_t>(stream.gcount()));
    }
    if (!stream.is_open() || stream.bad() || text.size() > longestString) {
        throw Failure(exitCode::usage, HostText::connectFileMissing, {file});
    }
    return text;
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
    } catch (const Error&) { // a text that cannot be read is judged by its words alone, to be safe
        return shared::namesSecret(text);
    }
}

std::string connectionStringOf(const std::string& option, bool onCommandLine) {
    const bool isFile = option.starts_with('@');
    std::string text = trimmed(isFile ? fileText(option.substr(1)) : option);
    if (text.empty()) {
        throw Failure(exitCode::usage, HostText::connectEmpty);
    }
    if (onCommandLine && !isFile && holdsSecret(text)) {
        throw Failure(exitCode::usage, HostText::connectSecret);
    }
    return text;
}

} // namespace z7::cashflow::host
