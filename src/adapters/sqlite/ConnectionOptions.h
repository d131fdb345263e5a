#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace z7::cashflow::sqlite {

/// The contents of a connection string of the embedded database; see Connection for its keywords.
struct ConnectionOptions {
    std::filesystem::path database;
    std::optional<std::int16_t> year;
    int timeout = 5000; ///< milliseconds
    std::optional<int> maxPages;
};

/// Error 5 that names the keyword that is unknown, missing, repeated or has an invalid value. No value is quoted,
/// because any of them could be a secret intended for another driver.
[[nodiscard]] ConnectionOptions parseConnectionString(const std::string& text);

/// Conversions of a path from and to UTF-8.
[[nodiscard]] std::filesystem::path pathOf(const std::string& utf8);
[[nodiscard]] std::string utf8Of(const std::filesystem::path& path);

} // namespace z7::cashflow::sqlite
