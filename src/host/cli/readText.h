#pragma once

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <string>

namespace z7::cashflow::host {

/// The result of reading a text.
struct TextRead {
    enum class Outcome {
        whole,      ///< the text was read to its end
        unreadable, ///< it does not exist, is a folder, or cannot be read
        tooLong     ///< it is longer than the limit
    };
    Outcome outcome = Outcome::unreadable;
    std::string text{}; ///< empty unless the outcome is whole
};

/// Reads a stream to its end, up to a limit in bytes.
[[nodiscard]] TextRead readText(std::istream& stream, std::size_t mostBytes);

/// Reads a file to its end, up to a limit in bytes.
[[nodiscard]] TextRead readText(const std::filesystem::path& file, std::size_t mostBytes);

} // namespace z7::cashflow::host
