#include "host/commands/runArgument.h"

#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace z7::cashflow::host {

bool looksLikeRun(const std::string& word) {
    return !word.empty() && std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::int32_t readRun(const std::string& word) {
    std::int32_t number = 0;
    const char* const end = word.data() + word.size();
    const auto read = std::from_chars(word.data(), end, number);
    if (!looksLikeRun(word) || read.ec != std::errc() || read.ptr != end || number < 1) {
        throw Failure(exit_code::usage, HostText::badRun, {word});
    }
    return number;
}

void requireLog(Connection& connection) {
    if (!workbench::hasLog(connection)) {
        throw Failure(exit_code::refused, HostText::noLog);
    }
}

workbench::LoggedRun requiredRun(Connection& connection, std::int32_t number) {
    requireLog(connection);
    auto run = workbench::findRun(connection, number);
    if (!run) {
        throw Failure(exit_code::refused, HostText::runMissing, {std::to_string(number)});
    }
    return std::move(*run);
}

} // namespace z7::cashflow::host
