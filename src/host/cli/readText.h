#pragma once

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <string>

namespace z7::cashflow::host {

/// What came of reading a text.
struct TextRead {
    enum class Outcome {
        whole,      ///< the text is there to its end
        unreadable, ///< there is nothing of that name, it is a folder, or reading fails
        tooLong     ///< it is longer than was asked for
    };
    Outcome outcome = Outcome::unreadable;
    std::string text{}; ///< empty unless it is whole
};

/// Reads a stream to its end, but no more than so many bytes.
[[nodiscard]] TextRead readText(std::istream& stream, std::size_t mostBytes);

/// Reads a file to its end, but no more than so many bytes.
[[nodiscard]] TextRead readText(const std::filesystem::path& file, std::size_t mostBytes);

} // namespace z7::cashflow::host
