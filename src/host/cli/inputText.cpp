#include "host/cli/inputText.h"

#include "host/cli/ExitCode.h"
#include "host/cli/Failure.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <istream>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestText = std::size_t{64} << 20U;

std::string readAll(std::istream& stream, const std::string& shownName) {
    std::string text;
    std::array<char, 65536> piece{};
    while (stream) {
        stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        text.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
        if (text.size() > longestText) {
            throw Failure(exitCode::usage, HostText::inputTooLong, {shownName});
        }
    }
    if (stream.bad()) {
        throw Failure(exitCode::usage, HostText::inputUnreadable, {shownName});
    }
    if (text.find_first_not_of(" \t\r\n") == std::string::npos) {
        throw Failure(exitCode::usage, HostText::inputEmpty, {shownName});
    }
    return text;
}

} // namespace

std::string inputText(const std::string& file, const Console& console) {
    if (file == "-") {
        return readAll(console.in, file);
    }
    std::error_code ignored;
    std::ifstream stream;
    if (!std::filesystem::is_directory(file, ignored)) {
        stream.open(file, std::ios::binary);
    }
    if (!stream.is_open()) {
        throw Failure(exitCode::usage, HostText::inputUnreadable, {file});
    }
    return readAll(stream, file);
}

} // namespace z7::cashflow::host
