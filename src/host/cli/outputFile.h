#pragma once

#include <filesystem>
#include <string_view>

namespace z7::cashflow::host {

/// Failure (usage) if the file exists.
void requireNewFile(const std::filesystem::path& file);

/// Writes a new file. Failure (usage) if it exists, (database) if it cannot be written; an incomplete file is
/// removed.
void writeNewFile(const std::filesystem::path& file, std::string_view text);

} // namespace z7::cashflow::host
