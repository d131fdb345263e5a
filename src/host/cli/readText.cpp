#include "host/cli/readText.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <istream>

namespace z7::cashflow::host {

TextRead readText(std::istream& stream, std::size_t mostBytes) {
    TextRead read;
    std::array<char, 65536> piece{};
    while (stream) {
        stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        const auto count = static_cast<std::size_t>(stream.gcount());
        if (count > mostBytes - read.text.size()) {
            return {TextRead::Outcome::tooLong};
        }
        read.text.append(piece.data(), count);
    }
    if (stream.bad()) {
        return {TextRead::Outcome::unreadable};
    }
    read.outcome = TextRead::Outcome::whole;
    return read;
}

TextRead readText(const std::filesystem::path& file, std::size_t mostBytes) {
    std::error_code ignored;
    std::ifstream stream;
    if (!std::filesystem::is_directory(file, ignored)) {
        stream.open(file, std::ios::binary);
    }
    return stream.is_open() ? readText(stream, mostBytes) : TextRead{};
}

} // namespace z7::cashflow::host
